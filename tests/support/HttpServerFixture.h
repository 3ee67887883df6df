#pragma once

#include "FaultServer.h"
#include "HttpOutcome.h"
#include "QtHttpClient.h"
#include "ScriptedConnectivity.h"

#include <memory>

namespace quillmere {

/**
 * Base of tests that use a fresh client, which is online, and a fresh server, whose certificate it trusts, for every
 * test function.
 */
class HttpServerFixture : public QObject
{
    Q_OBJECT

protected:
    std::unique_ptr<FaultServer> m_server;
    std::unique_ptr<QtHttpClient> m_client;

    /** The server's answer to a request for this path. */
    HttpOutcome get(const QByteArray& path = "/") { return fetch(*m_client, requestTo(m_server->url(path))); }

    void setUp()
    {
        m_server = std::make_unique<FaultServer>();
        m_client = std::make_unique<QtHttpClient>(FaultServer::issuer(), std::make_unique<ScriptedConnectivity>(true));
    }

    void tearDown()
    {
        m_client.reset();
        m_server.reset();
    }

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }
};

} // namespace quillmere
