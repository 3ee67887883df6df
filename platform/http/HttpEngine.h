#pragma once

#include "Connectivity.h"
#include "HttpExchange.h"
#include "Mailbox.h"

#include <memory>
#include <unordered_map>

/**
 * The network thread's half of the client: it makes the network access at the first request, so that loading
 * certificates and the TLS library costs nobody else, and runs the exchanges. Made on the screen thread, then moved
 * to the network thread, which deletes it.
 */
class HttpEngine : public Mailbox
{
public:
    using Answer = std::function<void(quint64 id, HttpResult result)>;

    /** `answer` is called on the network thread, once for each request that is not aborted. */
    HttpEngine(QByteArray extraCertificates, std::unique_ptr<Connectivity> connectivity, Answer answer);
    ~HttpEngine() override;

    /** Network thread only. */
    void start(quint64 id, const HttpRequest& request, QDeadlineTimer overall);

    /** Network thread only; an id that has ended is let pass. */
    void abort(quint64 id);

private:
    void finish(quint64 id, HttpResult result);

    const QByteArray m_extraCertificates;
    const Answer m_answer;
    std::unique_ptr<Connectivity> m_connectivity;
    std::unique_ptr<HttpSession> m_session;
    std::unordered_map<quint64, std::unique_ptr<HttpExchange>> m_exchanges;
};
