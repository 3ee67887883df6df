#include "QtHttpClient.h"

#include "HttpEngine.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

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
