#pragma once

#include "Faults.h"
#include "Hub.h"
#include "RequestLog.h"

#include <httplib.h>

namespace quillmere::demo {

/// The control server for tests: plain HTTP on 127.0.0.1. The constructor's arguments must outlive it.
class ControlServer
{
public:
    ControlServer(Hub& hub, Faults& faults, RequestLog& log);

    /// Returns false if the port is in use.
    bool bind(int port) { return m_server.bind_to_port("127.0.0.1", port); }
    /// Serves requests until stop() is called.
    void run() { m_server.listen_after_bind(); }
    void stop() { m_server.stop(); }

private:
    /// Registers a POST command without a body: calls `action` and replies with a confirmation.
    void addCommand(const std::string& path, std::function<void()> action);
    void handleStatusPatch(const httplib::Request& request, httplib::Response& response);
    void handleOneShelf(const httplib::Request& request, httplib::Response& response);
    void handleFault(const httplib::Request& request, httplib::Response& response);

    Hub& m_hub;
    Faults& m_faults;
    RequestLog& m_log;
    httplib::Server m_server;
};

} // namespace quillmere::demo
