#pragma once

#include "Faults.h"
#include "Hub.h"
#include "RequestLog.h"

#include <httplib.h>
#include <string>

namespace quillmere::demo {

/// The hub's HTTPS server on one loopback address. The server and its threads run until the process ends, so the
/// constructor's arguments must live until then.
class PublicServer
{
public:
    PublicServer(Hub& hub, Faults& faults, RequestLog& log, const std::string& certificate, const std::string& key);

    /// Returns false if the certificate or its key is not usable.
    bool isValid() const { return m_server.is_valid(); }
    /// Returns false if the port is in use.
    bool bind(const std::string& address, int port);
    /// Serves requests until stop() is called.
    void run() { m_server.listen_after_bind(); }
    void stop() { m_server.stop(); }

private:
    void serve(const httplib::Request& request, httplib::Response& response);
    HubResponse respondTo(const httplib::Request& request, const std::optional<Fault>& fault);
    void send(const httplib::Request& request, httplib::Response& response, HubResponse hubResponse,
              const std::optional<Fault>& fault);

    Hub& m_hub;
    Faults& m_faults;
    RequestLog& m_log;
    httplib::SSLServer m_server;
};

} // namespace quillmere::demo
