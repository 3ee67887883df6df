#include "HttpExchange.h"

#include "Logging.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

constexpr int maxRedirects = 20;
constexpr std::chrono::seconds retryInterval{1};
constexpr qint64 readBufferBytes = 64 * 1024;
constexpr int notModified = 304;

int statusOf(const QNetworkReply& reply)
{
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

/** Whether this is the status of an interim response, which the final response follows. */
bool isInterim(int status)
{
    return status >= 100 && status <= 199;
}

bool isSuccess(int status)
{
    return status >= 200 && status <= 299;
}

/** The URL that the response redirects to; empty if it is not a redirect. */
QUrl redirectTarget(const QNetworkReply& reply)
{
    constexpr std::array statuses{301, 302, 303, 305, 307, 308};
    if (std::find(statuses.begin(), statuses.end(), statusOf(reply)) == statuses.end())
        return {};
    const QUrl location = QUrl::fromEncoded(reply.rawHeader("Location"));
    return location.isValid() ? reply.url().resolved(location) : QUrl();
}

/** Whether the body is gzip. Other encodings were not requested; such a body is passed on as it is. */
bool isGzip(const QNetworkReply& reply)
{
    QList<QByteArray> codings = reply.rawHeader("Content-Encoding").toLower().split(',');
    std::transform(codings.begin(), codings.end(), codings.begin(), [](const auto& name) { return name.trimmed(); });
    codings.removeIf([](const QByteArray& name) { return name.isEmpty() || name == "identity"; });
    return codings == QList<QByteArray>{"gzip"} || codings == QList<QByteArray>{"x-gzip"};
}

/** Whether the error may mean that the machine is offline. */
bool isNameOrRouteError(QNetworkReply::NetworkError error)
{
    return error == QNetworkReply::HostNotFoundError || error == QNetworkReply::TemporaryNetworkFailureError ||
           error == QNetworkReply::NetworkSessionFailedError || error == QNetworkReply::UnknownNetworkError;
}

QString outcomeOf(const HttpResult& result)
{
    if (result)
        return u"status %1, %2 bytes"_s.arg(result->status).arg(result->body.size());
    switch (result.error().kind) {
    case HttpFailure::Kind::Cancelled:
        return u"called off"_s;
    case HttpFailure::Kind::TimedOut:
        return u"too slow"_s;
    case HttpFailure::Kind::TooLarge:
        return u"too large"_s;
    case HttpFailure::Kind::Truncated:
        return u"cut short"_s;
    case HttpFailure::Kind::Unreadable:
        return u"unreadable"_s;
    case HttpFailure::Kind::Network:
        break;
    }
    return logging::withoutQueries(result.error().description);
}

QString qtErrorText(const char* text)
{
    return QCoreApplication::translate("QHttp", text);
}

} // namespace

HttpExchange::HttpExchange(HttpSession& session, HttpRequest request, QDeadlineTimer deadline,
                           std::function<void(HttpResult)> onFinished)
    : m_session(session), m_request(std::move(request)), m_deadline(deadline), m_onFinished(std::move(onFinished)),
      m_url(m_request.url)
{
    m_overallTimer.setSingleShot(true);
    m_overallTimer.setTimerType(Qt::PreciseTimer); // a coarse timer may end 60 s 3 s early
    m_waitTimer.setSingleShot(true);
    m_retryTimer.setSingleShot(true);
    // Without NetworkManager, Qt does not report that the machine is online again.
    m_retryTimer.setInterval(retryInterval);
    connect(&m_retryTimer, &QTimer::timeout, this, &HttpExchange::retry);
    m_waitTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_overallTimer, &QTimer::timeout, this, &HttpExchange::onOverallLimit);
    connect(&m_waitTimer, &QTimer::timeout, this, [this] { finish(tl::unexpected(*m_networkFailure)); });
    // Queued, so that an exchange that frees its channel and sends again at once gets it before the others.
    connect(&m_session, &HttpSession::channelFreed, this, &HttpExchange::sendOverFreeChannel, Qt::QueuedConnection);
}

HttpExchange::~HttpExchange()
{
    if (m_onFinished)
        log(tl::unexpected(HttpFailure{HttpFailure::Kind::Cancelled, {}}));
    closeReply();
}

void HttpExchange::start()
{
    if (m_request.cache == HttpRequest::Cache::Revalidate)
        m_cached = m_session.cache().find(m_request.url);
    m_overallTimer.start(std::chrono::milliseconds(m_deadline.remainingTime()));
    send(HttpChannel::Connection::Persistent);
}

void HttpExchange::send(HttpChannel::Connection connection)
{
    m_body.clear();
    m_gunzip.reset();
    m_connection = m_session.sendsInterimStatus(m_url) ? HttpChannel::Connection::Dedicated : connection;
    m_waitsForChannel = true;
    sendOverFreeChannel();
}

void HttpExchange::sendOverFreeChannel()
{
    HttpChannel* const channel = m_waitsForChannel ? m_session.findFreeChannel(m_url) : nullptr;
    if (!channel)
        return;
    m_waitsForChannel = false;
    m_sentWithSystemCertificates = m_session.trustsSystemCertificates();
    m_channel = channel;
    m_reply = m_session.get(*channel, networkRequest(), m_connection);
    m_reply->setReadBufferSize(readBufferBytes);
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &HttpExchange::onHeaders);
    connect(m_reply, &QNetworkReply::readyRead, this, &HttpExchange::readBody);
    connect(m_reply, &QNetworkReply::finished, this, &HttpExchange::onReplyFinished);
}

QNetworkRequest HttpExchange::networkRequest() const
{
    QNetworkRequest request(m_url);
    request.setTransferTimeout(int(m_request.inactivityLimit.count()));
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    // Always HTTP/1.1, so that tests with a faulty server exercise the protocol that is used in production.
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    // Setting this header explicitly turns off Qt's own decompression; this class decompresses.
    request.setRawHeader("Accept-Encoding", "gzip");
    if (m_request.cache == HttpRequest::Cache::Bypass) {
        request.setRawHeader("Cache-Control", "no-cache");
        request.setRawHeader("Pragma", "no-cache");
    } else if (sendsValidators()) {
        if (!m_cached->etag.isEmpty())
            request.setRawHeader("If-None-Match", m_cached->etag);
        if (!m_cached->lastModified.isEmpty())
            request.setRawHeader("If-Modified-Since", m_cached->lastModified);
    }
    return request;
}

void HttpExchange::onHeaders()
{
    const int status = statusOf(*m_reply);
    if (isInterim(status))
        return; // onReplyFinished() handles it
    const QUrl target = redirectTarget(*m_reply);
    if (!target.isEmpty())
        redirect(target);
    else if (!isSuccess(status) || m_request.body == HttpRequest::Body::Ignore)
        finishWithoutBody(status);
}

void HttpExchange::redirect(const QUrl& target)
{
    const bool leavesTls = m_url.scheme() == "https"_L1 && target.scheme() == "http"_L1;
    drainReply();
    if (target.scheme() != "https"_L1 && target.scheme() != "http"_L1) {
        fail(HttpFailure::Kind::Network, qtErrorText("Unknown protocol specified"));
    } else if (leavesTls) {
        fail(HttpFailure::Kind::Network, qtErrorText("Insecure redirect"));
    } else if (m_redirects == maxRedirects) {
        fail(HttpFailure::Kind::Network, qtErrorText("Too many redirects"));
    } else {
        ++m_redirects;
        m_url = target;
        send(HttpChannel::Connection::Persistent);
    }
}

/** The status and headers decide the result. An invalid, endless or unwanted body is not read. */
void HttpExchange::finishWithoutBody(int status)
{
    drainReply();
    if (status == notModified && sendsValidators()) {
        constexpr int ok = 200;
        finish(HttpResponse{ok, m_cached->body});
        return;
    }
    if (m_request.cache == HttpRequest::Cache::Revalidate)
        m_session.cache().remove(m_request.url);
    finish(HttpResponse{status, {}});
}

void HttpExchange::readBody()
{
    while (m_reply && m_reply->bytesAvailable() > 0) {
        const QByteArray bytes = m_reply->read(readBufferBytes);
        if (bytes.isEmpty())
            return;
        if (!appendToBody(bytes))
            fail(HttpFailure::Kind::Unreadable);
        else if (m_body.size() > m_request.maxBytes)
            fail(HttpFailure::Kind::TooLarge);
    }
}

/** Decompresses the bytes if needed. Returns false if they are not valid gzip. */
bool HttpExchange::appendToBody(const QByteArray& bytes)
{
    if (!m_gunzip && isGzip(*m_reply))
        m_gunzip.emplace();
    if (m_gunzip)
        return m_gunzip->add(bytes, m_body, m_request.maxBytes);
    m_body += bytes;
    return true;
}

void HttpExchange::onReplyFinished()
{
    readBody();
    if (!m_reply)
        return;
    const auto error = m_reply->error();
    const int status = statusOf(*m_reply);
    // Newer Qt releases skip most interim responses. If the server sends nothing else, they report only a closed
    // connection.
    const bool mayBeInterim = status == 0 && error == QNetworkReply::RemoteHostClosedError;
    if (m_connection == HttpChannel::Connection::Persistent && (isInterim(status) || mayBeInterim))
        retryOverDedicatedConnection(status);
    else if (isInterim(status))
        finishWithoutBody(status);
    else if (error != QNetworkReply::NoError) // the status may be set all the same, if the body was truncated
        failWith(error);
    else if (m_gunzip && !m_gunzip->isComplete())
        fail(HttpFailure::Kind::Truncated);
    else
        succeed(status);
}

void HttpExchange::retryOverDedicatedConnection(int status)
{
    if (isInterim(status))
        m_session.addInterimOrigin(m_url);
    closeReply();
    send(HttpChannel::Connection::Dedicated);
}

void HttpExchange::failWith(QNetworkReply::NetworkError error)
{
    if (error == QNetworkReply::OperationCanceledError) // this object disconnects before it aborts: a transfer timeout
        fail(HttpFailure::Kind::TimedOut);
    else if (error == QNetworkReply::SslHandshakeFailedError && !m_sentWithSystemCertificates)
        retryWithSystemCertificates();
    else if (isNameOrRouteError(error))
        waitForNetwork({HttpFailure::Kind::Network, m_reply->errorString()});
    else
        fail(HttpFailure::Kind::Network, m_reply->errorString());
}

void HttpExchange::succeed(int status)
{
    if (m_request.cache == HttpRequest::Cache::Revalidate) {
        if (m_redirects > 0)
            m_session.cache().remove(m_request.url);
        else
            m_session.cache().update(m_request.url, *m_reply, status, m_body);
    }
    finish(HttpResponse{status, m_body});
}

void HttpExchange::retryWithSystemCertificates()
{
    closeReply();
    m_session.trustSystemCertificates();
    send(m_connection);
}

void HttpExchange::waitForNetwork(HttpFailure failure)
{
    closeReply();
    if (m_session.connectivity().isOnline()) {
        finish(tl::unexpected(std::move(failure)));
        return;
    }
    if (!m_networkFailure) {
        connect(&m_session.connectivity(), &Connectivity::changed, this, &HttpExchange::retryIfOnline);
        m_waitLimit.setRemainingTime(m_request.inactivityLimit);
    }
    m_networkFailure = std::move(failure);
    m_waitTimer.start(std::chrono::milliseconds(m_waitLimit.remainingTime()));
    m_retryTimer.start();
}

void HttpExchange::retryIfOnline()
{
    if (!m_reply && !m_waitsForChannel && m_session.connectivity().isOnline())
        retry();
}

void HttpExchange::retry()
{
    m_waitTimer.stop();
    m_retryTimer.stop();
    send(m_connection);
}

void HttpExchange::onOverallLimit()
{
    if (m_networkFailure && !m_reply)
        finish(tl::unexpected(*m_networkFailure));
    else
        fail(HttpFailure::Kind::TimedOut);
}

void HttpExchange::fail(HttpFailure::Kind kind, const QString& description)
{
    finish(tl::unexpected(HttpFailure{kind, description}));
}

void HttpExchange::finish(HttpResult result)
{
    m_overallTimer.stop();
    m_waitTimer.stop();
    m_retryTimer.stop();
    m_waitsForChannel = false;
    closeReply();
    if (const auto onFinished = std::exchange(m_onFinished, {})) {
        log(result);
        onFinished(std::move(result));
    }
}

void HttpExchange::log(const HttpResult& result) const
{
    if (!logHttp().isInfoEnabled())
        return;
    const qint64 elapsed = m_request.overallLimit.count() - m_deadline.remainingTime();
    qCInfo(logHttp).noquote().nospace() << "GET " << m_request.url.path() << ": " << outcomeOf(result) << ", "
                                        << elapsed << " ms";
}

void HttpExchange::drainReply()
{
    m_reply->disconnect(this);
    m_reply = nullptr;
    std::exchange(m_channel, nullptr)->drain();
}

void HttpExchange::closeReply()
{
    if (!m_reply)
        return;
    m_reply->disconnect(this);
    m_reply = nullptr;
    std::exchange(m_channel, nullptr)->release();
}

} // namespace quillmere
