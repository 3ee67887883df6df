#include "HttpExchange.h"

#include "Logging.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr int maxRedirects = 20;
constexpr std::chrono::seconds retryInterval{1};
constexpr qint64 readBufferBytes = 64 * 1024;
constexpr int notModified = 304;

int statusOf(const QNetworkReply& reply)
{
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

/** One that the answer is yet to follow. */
bool isInterim(int status)
{
    return status >= 100 && status <= 199;
}

bool isSuccess(int status)
{
    return status >= 200 && status <= 299;
}

/** Where the answer sends its reader; empty when it does not. */
QUrl redirectTarget(const QNetworkReply& reply)
{
    constexpr std::array statuses{301, 302, 303, 305, 307, 308};
    if (std::find(statuses.begin(), statuses.end(), statusOf(reply)) == statuses.end())
        return {};
    const QUrl location = QUrl::fromEncoded(reply.rawHeader("Location"));
    return location.isValid() ? reply.url().resolved(location) : QUrl();
}

/** Whether the body is gzip. What else it may be was not asked for, and is judged by its reader. */
bool isGzip(const QNetworkReply& reply)
{
    QList<QByteArray> codings = reply.rawHeader("Content-Encoding").toLower().split(',');
    std::transform(codings.begin(), codings.end(), codings.begin(), [](const auto& name) { return name.trimmed(); });
    codings.removeIf([](const QByteArray& name) { return name.isEmpty() || name == "identity"; });
    return codings == QList<QByteArray>{"gzip"} || codings == QList<QByteArray>{"x-gzip"};
}

/** The errors that a machine without a network gives. */
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
    case HttpFailure::Kind::CutShort:
        return u"cut short"_s;
    case HttpFailure::Kind::Unreadable:
        return u"unreadable"_s;
    case HttpFailure::Kind::Network:
        break;
    }
    return logging::withoutQueries(result.error().description);
}

QString platformWords(const char* text)
{
    return QCoreApplication::translate("QHttp", text);
}

} // namespace

HttpExchange::HttpExchange(HttpSession& session, HttpRequest request, QDeadlineTimer overall,
                           std::function<void(HttpResult)> done)
    : m_session(session), m_request(std::move(request)), m_overall(overall), m_done(std::move(done)),
      m_url(m_request.url)
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
    // Queued, so that whoever frees a line for its own next request has it first.
    connect(&m_session, &HttpSession::lineFreed, this, &HttpExchange::sendOverFreeLine, Qt::QueuedConnection);
}

HttpExchange::~HttpExchange()
{
    if (m_done)
        log(tl::unexpected(HttpFailure{HttpFailure::Kind::Cancelled, {}}));
    closeReply();
}

void HttpExchange::start()
{
    if (m_request.cache == HttpRequest::Cache::Revalidate)
        m_kept = m_session.answers().find(m_request.url);
    m_overallTimer.start(std::chrono::milliseconds(m_overall.remainingTime()));
    send(HttpLine::Way::KeptConnection);
}

void HttpExchange::send(HttpLine::Way way)
{
    m_body.clear();
    m_gunzip.reset();
    m_way = m_session.sendsInterimStatus(m_url) ? HttpLine::Way::OwnConnection : way;
    m_waitsForLine = true;
    sendOverFreeLine();
}

void HttpExchange::sendOverFreeLine()
{
    HttpLine* const line = m_waitsForLine ? m_session.freeLine(m_url) : nullptr;
    if (!line)
        return;
    m_waitsForLine = false;
    m_trustedSystem = m_session.trustsSystem();
    m_line = line;
    m_reply = m_session.get(*line, networkRequest(), m_way);
    m_reply->setReadBufferSize(readBufferBytes);
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &HttpExchange::readHead);
    connect(m_reply, &QNetworkReply::readyRead, this, &HttpExchange::readBody);
    connect(m_reply, &QNetworkReply::finished, this, &HttpExchange::readEnd);
}

QNetworkRequest HttpExchange::networkRequest() const
{
    QNetworkRequest request(m_url);
    request.setTransferTimeout(int(m_request.inactivityLimit.count()));
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    // One protocol, so that what the tests see with a server's faults is what the set does.
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    // Named here, gzip is left to this class to unpack.
    request.setRawHeader("Accept-Encoding", "gzip");
    if (m_request.cache == HttpRequest::Cache::Bypass) {
        request.setRawHeader("Cache-Control", "no-cache");
        request.setRawHeader("Pragma", "no-cache");
    } else if (sendsValidators()) {
        if (!m_kept->etag.isEmpty())
            request.setRawHeader("If-None-Match", m_kept->etag);
        if (!m_kept->lastModified.isEmpty())
            request.setRawHeader("If-Modified-Since", m_kept->lastModified);
    }
    return request;
}

void HttpExchange::readHead()
{
    const int status = statusOf(*m_reply);
    if (isInterim(status))
        return; // readEnd() judges it
    const QUrl target = redirectTarget(*m_reply);
    if (!target.isEmpty())
        redirect(target);
    else if (!isSuccess(status) || m_request.body == HttpRequest::Body::Ignore)
        answerWithoutBody(status);
}

void HttpExchange::redirect(const QUrl& target)
{
    const bool leavesTls = m_url.scheme() == "https"_L1 && target.scheme() == "http"_L1;
    drainReply();
    if (target.scheme() != "https"_L1 && target.scheme() != "http"_L1) {
        fail(HttpFailure::Kind::Network, platformWords("Unknown protocol specified"));
    } else if (leavesTls) {
        fail(HttpFailure::Kind::Network, platformWords("Insecure redirect"));
    } else if (m_redirects == maxRedirects) {
        fail(HttpFailure::Kind::Network, platformWords("Too many redirects"));
    } else {
        ++m_redirects;
        m_url = target;
        send(HttpLine::Way::KeptConnection);
    }
}

/** A body that is broken, endless or of no use cannot change what its head says. */
void HttpExchange::answerWithoutBody(int status)
{
    drainReply();
    if (status == notModified && sendsValidators()) {
        constexpr int ok = 200;
        finish(HttpResponse{ok, m_kept->body});
        return;
    }
    if (m_request.cache == HttpRequest::Cache::Revalidate)
        m_session.answers().drop(m_request.url);
    finish(HttpResponse{status, {}});
}

void HttpExchange::readBody()
{
    while (m_reply && m_reply->bytesAvailable() > 0) {
        const QByteArray bytes = m_reply->read(readBufferBytes);
        if (bytes.isEmpty())
            return;
        if (!unpack(bytes))
            fail(HttpFailure::Kind::Unreadable);
        else if (m_body.size() > m_request.maxBytes)
            fail(HttpFailure::Kind::TooLarge);
    }
}

bool HttpExchange::unpack(const QByteArray& bytes)
{
    if (!m_gunzip && isGzip(*m_reply))
        m_gunzip.emplace();
    if (m_gunzip)
        return m_gunzip->add(bytes, m_body, m_request.maxBytes);
    m_body += bytes;
    return true;
}

void HttpExchange::readEnd()
{
    readBody();
    if (!m_reply)
        return;
    const auto error = m_reply->error();
    const int status = statusOf(*m_reply);
    // Newer network accesses skip most interim statuses and then do not tell of the one that was all the server sent.
    const bool mayHaveSkipped = status == 0 && error == QNetworkReply::RemoteHostClosedError;
    if (m_way == HttpLine::Way::KeptConnection && (isInterim(status) || mayHaveSkipped))
        sendOverOwnConnection(status);
    else if (isInterim(status))
        answerWithoutBody(status);
    else if (error != QNetworkReply::NoError) // also with a status, where the body was cut short
        failWith(error);
    else if (m_gunzip && !m_gunzip->isWhole())
        fail(HttpFailure::Kind::CutShort);
    else
        succeed(status);
}

void HttpExchange::sendOverOwnConnection(int status)
{
    if (isInterim(status))
        m_session.rememberInterimStatus(m_url);
    closeReply();
    send(HttpLine::Way::OwnConnection);
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

void HttpExchange::succeed(int status)
{
    if (m_request.cache == HttpRequest::Cache::Revalidate) {
        if (m_redirects > 0)
            m_session.answers().drop(m_request.url);
        else
            m_session.answers().replace(m_request.url, *m_reply, status, m_body);
    }
    finish(HttpResponse{status, m_body});
}

void HttpExchange::sendAgainTrustingSystem()
{
    closeReply();
    m_session.trustSystem();
    send(m_way);
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
    if (!m_reply && !m_waitsForLine && m_session.connectivity().isOnline())
        sendAgain();
}

void HttpExchange::sendAgain()
{
    m_waitTimer.stop();
    m_retryTimer.stop();
    send(m_way);
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
    m_waitsForLine = false;
    closeReply();
    if (const auto done = std::exchange(m_done, {})) {
        log(result);
        done(std::move(result));
    }
}

void HttpExchange::log(const HttpResult& result) const
{
    if (!logHttp().isInfoEnabled())
        return;
    const qint64 taken = m_request.overallLimit.count() - m_overall.remainingTime();
    qCInfo(logHttp).noquote().nospace() << "GET " << m_request.url.path() << ": " << outcomeOf(result) << ", " << taken
                                        << " ms";
}

void HttpExchange::drainReply()
{
    m_reply->disconnect(this);
    m_reply = nullptr;
    std::exchange(m_line, nullptr)->drain();
}

void HttpExchange::closeReply()
{
    if (!m_reply)
        return;
    m_reply->disconnect(this);
    m_reply = nullptr;
    std::exchange(m_line, nullptr)->release();
}
