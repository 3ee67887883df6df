#pragma once

#include "Faults.h"
#include "Hub.h"
#include "RequestLog.h"

#include <httplib.h>
#include <string>

namespace demo {

/// The hub's HTTPS side on one loopback address. It and its threads end with the process; all that it is given
/// must last as long.
class PublicServer
{
public:
    PublicServer(Hub& hub, Faults& faults, RequestLog& log, const std::string& certificate, const std::string& key);

    /// False when the certificate or its key is not usable.
    bool isValid() const { return m_server.is_valid(); }
    /// False when the port is taken.
    bool bind(const std::string& address, int port);
    /// Serves until the server is stopped.
    void run() { m_server.listen_after_bind(); }
    void stop() { m_server.stop(); }

private:
    void serve(const httplib::Request& request, httplib::Response& response);
    Answer answer(const httplib::Request& request, const std::optional<Fault>& fault);
    void send(const httplib::Request& request, httplib::Response& response, Answer answer,
              const std::optional<Fault>& fault);

    Hub& m_hub;
    Faults& m_faults;
    RequestLog& m_log;
    httplib::SSLServer m_server;
};

} // namespace demo
