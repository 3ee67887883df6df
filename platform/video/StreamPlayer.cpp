#include "StreamPlayer.h"

#include "Logging.h"

#include <QMetaEnum>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;
using Cause = VideoFailure::Cause;

namespace {

// A server that dies leaves an end of file like any other; only near the duration is it the end of play.
constexpr double endTolerance = 2;

// The furthest that a seek goes: an end of file soon after it would otherwise pass for the end of play.
constexpr double beforeEnd = 3;

constexpr std::chrono::seconds stallLimit{12};

// A server that sends a little now and then never falls silent, and yet there is nothing to see.
constexpr std::chrono::seconds firstPictureLimit{30};

template<typename Enum>
const char* keyOf(Enum value)
{
    return QMetaEnum::fromType<Enum>().valueToKey(int(value));
}

void logFailure(const char* what, const VideoFailure& failure)
{
    qCInfo(logPlayback).noquote().nospace()
        << what << ": " << keyOf(failure.cause) << ", status " << failure.httpStatus << ", "
        << logging::withoutQueries(failure.description).replace(u'\n', u" / "_s);
}

bool isPlayable(const QUrl& url)
{
    return url.isValid() && !url.host().isEmpty() && (url.scheme() == u"https"_s || url.scheme() == u"http"_s);
}

} // namespace

StreamPlayer::StreamPlayer(VideoOptions options, Clock& clock, LoadPlugin loadPlugin, QObject* parent)
    : VideoPlayer(parent), m_options(std::move(options)), m_loadPlugin(std::move(loadPlugin)),
      m_reconnection(clock, [this] { reconnect(); }), m_stallWatch(clock, stallLimit, [this] { stalled(); }),
      m_loadWatch(clock, firstPictureLimit, [this] { stalled(); }),
      m_listener(static_cast<VideoEngineListener*>(this), [](VideoEngineListener*) {})
{}

void StreamPlayer::setItem(std::shared_ptr<PlayerItem> item)
{
    const Change change(*this);
    letGo();
    m_item = std::move(item);
    m_announcements.add([this] { Q_EMIT itemChanged(); });
    if (!m_item)
        return;
    m_reconnection.begin(m_item->isLive());
    load(0);
}

void StreamPlayer::setPlaying(bool playing)
{
    const Change change(*this);
    m_playing = playing;
    if (m_engine)
        m_engine->setPaused(!playing);
    if (playing && m_phase == Phase::Ended)
        load(0);
}

VideoPlayer::TimeControl StreamPlayer::timeControl() const
{
    if (!m_playing || m_phase == Phase::Idle || m_phase == Phase::Ended || m_phase == Phase::Failed)
        return TimeControl::Paused;
    return isWaiting() ? TimeControl::WaitingToPlay : TimeControl::Playing;
}

bool StreamPlayer::isWaiting() const
{
    return m_phase == Phase::Loading || m_phase == Phase::Broken ||
           (m_phase == Phase::Shown && (m_buffering || m_target));
}

void StreamPlayer::setAutomaticallyWaitsToMinimizeStalling(bool waits)
{
    m_waitsForData = waits;
    if (m_engine)
        m_engine->setWaitsForData(waits);
}

double StreamPlayer::bufferedTo() const
{
    const double known = m_timeline.positionAt(m_bufferedTo);
    return std::max(m_duration > 0 ? std::min(known, m_duration) : known, position());
}

void StreamPlayer::seek(double seconds, SeekTolerance tolerance, SeekDone done)
{
    const Change change(*this);
    if (!m_item || m_item->isLive() || m_phase == Phase::Failed || !std::isfinite(seconds)) {
        callLater(std::move(done), false);
        return;
    }
    finishSeek(false);
    m_seekDone = std::move(done);
    m_target = bounded(seconds);
    if (m_phase == Phase::Shown) {
        m_stallWatch.moved();
        m_engine->seek(m_load, ++m_seek, *m_target, tolerance);
    } else if (m_phase != Phase::Broken) {
        load(*m_target);
    }
}

std::unique_ptr<TimeObserver> StreamPlayer::addPeriodicTimeObserver(std::chrono::seconds interval,
                                                                    std::function<void(double)> callback)
{
    return m_periodicTime.add(interval, std::move(callback));
}

void StreamPlayer::select(MediaTrack::Kind kind, int id)
{
    if (!m_item)
        return;
    m_selected[kind] = id;
    if (m_phase == Phase::Shown)
        m_engine->selectTrack(kind, id);
}

void StreamPlayer::load(double startAt)
{
    m_phase = Phase::Loading;
    m_target = startAt;
    m_buffering = false;
    m_bufferedTo = 0;
    m_timeline.begin();
    m_loadWatch.moved();
    ++m_load;
    if (!isPlayable(m_item->url())) {
        const auto refuse = [this, load = m_load] {
            const Change change(*this);
            if (concerns(load))
                fail({Cause::BadAddress, 0, m_item->url().toString()});
        };
        QMetaObject::invokeMethod(this, refuse, Qt::QueuedConnection);
    } else if (m_rendererReady) {
        const bool isLive = m_item->isLive();
        m_engine->load({m_load, m_item->url(), isLive ? 0 : startAt, isLive, !m_playing});
    } else if (!m_engine && !m_opening) {
        openEngine();
    }
}

void StreamPlayer::letGo()
{
    ++m_load;
    if (m_rendererReady && m_phase != Phase::Idle)
        m_engine->stop();
    m_phase = Phase::Idle;
    finishSeek(false);
    m_reconnection.cancel();
    m_periodicTime.end();
    m_hasShownPicture = false;
    m_target.reset();
    m_position = 0;
    m_duration = 0;
    m_bufferedTo = 0;
    m_seekable = false;
    m_timeline = {};
    m_selected.clear();
    setTracks({});
}

QCoro::Task<> StreamPlayer::openEngine()
{
    const CancelToken token = m_tasks.token();
    m_opening = true;
    const auto plugin = co_await m_loadPlugin();
    if (token.isCancelled())
        co_return;
    if (plugin)
        m_starting = (*plugin)->makeEngine(m_options, Messenger<VideoEngineListener>(m_listener));
    else
        engineFailed({Cause::NoPlugin, 0, plugin.error()});
}

void StreamPlayer::stalled()
{
    const Change change(*this);
    m_engine->stop();
    takeBreak({Cause::TimedOut, 0, {}});
}

void StreamPlayer::reconnect()
{
    const Change change(*this);
    load(position());
}

// A load or a seek has come to its picture.
void StreamPlayer::arriveAt(Timeline::Place place)
{
    if (!isBreak(place)) {
        m_target.reset();
        finishSeek(true);
    }
    moveTo(place);
}

void StreamPlayer::moveTo(Timeline::Place place)
{
    if (isBreak(place)) {
        m_engine->stop();
        takeBreak({Cause::BrokenStream, 0, {}});
        return;
    }
    m_position = place.position;
    m_stallWatch.moved();
    m_reconnection.reached(m_position);
    m_announcements.add([this, seconds = m_position] { m_periodicTime.moveTo(seconds); });
}

// What a server leaves out again it does not have, and the viewer wants to see the rest; the very end is none.
bool StreamPlayer::isBreak(Timeline::Place place) const
{
    const bool isAtEnd = m_duration > 0 && place.position >= m_duration - endTolerance;
    return place.kind == Timeline::Place::Kind::Jumped || (place.kind == Timeline::Place::Kind::JumpedAgain && isAtEnd);
}

void StreamPlayer::logState(bool timeControlChanged)
{
    static constexpr const char* phases[] = {"Idle", "Loading", "Shown", "Broken", "Ended", "Failed"};
    if (std::exchange(m_loggedPhase, m_phase) == m_phase && !timeControlChanged)
        return;
    qCInfo(logPlayback).noquote().nospace()
        << (m_item ? m_item->url().path() : QString()) << ": " << phases[int(m_phase)] << ", "
        << keyOf(m_announced.timeControl) << ", at " << m_announced.position << " of " << m_announced.duration << " s";
}

// However the data stopped: whether it was the end of play, the position says.
void StreamPlayer::takeBreak(const VideoFailure& failure)
{
    logFailure("breaks", failure);
    ++m_load;
    m_buffering = false;
    if (m_phase == Phase::Shown && !m_target && m_duration > 0 && m_position >= m_duration - endTolerance)
        end();
    else if (m_phase == Phase::Loading && bounded(*m_target) < *m_target)
        load(bounded(*m_target)); // the start was beyond the end
    else if ((m_hasShownPicture || m_item->isLive()) && m_reconnection.planAfterBreakAt(position()))
        m_phase = Phase::Broken;
    else
        fail(failure);
}

void StreamPlayer::end()
{
    m_phase = Phase::Ended;
    m_playing = false;
    m_position = std::max(m_position, m_duration); // the engine does not tell of the last moment
    m_engine->setPaused(true);
    tellItem([](PlayerItem& item) { item.setPlayedToEnd(); });
}

void StreamPlayer::fail(const VideoFailure& failure)
{
    logFailure("fails", failure);
    ++m_load;
    m_phase = Phase::Failed;
    m_reconnection.cancel();
    finishSeek(false);
    tellItem([failure](PlayerItem& item) { item.setFailed(failure); });
}

void StreamPlayer::finishSeek(bool finished)
{
    callLater(std::exchange(m_seekDone, {}), finished);
}

void StreamPlayer::callLater(SeekDone done, bool finished)
{
    if (done)
        QMetaObject::invokeMethod(
            this, [done = std::move(done), finished] { done(finished); }, Qt::QueuedConnection);
}

// An item that has been let go by then is told nothing.
void StreamPlayer::tellItem(std::function<void(PlayerItem&)> news)
{
    m_announcements.add([this, item = m_item, news = std::move(news)] {
        if (item == m_item)
            news(*item);
    });
}

// Near the end, so that it is still played; a start beyond it shows only when the duration is known.
double StreamPlayer::bounded(double seconds) const
{
    const double last = m_duration > 0 ? std::max(m_duration - beforeEnd, 0.0) : seconds;
    return std::max(std::min(seconds, last), 0.0);
}

void StreamPlayer::setTracks(const QList<MediaTrack>& tracks)
{
    if (std::exchange(m_tracks, tracks) != tracks)
        m_announcements.add([this] { Q_EMIT tracksChanged(); });
}

void StreamPlayer::announceChanges()
{
    m_stallWatch.setWatching(m_phase == Phase::Shown && (m_playing || m_target));
    m_loadWatch.setWatching(m_phase == Phase::Loading && m_rendererReady);
    const Public now{timeControl(), isWaiting(), position(), duration(), bufferedTo(), isSeekable()};
    const Public before = std::exchange(m_announced, now);
    logState(before.timeControl != now.timeControl);
    const auto announce = [this](bool changed, void (VideoPlayer::*signal)()) {
        if (changed)
            m_announcements.add([this, signal] { Q_EMIT(this->*signal)(); });
    };
    announce(now.timeControl != before.timeControl, &VideoPlayer::timeControlChanged);
    announce(now.isWaiting != before.isWaiting, &VideoPlayer::waitingChanged);
    announce(now.position != before.position, &VideoPlayer::positionChanged);
    announce(now.duration != before.duration, &VideoPlayer::durationChanged);
    announce(now.bufferedTo != before.bufferedTo, &VideoPlayer::bufferedToChanged);
    announce(now.isSeekable != before.isSeekable, &VideoPlayer::seekableChanged);
}
