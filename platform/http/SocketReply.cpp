#include "SocketReply.h"

#include <QCoreApplication>
#include <QNetworkProxy>
#include <QSslConfiguration>

#include <algorithm>
#include <cstring>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

/** The text, translated, that QNetworkAccessManager uses for the same error. */
QString qtErrorText(const char* text)
{
    return QCoreApplication::translate("QHttp", text);
}

bool isEncrypted(const QUrl& url)
{
    return url.scheme() == "https"_L1;
}

QByteArray requestBytes(const QNetworkRequest& request)
{
    const QUrl url = request.url();
    constexpr auto target =
        QUrl::RemoveScheme | QUrl::RemoveAuthority | QUrl::RemoveFragment | QUrl::NormalizePathSegments;
    const QByteArray root = url.path().isEmpty() ? "/" : "";
    QByteArray bytes = "GET " + root + url.toEncoded(target) + " HTTP/1.1\r\n";
    bytes += "Host: " + url.adjusted(QUrl::RemoveUserInfo).authority(QUrl::FullyEncoded).toLatin1() + "\r\n";
    // The headers that QNetworkAccessManager adds.
    bytes += "Accept-Language: en,*\r\nUser-Agent: Mozilla/5.0\r\n";
    const QList<QByteArray> names = request.rawHeaderList();
    for (const QByteArray& name : names)
        bytes += name + ": " + request.rawHeader(name) + "\r\n";
    return bytes + "Connection: close\r\n\r\n";
}

/** The system's proxy if it can tunnel any TCP connection, otherwise no proxy. */
QNetworkProxy proxyFor(const QUrl& url)
{
    const QList<QNetworkProxy> proxies = QNetworkProxyFactory::proxyForQuery(QNetworkProxyQuery(url));
    const auto proxy = std::find_if(proxies.begin(), proxies.end(),
                                    [](const QNetworkProxy& candidate) { return candidate.isTransparentProxy(); });
    return proxy == proxies.end() ? QNetworkProxy(QNetworkProxy::NoProxy) : *proxy;
}

} // namespace

SocketReply::SocketReply(const QNetworkRequest& request, QObject* parent) : QNetworkReply(parent)
{
    setRequest(request);
    setUrl(request.url());
    setOperation(QNetworkAccessManager::GetOperation);
    QNetworkReply::open(QIODevice::ReadOnly);

    m_inactivityTimer.setSingleShot(true);
    m_inactivityTimer.setTimerType(Qt::PreciseTimer);
    m_inactivityTimer.setInterval(request.transferTimeout());
    connect(&m_inactivityTimer, &QTimer::timeout, this, &SocketReply::abort);
    const bool encrypted = isEncrypted(url());
    connect(&m_socket, encrypted ? &QSslSocket::encrypted : &QSslSocket::connected, this, &SocketReply::sendRequest);
    connect(&m_socket, &QSslSocket::readyRead, this, &SocketReply::onReadyRead);
    connect(&m_socket, &QSslSocket::disconnected, this, &SocketReply::onDisconnected);
    connect(&m_socket, &QSslSocket::errorOccurred, this, &SocketReply::onSocketError);
    // Queued, because an immediate error would be emitted before the caller connects to the signals.
    QMetaObject::invokeMethod(this, &SocketReply::connectToServer, Qt::QueuedConnection);
    m_inactivityTimer.start();
}

SocketReply::~SocketReply()
{
    m_socket.disconnect(this);
}

void SocketReply::connectToServer()
{
    if (isFinished())
        return;
    constexpr int httpPort = 80;
    constexpr int httpsPort = 443;
    m_socket.setProxy(proxyFor(url()));
    m_socket.setSslConfiguration(request().sslConfiguration());
    const QString host = url().host();
    if (isEncrypted(url()))
        m_socket.connectToHostEncrypted(host, quint16(url().port(httpsPort)));
    else
        m_socket.connectToHost(host, quint16(url().port(httpPort)));
}

void SocketReply::sendRequest()
{
    m_socket.write(requestBytes(request()));
}

void SocketReply::abort()
{
    finish(OperationCanceledError, tr("Operation canceled"));
}

void SocketReply::onReadyRead()
{
    if (isFinished())
        return;
    m_inactivityTimer.start();
    const bool hadHeaders = m_parser.status() > 0;
    m_parser.add(m_socket.readAll());
    m_body += m_parser.takeBody();
    if (!hadHeaders && m_parser.status() > 0)
        publishHeaders();
    if (!isFinished() && !m_body.isEmpty())
        Q_EMIT readyRead();
    if (isFinished())
        return;
    if (m_parser.hasFailed())
        finishWithoutFinalResponse();
    else if (m_parser.isComplete())
        finish();
}

void SocketReply::onDisconnected()
{
    onReadyRead();
    if (isFinished())
        return;
    m_parser.end();
    if (m_parser.hasFailed())
        finishWithoutFinalResponse();
    else
        finish();
}

/**
 * The server sent no complete response. Reports the interim status if there was one and nothing else, otherwise an
 * error.
 */
void SocketReply::finishWithoutFinalResponse()
{
    if (m_parser.status() > 0 || m_parser.interimStatus() == 0) {
        finish(RemoteHostClosedError, qtErrorText("Connection closed"));
        return;
    }
    setAttribute(QNetworkRequest::HttpStatusCodeAttribute, m_parser.interimStatus());
    finish();
}

void SocketReply::onSocketError(QAbstractSocket::SocketError error)
{
    switch (error) {
    case QAbstractSocket::RemoteHostClosedError:
        break; // onDisconnected() decides whether the response is complete
    case QAbstractSocket::HostNotFoundError:
        finish(HostNotFoundError, qtErrorText("Host %1 not found").arg(url().host()));
        break;
    case QAbstractSocket::ConnectionRefusedError:
        finish(ConnectionRefusedError, qtErrorText("Connection refused"));
        break;
    case QAbstractSocket::SslHandshakeFailedError:
        finish(SslHandshakeFailedError, qtErrorText("SSL handshake failed") + u": "_s + m_socket.errorString());
        break;
    default:
        finish(UnknownNetworkError, m_socket.errorString());
        break;
    }
}

void SocketReply::publishHeaders()
{
    setAttribute(QNetworkRequest::HttpStatusCodeAttribute, m_parser.status());
    for (const auto& [name, value] : m_parser.headers())
        setRawHeader(name, hasRawHeader(name) ? rawHeader(name) + ", " + value : value);
    Q_EMIT metaDataChanged();
}

void SocketReply::finish(NetworkError error, const QString& description)
{
    if (isFinished())
        return;
    setFinished(true);
    m_inactivityTimer.stop();
    if (error != NoError)
        setError(error, description);
    // Disconnected first, so that closing the socket is not reported as an error.
    m_socket.disconnect(this);
    m_socket.abort();
    Q_EMIT finished();
}

qint64 SocketReply::readData(char* data, qint64 maxBytes)
{
    const qint64 length = std::min(maxBytes, qint64(m_body.size()));
    std::memcpy(data, m_body.constData(), size_t(length));
    m_body.remove(0, length);
    return length == 0 && isFinished() ? -1 : length;
}

} // namespace quillmere
