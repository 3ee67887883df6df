#include "HttpChannel.h"

#include "SocketReply.h"

#include <QNetworkAccessManager>

#include <utility>

namespace quillmere {

namespace {

/** Limits for receiving an unwanted body: the rest of a small one costs less than a new connection. */
constexpr qint64 maxDrainBytes = 64 * 1024;
constexpr std::chrono::seconds drainLimit{2};

constexpr int firstFinalStatus = 200;

} // namespace

HttpChannel::HttpChannel(QNetworkCookieJar& cookies) : m_cookies(cookies)
{
    m_drainTimer.setSingleShot(true);
    m_drainTimer.setInterval(drainLimit);
    connect(&m_drainTimer, &QTimer::timeout, this, &HttpChannel::release);
}

QString HttpChannel::originOf(const QUrl& url)
{
    return url.adjusted(QUrl::RemoveUserInfo | QUrl::RemovePath | QUrl::RemoveQuery | QUrl::RemoveFragment).toString();
}

QNetworkReply* HttpChannel::get(const QNetworkRequest& request, Connection connection)
{
    m_origin = originOf(request.url());
    if (connection == Connection::Persistent)
        m_reply = network(request.sslConfiguration()).get(request);
    else
        m_reply = new SocketReply(request, this);
    return m_reply;
}

QNetworkAccessManager& HttpChannel::network(const QSslConfiguration& tls)
{
    // An open connection keeps the TLS configuration of its first request.
    if (tls != m_tls)
        closeConnections();
    if (!m_network) {
        m_network = new QNetworkAccessManager(this);
        m_network->setCookieJar(&m_cookies);
        m_cookies.setParent(nullptr); // setCookieJar() took ownership, but all channels share the jar
        m_tls = tls;
    }
    return *m_network;
}

void HttpChannel::release()
{
    if (!m_reply)
        return;
    m_drainTimer.stop();
    QNetworkReply* const reply = std::exchange(m_reply, nullptr);
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const bool isComplete = reply->isFinished() && status >= firstFinalStatus;
    reply->disconnect(this);
    reply->abort();
    reply->deleteLater();
    const bool isDedicated = !reply->manager();
    if (!isComplete && !isDedicated)
        closeConnections();
    Q_EMIT freed();
}

void HttpChannel::drain()
{
    if (m_reply->isFinished() || !m_reply->manager()) {
        release();
        return;
    }
    m_drainedBytes = 0;
    m_drainTimer.start();
    connect(m_reply, &QNetworkReply::finished, this, &HttpChannel::release);
    connect(m_reply, &QNetworkReply::readyRead, this, &HttpChannel::discardBody);
    discardBody();
}

void HttpChannel::discardBody()
{
    m_drainedBytes += m_reply->readAll().size();
    if (m_drainedBytes > maxDrainBytes)
        release();
}

/** Closes the persistent connections by deleting the QNetworkAccessManager. */
void HttpChannel::closeConnections()
{
    // Deleted later, because a reply of the manager may be on the call stack.
    if (m_network)
        std::exchange(m_network, nullptr)->deleteLater();
}

} // namespace quillmere
