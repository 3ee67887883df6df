#pragma once

#include <string>

namespace demo {

/// The command line.
struct Options
{
    int port = 0;
    int controlPort = 0;
    std::string certificate;
    std::string key;
    std::string recordings;

    static const char* usage();
    /// Throws std::runtime_error with a sentence when something is missing or wrong.
    static Options from(int count, char** arguments);
};

} // namespace demo
