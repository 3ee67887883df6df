#pragma once

#include "CallQueue.h"
#include "Connectivity.h"
#include "HttpExchange.h"

#include <memory>
#include <unordered_map>

/**
 * The part of QtHttpClient that lives on the network thread: owns and runs the exchanges. It creates the session with
 * the first request, so that certificates and the TLS library are loaded on the network thread. Created on the screen
 * thread, then moved to the network thread, which deletes it.
 */
class HttpEngine : public CallQueue
{
public:
    using ResultHandler = std::function<void(quint64 id, HttpResult result)>;

    /** `onResult` is called on the network thread, once for each request that is not aborted. */
    HttpEngine(QByteArray extraCertificates, std::unique_ptr<Connectivity> connectivity, ResultHandler onResult);
    ~HttpEngine() override;

    /** Network thread only. `deadline` is the end of the request's overall limit. */
    void start(quint64 id, const HttpRequest& request, QDeadlineTimer deadline);

    /** Network thread only. Does nothing if the request has already finished. */
    void abort(quint64 id);

private:
    void finish(quint64 id, HttpResult result);

    const QByteArray m_extraCertificates;
    const ResultHandler m_onResult;
    std::unique_ptr<Connectivity> m_connectivity;
    std::unique_ptr<HttpSession> m_session;
    std::unordered_map<quint64, std::unique_ptr<HttpExchange>> m_exchanges;
};
