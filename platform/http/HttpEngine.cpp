#include "HttpEngine.h"

#include "SystemConnectivity.h"

#include <QSslCertificate>

HttpEngine::HttpEngine(QByteArray extraCertificates, std::unique_ptr<Connectivity> connectivity, Answer answer)
    : m_extraCertificates(std::move(extraCertificates)), m_answer(std::move(answer)),
      m_connectivity(connectivity ? std::move(connectivity) : std::make_unique<SystemConnectivity>())
{
    // A child moves to the network thread with its parent.
    m_connectivity->setParent(this);
}

HttpEngine::~HttpEngine() = default;

void HttpEngine::open()
{
    m_session = std::make_unique<HttpSession>();
    m_session->connectivity = m_connectivity.get();
    m_session->tls = QSslConfiguration::defaultConfiguration();
    m_session->tls.setProtocol(QSsl::TlsV1_2OrLater);
    if (!m_extraCertificates.isEmpty()) {
        // Naming any certificate ends the loading of the system's on demand, so they are named too.
        m_session->tls.setCaCertificates(QSslConfiguration::systemCaCertificates()
                                         + QSslCertificate::fromData(m_extraCertificates, QSsl::Pem));
    }
}

void HttpEngine::start(quint64 id, const HttpRequest& request, QDeadlineTimer overall)
{
    if (!m_session)
        open();
    auto exchange = std::make_unique<HttpExchange>(
        *m_session, request, overall, [this, id](HttpResult result) { finish(id, std::move(result)); });
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
        // It is still on the call stack.
        exchange->second.release()->deleteLater();
        m_exchanges.erase(exchange);
    }
    m_answer(id, std::move(result));
}
