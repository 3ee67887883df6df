#include "HttpLine.h"

#include "SocketReply.h"

#include <QNetworkAccessManager>

#include <utility>

namespace {

/** Of an answer whose body nobody waits for: the rest of a small one costs less than a new connection. */
constexpr qint64 longestDrain = 64 * 1024; // bytes
constexpr std::chrono::seconds drainLimit{2};

constexpr int firstFinalStatus = 200;

} // namespace

HttpLine::HttpLine(QNetworkCookieJar& cookies) : m_cookies(cookies)
{
    m_drainTimer.setSingleShot(true);
    m_drainTimer.setInterval(drainLimit);
    connect(&m_drainTimer, &QTimer::timeout, this, &HttpLine::release);
}

QString HttpLine::originOf(const QUrl& url)
{
    return url.adjusted(QUrl::RemoveUserInfo | QUrl::RemovePath | QUrl::RemoveQuery | QUrl::RemoveFragment).toString();
}

QNetworkReply* HttpLine::get(const QNetworkRequest& request, Way way)
{
    m_origin = originOf(request.url());
    if (way == Way::KeptConnection)
        m_reply = network(request.sslConfiguration()).get(request);
    else
        m_reply = new SocketReply(request, this);
    return m_reply;
}

QNetworkAccessManager& HttpLine::network(const QSslConfiguration& tls)
{
    // A connection keeps the certificates of its first request.
    if (tls != m_tls)
        closeConnections();
    if (!m_network) {
        m_network = new QNetworkAccessManager(this);
        m_network->setCookieJar(&m_cookies);
        m_cookies.setParent(nullptr); // lines share it
        m_tls = tls;
    }
    return *m_network;
}

void HttpLine::release()
{
    if (!m_reply)
        return;
    m_drainTimer.stop();
    QNetworkReply* const reply = std::exchange(m_reply, nullptr);
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const bool isEnded = reply->isFinished() && status >= firstFinalStatus;
    reply->disconnect(this);
    reply->abort();
    reply->deleteLater();
    const bool hasOwnConnection = !reply->manager();
    if (!isEnded && !hasOwnConnection)
        closeConnections();
    Q_EMIT freed();
}

void HttpLine::drain()
{
    if (m_reply->isFinished() || !m_reply->manager()) {
        release();
        return;
    }
    m_drained = 0;
    m_drainTimer.start();
    connect(m_reply, &QNetworkReply::finished, this, &HttpLine::release);
    connect(m_reply, &QNetworkReply::readyRead, this, &HttpLine::dropBody);
    dropBody();
}

void HttpLine::dropBody()
{
    m_drained += m_reply->readAll().size();
    if (m_drained > longestDrain)
        release();
}

/** Those of the network access. */
void HttpLine::closeConnections()
{
    // Its reply may be on the call stack.
    if (m_network)
        std::exchange(m_network, nullptr)->deleteLater();
}
