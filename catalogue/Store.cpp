#include "Store.h"

#include "Defaults.h"
#include "Dressing.h"
#include "HubAPI.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int firstPage = 1;
constexpr int tapesPerPage = 200;
constexpr double shortestResume = 60.0; // seconds
constexpr double longestResume = 1e9;   // seconds

QString resumeKey(qint64 id)
{
    return u"resume.tape."_s + QString::number(id);
}

/** Far above any honest answer to a search, which holds as many as were asked for. */
constexpr qsizetype mostFound = 10'000;

/** The first tapes of an answer, which may hold more than were asked for. */
QList<Tape> firstTapes(const TapePage& page, qsizetype most)
{
    return page.items.first(std::min(most, page.items.size()));
}

} // namespace

Store::Store(HubAPI& hub, Defaults& resumeDefaults, QObject* parent)
    : QObject(parent), m_hub(hub), m_resumeDefaults(resumeDefaults)
{}

// No setter but the market's asks whether anything changed: equal tapes may differ in all but their ids.

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
    // Those of a market that is no longer chosen never get here.
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
    const CancelToken token = m_tasks.token();
    setIsLoading(true);
    const auto answer = co_await m_hub.get<TVStatus>(u"/api/tv/status"_s, token);
    if (token.isCancelled())
        co_return;
    if (answer) {
        setStatus(*answer);
        setLastError(std::nullopt);
    } else {
        setLastError(answer.error().errorDescription());
    }
    co_await loadTapes();
    if (token.isCancelled())
        co_return;
    setHasLoadedOnce(true);
    setIsLoading(false);
}

QCoro::Task<> Store::loadTapes()
{
    const CancelToken token = m_tasks.token();
    const QString market = m_market;
    const auto page = co_await m_hub.tapes(market, {}, firstPage, tapesPerPage, token);
    if (token.isCancelled() || market != m_market)
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

QCoro::Task<QList<Tape>> Store::search(QString query, CancelToken token)
{
    const CancelToken either = m_tasks.token(token);
    const auto page = co_await m_hub.tapes(m_market, query, firstPage, tapesPerPage, either);
    if (either.isCancelled() || !page)
        co_return {};
    co_return firstTapes(*page, mostFound);
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
    // Written so that what is not a number fails it too.
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
