#include "HttpExchange.h"

#include <algorithm>

namespace {

constexpr int maxRedirects = 20;
constexpr std::chrono::seconds retryInterval{1};
constexpr qint64 readBufferBytes = 64 * 1024;
constexpr int firstErrorStatus = 400;
constexpr int notModified = 304;

/** Some errors are only the platform's name for an answer's status. */
bool standsForStatus(QNetworkReply::NetworkError error, int status)
{
    const bool isContentError =
        error >= QNetworkReply::ContentAccessDenied && error <= QNetworkReply::UnknownContentError;
    const bool isServerError =
        error >= QNetworkReply::InternalServerError && error <= QNetworkReply::UnknownServerError;
    const bool isOther = error == QNetworkReply::ProtocolInvalidOperationError        // 400 and 418
                         || error == QNetworkReply::ProxyAuthenticationRequiredError; // 407
    return status >= firstErrorStatus && (isContentError || isServerError || isOther);
}

bool isRedirect(int status)
{
    constexpr int first = 300;
    return status >= first && status < firstErrorStatus;
}

/** The errors that a machine without a network gives. */
bool isNameOrRouteError(QNetworkReply::NetworkError error)
{
    return error == QNetworkReply::HostNotFoundError || error == QNetworkReply::TemporaryNetworkFailureError ||
           error == QNetworkReply::NetworkSessionFailedError || error == QNetworkReply::UnknownNetworkError;
}

} // namespace

HttpExchange::HttpExchange(HttpSession& session, HttpRequest request, QDeadlineTimer overall,
                           std::function<void(HttpResult)> done)
    : m_session(session), m_request(std::move(request)), m_overall(overall), m_done(std::move(done))
{
    m_overallTimer.setSingleShot(true);
    m_overallTimer.setTimerType(Qt::PreciseTimer); // a coarse one may end a minute three seconds early
    m_waitTimer.setSingleShot(true);
    m_retryTimer.setSingleShot(true);
    // Without NetworkManager the toolkit never tells that a network has come.
    m_retryTimer.setInterval(retryInterval);
    connect(&m_retryTimer, &QTimer::timeout, this, &HttpExchange::sendAgain);
    m_waitTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_overallTimer, &QTimer::timeout, this, &HttpExchange::onOverallLimit);
    connect(&m_waitTimer, &QTimer::timeout, this, [this] { finish(tl::unexpected(*m_unreached)); });
}

HttpExchange::~HttpExchange()
{
    closeReply();
}

void HttpExchange::start()
{
    if (m_request.cache == HttpRequest::Cache::Revalidate)
        m_kept = m_session.answers().find(m_request.url);
    m_overallTimer.start(std::chrono::milliseconds(m_overall.remainingTime()));
    send();
}

void HttpExchange::send()
{
    m_body.clear();
    m_gunzip.reset();
    m_wasRedirected = false;
    m_trustedSystem = m_session.trustsSystem();
    m_reply = m_session.get(networkRequest());
    m_reply->setReadBufferSize(readBufferBytes);
    connect(m_reply, &QNetworkReply::readyRead, this, &HttpExchange::readBody);
    connect(m_reply, &QNetworkReply::redirected, this, [this] { m_wasRedirected = true; });
    connect(m_reply, &QNetworkReply::finished, this, &HttpExchange::readAnswer);
}

QNetworkRequest HttpExchange::networkRequest() const
{
    QNetworkRequest request(m_request.url);
    request.setTransferTimeout(int(m_request.inactivityLimit.count()));
    request.setMaximumRedirectsAllowed(maxRedirects);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    // One protocol, so that what the tests see with a server's faults is what the set does.
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    // Named here, gzip is left to this class to unpack.
    request.setRawHeader("Accept-Encoding", "gzip");
    if (m_request.cache == HttpRequest::Cache::Bypass) {
        request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    } else if (m_kept) {
        if (!m_kept->etag.isEmpty())
            request.setRawHeader("If-None-Match", m_kept->etag);
        if (!m_kept->lastModified.isEmpty())
            request.setRawHeader("If-Modified-Since", m_kept->lastModified);
    }
    return request;
}

void HttpExchange::readBody()
{
    while (m_reply && m_reply->bytesAvailable() > 0) {
        const QByteArray bytes = m_reply->read(readBufferBytes);
        if (bytes.isEmpty())
            return;
        if (!takeBytes(bytes))
            fail(HttpFailure::Kind::Unreadable);
        else if (m_body.size() > m_request.maxBytes)
            fail(HttpFailure::Kind::TooLarge);
    }
}

bool HttpExchange::takeBytes(const QByteArray& bytes)
{
    if (!m_gunzip && m_reply->rawHeader("Content-Encoding").trimmed().toLower() == "gzip")
        m_gunzip.emplace();
    if (m_gunzip)
        return m_gunzip->add(bytes, m_body, m_request.maxBytes);
    m_body += bytes;
    return true;
}

void HttpExchange::readAnswer()
{
    readBody();
    if (!m_reply)
        return;
    const auto error = m_reply->error();
    const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const bool leadsNowhere = isRedirect(status) && !m_reply->hasRawHeader("Location");
    // The error comes first: a body cut short comes with the status 200.
    if (error != QNetworkReply::NoError && !standsForStatus(error, status) && !leadsNowhere)
        failWith(error);
    else if (m_gunzip && !m_gunzip->isWhole())
        fail(HttpFailure::Kind::CutShort);
    else
        settle(status);
}

void HttpExchange::failWith(QNetworkReply::NetworkError error)
{
    if (error == QNetworkReply::OperationCanceledError) // not by this object, so by the transfer's own limit
        fail(HttpFailure::Kind::TimedOut);
    else if (error == QNetworkReply::SslHandshakeFailedError && !m_trustedSystem)
        sendAgainTrustingSystem();
    else if (isNameOrRouteError(error))
        waitForNetwork({HttpFailure::Kind::Network, m_reply->errorString()});
    else
        fail(HttpFailure::Kind::Network, m_reply->errorString());
}

void HttpExchange::settle(int status)
{
    if (m_request.cache == HttpRequest::Cache::Bypass) {
        finish(HttpResponse{status, m_body});
    } else if (status == notModified && m_kept && m_wasRedirected) {
        // The validators went along to another address, whose 304 says nothing of the kept body.
        m_kept.reset();
        m_session.answers().drop(m_request.url);
        closeReply();
        send();
    } else if (status == notModified && m_kept) {
        constexpr int ok = 200;
        finish(HttpResponse{ok, m_kept->body});
    } else {
        if (m_wasRedirected)
            m_session.answers().drop(m_request.url);
        else
            m_session.answers().replace(m_request.url, *m_reply, status, m_body);
        finish(HttpResponse{status, m_body});
    }
}

void HttpExchange::sendAgainTrustingSystem()
{
    closeReply();
    m_session.trustSystem();
    send();
}

void HttpExchange::waitForNetwork(HttpFailure failure)
{
    closeReply();
    if (m_session.connectivity().isOnline()) {
        finish(tl::unexpected(std::move(failure)));
        return;
    }
    if (!m_unreached) {
        connect(&m_session.connectivity(), &Connectivity::changed, this, &HttpExchange::sendAgainIfOnline);
        m_waitLimit.setRemainingTime(m_request.inactivityLimit);
    }
    m_unreached = std::move(failure);
    m_waitTimer.start(std::chrono::milliseconds(m_waitLimit.remainingTime()));
    m_retryTimer.start();
}

void HttpExchange::sendAgainIfOnline()
{
    if (!m_reply && m_session.connectivity().isOnline())
        sendAgain();
}

void HttpExchange::sendAgain()
{
    m_waitTimer.stop();
    m_retryTimer.stop();
    send();
}

void HttpExchange::onOverallLimit()
{
    if (m_unreached && !m_reply)
        finish(tl::unexpected(*m_unreached));
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
    closeReply();
    if (const auto done = std::exchange(m_done, {}))
        done(std::move(result));
}

void HttpExchange::closeReply()
{
    if (!m_reply)
        return;
    QNetworkReply* const reply = m_reply;
    m_reply.clear();
    reply->disconnect(this);
    reply->abort();
    reply->deleteLater();
}
