// The sample hub: an HTTPS hub with invented towns, for demonstrations and tests. It listens on loopback only.

#include "ControlServer.h"
#include "Options.h"
#include "PublicServer.h"

#include <arpa/inet.h>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <netinet/in.h>
#include <stdexcept>
#include <string>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace quillmere {

namespace {

using namespace demo;

/// Whether this machine has the address ::1.
bool hasIPv6Loopback()
{
    const int socket = ::socket(AF_INET6, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (socket < 0) {
        return false;
    }
    sockaddr_in6 address{};
    address.sin6_family = AF_INET6;
    address.sin6_addr = in6addr_loopback;
    const bool has = bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
    close(socket);
    return has;
}

void requirePort(bool bound, int port, const std::string& address)
{
    if (!bound) {
        throw std::runtime_error("the port " + std::to_string(port) + " of " + address + " is taken.");
    }
}

/// Serves until SIGINT or SIGTERM.
void serve(const Options& options, const sigset_t& stopSignals)
{
    Hub hub(options.port, options.recordings);
    Faults faults;
    RequestLog log;
    std::vector<std::unique_ptr<PublicServer>> servers;
    std::vector<std::string> addresses = {"127.0.0.1"};
    if (hasIPv6Loopback()) {
        addresses.emplace_back("::1");
    }
    for (const std::string& address : addresses) {
        auto& server =
            servers.emplace_back(std::make_unique<PublicServer>(hub, faults, log, options.certificate, options.key));
        if (!server->isValid()) {
            throw std::runtime_error("the certificate " + options.certificate + " and its key are not usable.");
        }
        requirePort(server->bind(address, options.port), options.port, address);
    }
    ControlServer control(hub, faults, log);
    requirePort(control.bind(options.controlPort), options.controlPort, "127.0.0.1");

    for (const auto& server : servers) {
        std::thread([&server] { server->run(); }).detach();
    }
    std::thread([&control] { control.run(); }).detach();
    std::printf("ready https://localhost:%d control http://127.0.0.1:%d\n", options.port, options.controlPort);
    std::fflush(stdout);

    int signal = 0;
    sigwait(&stopSignals, &signal);
    // The process stores nothing, so it exits without waiting for idle connections and blocked requests.
    std::_Exit(EXIT_SUCCESS);
}

} // namespace

} // namespace quillmere

int main(int argumentCount, char** arguments)
{
    using namespace quillmere;
    sigset_t stopSignals;
    sigemptyset(&stopSignals);
    sigaddset(&stopSignals, SIGINT);
    sigaddset(&stopSignals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &stopSignals, nullptr); // before any thread is started, because threads inherit the mask
    try {
        serve(Options::parse(argumentCount, arguments), stopSignals);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "sample-hub: %s\n", failure.what());
    }
    return EXIT_FAILURE;
}
