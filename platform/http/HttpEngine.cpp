#include "HttpEngine.h"

#include "SystemConnectivity.h"

HttpEngine::HttpEngine(QByteArray extraCertificates, std::unique_ptr<Connectivity> connectivity, ResultHandler onResult)
    : m_extraCertificates(std::move(extraCertificates)), m_onResult(std::move(onResult)),
      m_connectivity(connectivity ? std::move(connectivity) : std::make_unique<SystemConnectivity>())
{
    // As a child it moves to the network thread together with this object.
    m_connectivity->setParent(this);
}

HttpEngine::~HttpEngine() = default;

void HttpEngine::start(quint64 id, const HttpRequest& request, QDeadlineTimer deadline)
{
    if (!m_session)
        m_session = std::make_unique<HttpSession>(m_extraCertificates, *m_connectivity);
    auto exchange = std::make_unique<HttpExchange>(*m_session, request, deadline,
                                                   [this, id](HttpResult result) { finish(id, std::move(result)); });
    HttpExchange* const started = exchange.get();
    m_exchanges.emplace(id, std::move(exchange));
    started->start();
}

void HttpEngine::abort(quint64 id)
{
    m_exchanges.erase(id);
}

void HttpEngine::finish(quint64 id, HttpResult result)
{
    const auto exchange = m_exchanges.find(id);
    if (exchange != m_exchanges.end()) {
        // Deleted later, because the exchange is on the call stack.
        exchange->second.release()->deleteLater();
        m_exchanges.erase(exchange);
    }
    m_onResult(id, std::move(result));
}
