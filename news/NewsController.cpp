#include "NewsController.h"

#include "Clock.h"
#include "HubURL.h"
#include "WakeLock.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto watchPause = 6s;

/** Waits, by the clock, for as long as nobody cancels. */
QCoro::Task<> wait(Clock& clock, std::chrono::milliseconds time, CancelToken token)
{
    const Completion<bool> done;
    const auto timer = clock.after(time, [done] { done.resolve(true); });
    const auto registration = token.onCancel([done] { done.resolve(false); });
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

/** Where the station stands in the list, also when its label or path has changed there; -1 when it has left. */
qsizetype placeOf(const TunerStation& station, const QList<TunerStation>& stations)
{
    const qsizetype place = stations.indexOf(station);
    if (place >= 0)
        return place;
    const auto isIt = [&](const TunerStation& other) { return other.number == station.number; };
    const auto found = std::find_if(stations.begin(), stations.end(), isIt);
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
    connect(store, &Store::statusChanged, this, &NewsController::takeStatus);
    Q_EMIT storeChanged();
    takeStatus();
}

void NewsController::setHub(HubAPI* hub)
{
    if (m_hub == hub)
        return;
    m_hub = hub;
    Q_EMIT hubChanged();
}

void NewsController::setTimepiece(Timepiece* timepiece)
{
    if (m_timepiece == timepiece)
        return;
    m_timepiece = timepiece;
    Q_EMIT timepieceChanged();
}

void NewsController::appear()
{
    m_isStanding = true;
    if (std::exchange(m_wasLeftLit, false))
        Q_EMIT pictureChanged();
    restartWatch();
}

void NewsController::disappear()
{
    m_isStanding = false;
    m_wasLeftLit = m_wasLeftLit || isLit();
    dropPlayer();
    m_screen.cancel();
}

void NewsController::pick(const TunerStation& station)
{
    if (!m_isStanding || station.number == m_currentStation.number)
        return;
    dropPlayer();
    setLive(false);
    setChecking(true);
    m_selected = station;
    followStation();
}

void NewsController::step(int by)
{
    const qsizetype count = m_stations.size();
    qsizetype place = placeOf(m_currentStation, m_stations);
    // From a station that has left the list the next one is its first, and the previous one its last.
    if (place < 0 && by < 0)
        place = 0;
    for (qsizetype tried = 0; tried < count; ++tried) {
        place = (place + by + count) % count;
        // Another station with this one's number cannot be picked from here, and must not bar the way.
        if (m_stations.at(place).number != m_currentStation.number) {
            const TunerStation next = m_stations.at(place);
            pick(next);
            return;
        }
    }
}

bool NewsController::press(int key)
{
    if (key != Qt::Key_ChannelUp && key != Qt::Key_ChannelDown)
        return false;
    step(key == Qt::Key_ChannelUp ? 1 : -1);
    return true;
}

QCoro::Task<> NewsController::watchTower()
{
    const CancelToken screen = m_screen.token();
    const CancelToken watch = m_watch.token(screen);
    Clock& clock = m_timepiece->clock();
    setChecking(true);
    // What a cancelled pass has begun it brings to its end, as long as the screen stands.
    while (!watch.isCancelled()) {
        const bool answered = co_await m_hub->probe(m_currentStation.path, watch);
        if (screen.isCancelled())
            co_return;
        takeProbe(answered);
        auto status = co_await m_hub->get<TVStatus>(u"/api/tv/status"_s, watch);
        if (screen.isCancelled())
            co_return;
        if (status)
            m_store->setStatus(*std::move(status));
        co_await wait(clock, watchPause, watch);
    }
}

void NewsController::restartWatch()
{
    // The old pass makes its last updates inside this call, before the new watch's first step.
    m_watch.cancel();
    watchTower();
}

void NewsController::takeProbe(bool answered)
{
    if (!answered)
        dropPlayer();
    else if (!m_player)
        tuneIn();
    setLive(answered);
    setChecking(false);
}

void NewsController::takeStatus()
{
    QList<TunerStation> stations = m_store->status().news.stations();
    if (stations != m_stations) {
        m_stations = std::move(stations);
        Q_EMIT stationsChanged();
    }
    followStation();
}

void NewsController::followStation()
{
    TunerStation station = chosenStation(m_selected, m_stations, m_store->status().news);
    if (station == m_currentStation)
        return;
    const TunerStation before = std::exchange(m_currentStation, std::move(station));
    Q_EMIT currentStationChanged();
    followPicture();
    if (m_isStanding && m_currentStation.path != before.path)
        restartWatch();
}

void NewsController::followPicture()
{
    const QStringList onAir = m_isLive && m_player ? QStringList{m_currentStation.number} : QStringList();
    if (onAir == m_onAir)
        return;
    m_onAir = onAir;
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
    m_player = m_makePlayer(m_timepiece->clock());
    m_player->setItem(std::make_shared<PlayerItem>(*url, PlayerItem::Kind::Live));
    m_player->setAutomaticallyWaitsToMinimizeStalling(true);
    m_player->play();
    Q_EMIT playerChanged();
    followPicture();
}

void NewsController::dropPlayer()
{
    if (!m_player)
        return;
    m_player->pause();
    const auto leaving = std::exchange(m_player, nullptr);
    Q_EMIT playerChanged();
    followPicture();
    leaving->setItem(nullptr);
}

void NewsController::setLive(bool isLive)
{
    if (m_isLive == isLive)
        return;
    m_isLive = isLive;
    Q_EMIT isLiveChanged();
    followPicture();
}

void NewsController::setChecking(bool checking)
{
    if (m_checking == checking)
        return;
    m_checking = checking;
    Q_EMIT checkingChanged();
}
