#pragma once

#include <string>

namespace quillmere::demo {

/// The options of the command line.
struct Options
{
    int port = 0;
    int controlPort = 0;
    std::string certificate;
    std::string key;
    std::string recordings;

    static const char* usage();
    /// Throws std::runtime_error with a message if an option is missing or not valid.
    static Options parse(int count, char** arguments);
};

} // namespace quillmere::demo
