#pragma once

#include "Faults.h"
#include "Hub.h"
#include "RequestLog.h"

#include <httplib.h>

namespace demo {

/// The control address for tests, plain HTTP on 127.0.0.1. All that it is given must outlive it.
class ControlServer
{
public:
    ControlServer(Hub& hub, Faults& faults, RequestLog& log);

    /// False when the port is taken.
    bool bind(int port) { return m_server.bind_to_port("127.0.0.1", port); }
    /// Serves until the server is stopped.
    void run() { m_server.listen_after_bind(); }
    void stop() { m_server.stop(); }

private:
    /// An order without a body: `action` is done, and the answer says so.
    void order(const std::string& path, std::function<void()> action);
    void orderStatus(const httplib::Request& request, httplib::Response& response);
    void orderOneShelf(const httplib::Request& request, httplib::Response& response);
    void orderFault(const httplib::Request& request, httplib::Response& response);

    Hub& m_hub;
    Faults& m_faults;
    RequestLog& m_log;
    httplib::Server m_server;
};

} // namespace demo
