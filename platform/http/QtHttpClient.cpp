#include "QtHttpClient.h"

#include "HttpExchange.h"
#include "SystemConnectivity.h"

#include <QCoreApplication>

#include <unordered_map>

using namespace Qt::StringLiterals;

namespace quillmere {

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

HttpEngine::HttpEngine(QByteArray extraCertificates, std::unique_ptr<Connectivity> connectivity, ResultHandler onResult)
    : m_extraCertificates(std::move(extraCertificates)), m_onResult(std::move(onResult)),
      m_connectivity(connectivity ? std::move(connectivity) : std::make_unique<SystemConnectivity>())
{
    // As a child it moves to the network thread together with this object.
    m_connectivity->setParent(this);
}

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

namespace {

HttpResult cancelled()
{
    return tl::unexpected(HttpFailure{HttpFailure::Kind::Cancelled, {}});
}

HttpResult unknownScheme(const QUrl& url)
{
    // Qt's own error text. The scheme is checked here because QNetworkAccessManager would open file: URLs.
    return tl::unexpected(
        HttpFailure{HttpFailure::Kind::Network,
                    QCoreApplication::translate("QNetworkReply", "Protocol \"%1\" is unknown").arg(url.scheme())});
}

} // namespace

QtHttpClient::QtHttpClient(QByteArray extraCertificates, std::unique_ptr<Connectivity> connectivity)
{
    const auto onResult = [this](Id id, HttpResult result) {
        m_receiver.post([this, id, result = std::move(result)] { resolve(id, result); });
    };
    m_engine = new HttpEngine(std::move(extraCertificates), std::move(connectivity), onResult);
    m_engine->moveToThread(&m_thread);
    m_thread.setObjectName(u"network"_s);
    QObject::connect(&m_thread, &QThread::finished, m_engine, &QObject::deleteLater);
}

QtHttpClient::~QtHttpClient()
{
    m_isClosing = true;
    if (m_thread.isRunning()) {
        m_thread.quit();
        m_thread.wait();
    } else {
        delete m_engine;
    }
    // Looked up anew each time: resolve() resumes a coroutine, which may cancel other requests.
    while (!m_pending.isEmpty())
        resolve(m_pending.cbegin().key(), cancelled());
}

QCoro::Task<HttpResult> QtHttpClient::get(HttpRequest request, std::stop_token token)
{
    if (m_isClosing || token.stop_requested())
        co_return cancelled();
    const QString scheme = request.url.scheme();
    if (scheme != u"https" && scheme != u"http")
        co_return unknownScheme(request.url);

    const Id id = m_nextId++;
    const Completion<HttpResult> completion;
    m_pending.insert(id, completion);
    send(id, request);
    // Unregistered when this coroutine ends, which is before the client is destroyed.
    const std::stop_callback registration(token, [this, id] { cancel(id); });
    co_return co_await completion;
}

void QtHttpClient::send(Id id, const HttpRequest& request)
{
    if (!m_thread.isRunning())
        m_thread.start();
    const QDeadlineTimer deadline(request.overallLimit);
    m_engine->post([engine = m_engine, id, request, deadline] { engine->start(id, request, deadline); });
}

void QtHttpClient::cancel(Id id)
{
    if (!m_isClosing)
        m_engine->post([engine = m_engine, id] { engine->abort(id); });
    resolve(id, cancelled());
}

void QtHttpClient::resolve(Id id, HttpResult result)
{
    // The result of a cancelled request may still arrive.
    if (!m_pending.contains(id))
        return;
    m_pending.take(id).resolve(std::move(result));
}

} // namespace quillmere
