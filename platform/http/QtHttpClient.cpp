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
    // The words that the platform has for it; it would read a file: address itself.
    return tl::unexpected(
        HttpFailure{HttpFailure::Kind::Network,
                    QCoreApplication::translate("QNetworkReply", "Protocol \"%1\" is unknown").arg(url.scheme())});
}

} // namespace

QtHttpClient::QtHttpClient(QByteArray extraCertificates, std::unique_ptr<Connectivity> connectivity)
{
    const auto answer = [this](Id id, HttpResult result) {
        m_receiver.post([this, id, result = std::move(result)] { resolve(id, result); });
    };
    m_engine = new HttpEngine(std::move(extraCertificates), std::move(connectivity), answer);
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
    // One at a time: each resumes a coroutine that may cancel others.
    while (!m_waiting.isEmpty())
        resolve(m_waiting.cbegin().key(), cancelled());
}

QCoro::Task<HttpResult> QtHttpClient::get(HttpRequest request, CancelToken token)
{
    if (m_isClosing || token.isCancelled())
        co_return cancelled();
    const QString scheme = request.url.scheme();
    if (scheme != u"https" && scheme != u"http")
        co_return unknownScheme(request.url);

    const Id id = m_nextId++;
    const Completion<HttpResult> completion;
    m_waiting.insert(id, completion);
    send(id, request);
    // It goes with this frame, which ends before the client does.
    const auto registration = token.onCancel([this, id] { cancel(id); });
    co_return co_await completion;
}

void QtHttpClient::send(Id id, const HttpRequest& request)
{
    if (!m_thread.isRunning())
        m_thread.start();
    const QDeadlineTimer overall(request.overallLimit);
    m_engine->post([engine = m_engine, id, request, overall] { engine->start(id, request, overall); });
}

void QtHttpClient::cancel(Id id)
{
    if (!m_isClosing)
        m_engine->post([engine = m_engine, id] { engine->abort(id); });
    resolve(id, cancelled());
}

void QtHttpClient::resolve(Id id, HttpResult result)
{
    // A cancelled request's answer may still be under way.
    if (!m_waiting.contains(id))
        return;
    m_waiting.take(id).resolve(std::move(result));
}
