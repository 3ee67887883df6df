#include "HubAPI.h"

#include "Logging.h"
#include "RecordDecoder.h"
#include "Text.h"

#include <QElapsedTimer>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

namespace {

constexpr auto probeLimit = 8s;

HubError cancelled()
{
    return HubError::transport(u"The request was called off."_s);
}

HubError unreadable()
{
    return HubError::transport(u"The hub sent something this app couldn't read."_s);
}

HubError errorFor(const HttpFailure& failure)
{
    switch (failure.kind) {
    case HttpFailure::Kind::Cancelled:
        return cancelled();
    case HttpFailure::Kind::TimedOut:
        return HubError::transport(u"The hub took too long to answer."_s);
    case HttpFailure::Kind::TooLarge:
        return HubError::transport(u"The hub's answer was too big to read."_s);
    case HttpFailure::Kind::Truncated:
        return HubError::transport(u"The hub's answer was cut short."_s);
    case HttpFailure::Kind::Unreadable:
        return unreadable();
    case HttpFailure::Kind::Network:
        break;
    }
    return HubError::transport(failure.description.isEmpty() ? u"The hub couldn't be reached."_s : failure.description);
}

/** Logs the outcome and duration of one request to the hub. */
class RequestLogger
{
public:
    explicit RequestLogger(const QString& path) : m_path(path.section(u'?', 0, 0)) { m_elapsed.start(); }

    void logSuccess() const { log(u"answered"_s); }
    const HubError& logFailure(const HubError& error) const
    {
        log(logging::withoutQueries(error.errorDescription()));
        return error;
    }

private:
    void log(const QString& outcome) const
    {
        qCInfo(logHub).noquote().nospace() << m_path << ": " << outcome << ", " << m_elapsed.elapsed() << " ms";
    }

    QString m_path;
    QElapsedTimer m_elapsed;
};

QString queryValue(const QString& text)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(wellFormed(text)));
}

} // namespace

HubAPI::HubAPI(HttpClient& http, QUrl base, QObject* parent) : QObject(parent), m_http(http), m_base(std::move(base)) {}

HubAPI::~HubAPI() = default;

template<typename T>
QCoro::Task<HubResult<T>> HubAPI::get(QString path, std::stop_token callerToken)
{
    const LinkedStopSource linked(m_tasks.token(), callerToken);
    const std::stop_token token = linked.token();
    const RequestLogger logger(path);
    HubResult<QByteArray> body = co_await fetch(std::move(path), token);
    if (!body)
        co_return tl::unexpected(logger.logFailure(body.error()));
    if (token.stop_requested())
        co_return tl::unexpected(logger.logFailure(cancelled()));
    HubResult<T> record = co_await decode<T>(*std::move(body), token);
    if (record)
        logger.logSuccess();
    else
        logger.logFailure(record.error());
    co_return record;
}

QCoro::Task<HubResult<QByteArray>> HubAPI::fetch(QString path, std::stop_token token)
{
    const std::optional<QUrl> url = hubURL(path, m_base);
    if (!url)
        co_return tl::unexpected(HubError::badURL());
    if (token.stop_requested())
        co_return tl::unexpected(cancelled());
    HttpRequest request;
    request.url = *url;
    HttpResult response = co_await m_http.get(std::move(request), token);
    if (!response)
        co_return tl::unexpected(errorFor(response.error()));
    if (response->status < 200 || response->status > 299)
        co_return tl::unexpected(HubError::http(response->status));
    co_return std::move(response->body);
}

template<typename T>
QCoro::Task<HubResult<T>> HubAPI::decode(QByteArray body, std::stop_token token)
{
    const auto decoded = m_decoder.run([body = std::move(body), token]() -> HubResult<T> {
        if (token.stop_requested())
            return tl::unexpected(cancelled());
        auto record = decodeRecord<T>(body);
        if (!record)
            return tl::unexpected(unreadable());
        return *std::move(record);
    });
    // On cancellation the result is resolved here: at exit no event loop may be left to deliver the worker's result.
    const std::stop_callback registration(token, [decoded] { decoded.resolve(tl::unexpected(cancelled())); });
    co_return co_await decoded;
}

template QCoro::Task<HubResult<StationChannel>> HubAPI::get(QString, std::stop_token);
template QCoro::Task<HubResult<NewsStatus>> HubAPI::get(QString, std::stop_token);
template QCoro::Task<HubResult<TapeMarket>> HubAPI::get(QString, std::stop_token);
template QCoro::Task<HubResult<CatalogSummary>> HubAPI::get(QString, std::stop_token);
template QCoro::Task<HubResult<TVStatus>> HubAPI::get(QString, std::stop_token);
template QCoro::Task<HubResult<TapeBody>> HubAPI::get(QString, std::stop_token);
template QCoro::Task<HubResult<TapeDocument>> HubAPI::get(QString, std::stop_token);
template QCoro::Task<HubResult<Tape>> HubAPI::get(QString, std::stop_token);
template QCoro::Task<HubResult<TapePage>> HubAPI::get(QString, std::stop_token);
template QCoro::Task<HubResult<TranscriptResult>> HubAPI::get(QString, std::stop_token);

QCoro::Task<HubResult<TapePage>> HubAPI::tapes(QString market, QString query, int page, int perPage,
                                               std::stop_token token)
{
    QString reference = u"/api/tv/tapes?page=%1&per_page=%2"_s.arg(page).arg(perPage);
    if (!market.isEmpty())
        reference += u"&market="_s + queryValue(market);
    if (!trimmedText(query).isEmpty())
        reference += u"&q="_s + queryValue(query);
    return get<TapePage>(reference, token);
}

QCoro::Task<HubResult<Tape>> HubAPI::tape(qint64 id, std::stop_token token)
{
    return get<Tape>(u"/api/tv/tape/%1"_s.arg(id), token);
}

QCoro::Task<HubResult<TranscriptResult>> HubAPI::transcript(qint64 id, std::stop_token token)
{
    return get<TranscriptResult>(u"/api/meetings/%1/transcript"_s.arg(id), token);
}

QCoro::Task<bool> HubAPI::probe(QString path, std::stop_token callerToken)
{
    const LinkedStopSource linked(m_tasks.token(), callerToken);
    const std::stop_token token = linked.token();
    const std::optional<QUrl> url = hubURL(path, m_base);
    if (!url || token.stop_requested())
        co_return false;
    HttpRequest request;
    request.url = *url;
    request.body = HttpRequest::Body::Ignore;
    request.cache = HttpRequest::Cache::Bypass;
    request.inactivityLimit = probeLimit;
    request.overallLimit = probeLimit;
    const HttpResult response = co_await m_http.get(std::move(request), token);
    co_return !token.stop_requested() && response && response->status == 200;
}

} // namespace quillmere
