#include "Store.h"

#include "Defaults.h"
#include "Dressing.h"
#include "HubAPI.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

constexpr int firstPage = 1;
constexpr int tapesPerPage = 200;
constexpr double shortestResume = 60.0; // seconds
constexpr double longestResume = 1e9;   // seconds

QString resumeKey(qint64 id)
{
    return u"resume.tape."_s + QString::number(id);
}

/** Limit for a search response. A correct hub sends at most the requested 200 tapes. */
constexpr qsizetype maxSearchResults = 10'000;

/** The first `maxCount` tapes of a page. A hub can send more than were requested. */
QList<Tape> firstTapes(const TapePage& page, qsizetype maxCount)
{
    return page.items.first(std::min(maxCount, page.items.size()));
}

} // namespace

Store::Store(HubAPI& hub, Defaults& resumeDefaults, QObject* parent)
    : QObject(parent), m_hub(hub), m_resumeDefaults(resumeDefaults)
{}

// Only setMarket() compares the old and new value: two tapes are equal if their ids are, even if all else differs.

void Store::setStatus(TVStatus status)
{
    Q_EMIT objectWillChange();
    m_status = std::move(status);
    Q_EMIT statusChanged();
}

void Store::setTapes(QList<Tape> tapes)
{
    Q_EMIT objectWillChange();
    m_tapes = std::move(tapes);
    Q_EMIT tapesChanged();
}

void Store::setShelves(QList<Shelf> shelves)
{
    Q_EMIT objectWillChange();
    m_shelves = std::move(shelves);
    // Shelves of a market that is no longer chosen are dropped before this point.
    m_shelvesMarket = m_market;
    Q_EMIT shelvesChanged();
}

void Store::setIsLoading(bool isLoading)
{
    Q_EMIT objectWillChange();
    m_isLoading = isLoading;
    Q_EMIT isLoadingChanged();
}

void Store::setHasLoadedOnce(bool hasLoadedOnce)
{
    Q_EMIT objectWillChange();
    m_hasLoadedOnce = hasLoadedOnce;
    Q_EMIT hasLoadedOnceChanged();
}

void Store::setLastError(std::optional<QString> lastError)
{
    Q_EMIT objectWillChange();
    m_lastError = std::move(lastError);
    Q_EMIT lastErrorChanged();
}

void Store::setMarket(QString market)
{
    if (market == m_market)
        return;
    Q_EMIT objectWillChange();
    m_market = std::move(market);
    Q_EMIT marketChanged();
    loadTapes();
}

QCoro::Task<> Store::refresh()
{
    const std::stop_token token = m_tasks.token();
    setIsLoading(true);
    const auto status = co_await m_hub.get<TVStatus>(u"/api/tv/status"_s, token);
    if (token.stop_requested())
        co_return;
    if (status) {
        setStatus(*status);
        setLastError(std::nullopt);
    } else {
        setLastError(status.error().errorDescription());
    }
    co_await loadTapes();
    if (token.stop_requested())
        co_return;
    setHasLoadedOnce(true);
    setIsLoading(false);
}

QCoro::Task<> Store::loadTapes()
{
    const std::stop_token token = m_tasks.token();
    const QString market = m_market;
    const auto page = co_await m_hub.tapes(market, {}, firstPage, tapesPerPage, token);
    if (token.stop_requested() || market != m_market)
        co_return;
    if (page) {
        const QList<Tape> tapes = firstTapes(*page, tapesPerPage);
        setTapes(tapes);
        setShelves(buildShelves(tapes));
        setLastError(std::nullopt);
    } else if (m_tapes.isEmpty()) {
        setLastError(page.error().errorDescription());
    }
}

QCoro::Task<QList<Tape>> Store::search(QString query, std::stop_token token)
{
    const LinkedStopSource linked(m_tasks.token(), token);
    const std::stop_token anyToken = linked.token();
    const auto page = co_await m_hub.tapes(m_market, query, firstPage, tapesPerPage, anyToken);
    if (anyToken.stop_requested() || !page)
        co_return {};
    co_return firstTapes(*page, maxSearchResults);
}

void Store::saveResume(qint64 id, double seconds)
{
    if (seconds < shortestResume)
        removeResume(id);
    else if (seconds <= longestResume)
        m_resumeDefaults.setNumber(resumeKey(id), seconds);
}

double Store::resumePosition(qint64 id) const
{
    const double seconds = m_resumeDefaults.number(resumeKey(id));
    // This form of the condition is also false for NaN.
    return seconds >= 0 && seconds <= longestResume ? seconds : 0;
}

void Store::removeResume(qint64 id)
{
    m_resumeDefaults.remove(resumeKey(id));
}

qint64 Store::stockCount() const
{
    if (m_market.isEmpty())
        return m_status.rewindery.tapes;
    const auto& markets = m_status.rewindery.markets;
    const auto chosen = std::find_if(markets.begin(), markets.end(),
                                     [this](const TapeMarket& market) { return market.slug == m_market; });
    return chosen == markets.end() ? m_tapes.size() : chosen->tapes;
}

} // namespace quillmere
