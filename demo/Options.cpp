#include "Options.h"

#include <charconv>
#include <filesystem>
#include <fstream>
#include <map>
#include <stdexcept>

namespace quillmere::demo {

namespace {

int portFrom(const std::string& text, const std::string& option)
{
    int port = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
    if (error != std::errc() || end != text.data() + text.size() || port < 1 || port > 65535) {
        throw std::runtime_error(option + " wants a port from 1 to 65535, not \"" + text + "\".");
    }
    return port;
}

} // namespace

const char* Options::usage()
{
    return "sample-hub --port PORT --certificate FILE --key FILE --recordings DIR --control-port PORT";
}

Options Options::parse(int count, char** arguments)
{
    Options options;
    std::string port;
    std::string controlPort;
    const std::map<std::string, std::string*> targets = {{"--port", &port},
                                                         {"--control-port", &controlPort},
                                                         {"--certificate", &options.certificate},
                                                         {"--key", &options.key},
                                                         {"--recordings", &options.recordings}};
    for (int i = 1; i < count; i += 2) {
        const auto option = targets.find(arguments[i]);
        if (option == targets.end() || i + 1 == count) {
            throw std::runtime_error("it is used as: " + std::string(usage()) + ".");
        }
        *option->second = arguments[i + 1];
    }
    for (const auto& [name, value] : targets) {
        if (value->empty()) {
            throw std::runtime_error("the option " + name + " is missing; it is used as: " + usage() + ".");
        }
    }
    options.port = portFrom(port, "--port");
    options.controlPort = portFrom(controlPort, "--control-port");
    for (const std::string& file : {options.certificate, options.key}) {
        if (!std::ifstream(file)) {
            throw std::runtime_error("the file " + file + " cannot be read; run make-certificate.");
        }
    }
    if (!std::filesystem::is_directory(options.recordings)) {
        throw std::runtime_error("the folder " + options.recordings + " is missing; run make-recordings.");
    }
    return options;
}

} // namespace quillmere::demo
