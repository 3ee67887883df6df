#include "NewsController.h"

#include "Clock.h"
#include "HubURL.h"
#include "WakeLock.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

namespace {

constexpr auto watchPause = 6s;

/** Waits for `time`, or until `token` is cancelled. */
QCoro::Task<> wait(Clock& clock, std::chrono::milliseconds time, std::stop_token token)
{
    const Completion<bool> done;
    const auto timer = clock.after(time, [done] { done.resolve(true); });
    const std::stop_callback registration(token, [done] { done.resolve(false); });
    co_await done;
}

TunerStation chosenStation(const std::optional<TunerStation>& selected, const QList<TunerStation>& stations,
                           const NewsStatus& news)
{
    if (selected)
        return *selected;
    if (!stations.isEmpty())
        return stations.first();
    return {u"5"_s, u"5 O'Clock News"_s, news.hlsURL};
}

/** Index of an equal station, else of one with the same number; -1 if none. */
qsizetype indexOfStation(const TunerStation& station, const QList<TunerStation>& stations)
{
    const qsizetype index = stations.indexOf(station);
    if (index >= 0)
        return index;
    const auto hasSameNumber = [&](const TunerStation& other) { return other.number == station.number; };
    const auto found = std::find_if(stations.begin(), stations.end(), hasSameNumber);
    return found == stations.end() ? -1 : found - stations.begin();
}

} // namespace

NewsController::NewsController(QObject* parent) : QObject(parent) {}

NewsController::~NewsController()
{
    if (m_player)
        m_player->setItem(nullptr);
}

void NewsController::setStore(Store* store)
{
    if (m_store == store)
        return;
    m_store = store;
    connect(store, &Store::statusChanged, this, &NewsController::onStatusChanged);
    Q_EMIT storeChanged();
    onStatusChanged();
}

void NewsController::appear()
{
    m_isInView = true;
    if (std::exchange(m_wasDismissedWhileLit, false))
        Q_EMIT pictureChanged();
    restartWatch();
}

void NewsController::disappear()
{
    m_isInView = false;
    m_wasDismissedWhileLit = m_wasDismissedWhileLit || isLit();
    releasePlayer();
    m_screenTasks.cancel();
}

void NewsController::pick(const TunerStation& station)
{
    if (!m_isInView || station.number == m_currentStation.number)
        return;
    releasePlayer();
    setLive(false);
    setChecking(true);
    m_selected = station;
    updateCurrentStation();
}

void NewsController::stepBy(int by)
{
    const qsizetype count = m_stations.size();
    qsizetype index = indexOfStation(m_currentStation, m_stations);
    // If the current station is not in the list, the next is the first of the list and the previous is the last.
    if (index < 0 && by < 0)
        index = 0;
    for (qsizetype tried = 0; tried < count; ++tried) {
        index = (index + by + count) % count;
        // pick() ignores stations with the current number, so skip duplicates of it.
        if (m_stations.at(index).number != m_currentStation.number) {
            const TunerStation next = m_stations.at(index);
            pick(next);
            return;
        }
    }
}

bool NewsController::press(int key)
{
    if (key != Qt::Key_ChannelUp && key != Qt::Key_ChannelDown)
        return false;
    stepBy(key == Qt::Key_ChannelUp ? 1 : -1);
    return true;
}

QCoro::Task<> NewsController::watchTower()
{
    const std::stop_token screen = m_screenTasks.token();
    const LinkedStopSource linked(m_watchTasks.token(), screen);
    const std::stop_token watch = linked.token();
    Clock& clock = *m_clock;
    setChecking(true);
    // A cancelled watch still runs its current pass to the end and applies the results, unless the screen has
    // disappeared.
    while (!watch.stop_requested()) {
        const bool answered = co_await m_hub->probe(m_currentStation.path, watch);
        if (screen.stop_requested())
            co_return;
        onProbeFinished(answered);
        auto status = co_await m_hub->get<TVStatus>(u"/api/tv/status"_s, watch);
        if (screen.stop_requested())
            co_return;
        if (status)
            m_store->setStatus(*std::move(status));
        co_await wait(clock, watchPause, watch);
    }
}

void NewsController::restartWatch()
{
    // The old watch applies its last results inside cancel(), before the new watch starts.
    m_watchTasks.cancel();
    watchTower();
}

void NewsController::onProbeFinished(bool answered)
{
    if (!answered)
        releasePlayer();
    else if (!m_player)
        tuneIn();
    setLive(answered);
    setChecking(false);
}

void NewsController::onStatusChanged()
{
    QList<TunerStation> stations = m_store->status().news.stations();
    if (stations != m_stations) {
        m_stations = std::move(stations);
        Q_EMIT stationsChanged();
    }
    updateCurrentStation();
}

void NewsController::updateCurrentStation()
{
    TunerStation station = chosenStation(m_selected, m_stations, m_store->status().news);
    if (station == m_currentStation)
        return;
    const TunerStation before = std::exchange(m_currentStation, std::move(station));
    Q_EMIT currentStationChanged();
    updatePicture();
    if (m_isInView && m_currentStation.path != before.path)
        restartWatch();
}

void NewsController::updatePicture()
{
    const QStringList shownStationNumbers = m_isLive && m_player ? QStringList{m_currentStation.number} : QStringList();
    if (shownStationNumbers == m_shownStationNumbers)
        return;
    m_shownStationNumbers = shownStationNumbers;
    if (!isLit())
        m_wakeLock.reset();
    else if (!m_wakeLock)
        m_wakeLock = std::make_unique<WakeLock>(u"Watching the news"_s);
    Q_EMIT pictureChanged();
}

void NewsController::tuneIn()
{
    const auto url = hubURL(m_currentStation.path);
    if (!url)
        return;
    m_player = m_createPlayer(*m_clock);
    m_player->setItem(std::make_shared<PlayerItem>(*url, PlayerItem::Kind::Live));
    m_player->setAutomaticallyWaitsToMinimizeStalling(true);
    m_player->play();
    Q_EMIT playerChanged();
    updatePicture();
}

void NewsController::releasePlayer()
{
    if (!m_player)
        return;
    m_player->pause();
    const auto released = std::exchange(m_player, nullptr);
    Q_EMIT playerChanged();
    updatePicture();
    released->setItem(nullptr);
}

void NewsController::setLive(bool isLive)
{
    if (m_isLive == isLive)
        return;
    m_isLive = isLive;
    Q_EMIT isLiveChanged();
    updatePicture();
}

void NewsController::setChecking(bool checking)
{
    if (m_checking == checking)
        return;
    m_checking = checking;
    Q_EMIT checkingChanged();
}

} // namespace quillmere
