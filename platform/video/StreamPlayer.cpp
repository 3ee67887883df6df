#include "StreamPlayer.h"

#include "Logging.h"

#include <QMetaEnum>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace quillmere {

using Cause = VideoFailure::Cause;

namespace {

// Seconds before the duration. A failing server causes an end of file too; only near the duration it is the real end.
constexpr double endTolerance = 2;

// Seconds before the duration, the limit of seeks. Nearer, a premature end of file would count as the real end.
constexpr double seekMargin = 3;

constexpr std::chrono::seconds stallLimit{12};

// Seconds. A seek may land up to one segment before its target, and segments are rarely longer.
constexpr double farBeforeTarget = 12;

// A server that sends a little data now and then causes no network timeout, although no picture appears.
constexpr std::chrono::seconds loadLimit{30};

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
      m_reconnectSchedule(clock, [this] { reconnect(); }), m_stallDetector(clock, stallLimit, [this] { onStalled(); }),
      m_loadStallDetector(clock, loadLimit, [this] { onStalled(); }),
      m_listener(static_cast<VideoEngineListener*>(this), [](VideoEngineListener*) {})
{}

void StreamPlayer::setItem(std::shared_ptr<PlayerItem> item)
{
    const ChangeScope scope(*this);
    releaseItem();
    m_item = std::move(item);
    m_notifications.add([this] { Q_EMIT itemChanged(); });
    if (!m_item)
        return;
    m_reconnectSchedule.reset(m_item->isLive());
    load(0);
}

void StreamPlayer::setPlaying(bool playing)
{
    const ChangeScope scope(*this);
    m_wantsToPlay = playing;
    if (m_engine)
        m_engine->setPaused(!playing);
    if (playing && m_phase == Phase::Ended)
        load(0);
}

VideoPlayer::TimeControl StreamPlayer::timeControl() const
{
    if (!m_wantsToPlay || m_phase == Phase::Idle || m_phase == Phase::Ended || m_phase == Phase::Failed)
        return TimeControl::Paused;
    return isWaiting() ? TimeControl::WaitingToPlay : TimeControl::Playing;
}

bool StreamPlayer::isWaiting() const
{
    return m_phase == Phase::Loading || m_phase == Phase::Broken ||
           (m_phase == Phase::Shown && (m_buffering || m_targetPosition));
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

void StreamPlayer::seek(double seconds, SeekTolerance tolerance, SeekCallback onFinished)
{
    const ChangeScope scope(*this);
    if (!m_item || m_item->isLive() || m_phase == Phase::Failed || !std::isfinite(seconds)) {
        postSeekResult(std::move(onFinished), false);
        return;
    }
    finishSeek(false);
    m_seekCallback = std::move(onFinished);
    m_targetPosition = clamped(seconds);
    if (m_phase == Phase::Shown) {
        m_stallDetector.onProgress();
        m_engine->seek(m_loadId, ++m_seekId, *m_targetPosition, tolerance);
    } else if (m_phase != Phase::Broken) {
        load(*m_targetPosition);
    }
}

std::unique_ptr<TimeObserver> StreamPlayer::addPeriodicTimeObserver(std::chrono::seconds interval,
                                                                    std::function<void(double)> callback)
{
    return m_timeObservers.add(interval, std::move(callback));
}

void StreamPlayer::select(MediaTrack::Kind kind, int id)
{
    if (!m_item)
        return;
    m_selectedTracks[kind] = id;
    if (m_phase == Phase::Shown)
        m_engine->selectTrack(kind, id);
}

void StreamPlayer::load(double startAt)
{
    m_phase = Phase::Loading;
    m_targetPosition = startAt;
    m_buffering = false;
    m_bufferedTo = 0;
    m_timeline.beginLoad();
    m_loadStallDetector.onProgress();
    ++m_loadId;
    if (!isPlayable(m_item->url())) {
        const auto reject = [this, loadId = m_loadId] {
            const ChangeScope scope(*this);
            if (isCurrentLoad(loadId))
                fail({Cause::BadAddress, 0, m_item->url().toString()});
        };
        QMetaObject::invokeMethod(this, reject, Qt::QueuedConnection);
    } else if (m_rendererReady) {
        const bool isLive = m_item->isLive();
        m_engine->load({m_loadId, m_item->url(), isLive ? 0 : startAt, isLive, !m_wantsToPlay});
    } else if (!m_engine && !m_openingEngine) {
        openEngine();
    }
}

void StreamPlayer::releaseItem()
{
    ++m_loadId;
    if (m_rendererReady && m_phase != Phase::Idle)
        m_engine->stop();
    m_phase = Phase::Idle;
    finishSeek(false);
    m_reconnectSchedule.cancel();
    m_timeObservers.stop();
    m_hasShownPicture = false;
    m_targetPosition.reset();
    m_position = 0;
    m_duration = 0;
    m_bufferedTo = 0;
    m_seekable = false;
    m_timeline = {};
    m_selectedTracks.clear();
    setTracks({});
}

QCoro::Task<> StreamPlayer::openEngine()
{
    const std::stop_token token = m_tasks.token();
    m_openingEngine = true;
    const auto plugin = co_await m_loadPlugin();
    if (token.stop_requested())
        co_return;
    if (plugin)
        m_startingEngine = (*plugin)->createEngine(m_options, Messenger<VideoEngineListener>(m_listener));
    else
        onEngineFailed({Cause::NoPlugin, 0, plugin.error()});
}

void StreamPlayer::onStalled()
{
    const ChangeScope scope(*this);
    m_engine->stop();
    handleBrokenStream({Cause::TimedOut, 0, {}});
}

void StreamPlayer::reconnect()
{
    const ChangeScope scope(*this);
    load(position());
}

// A load or a seek shows its picture.
void StreamPlayer::onTargetReached(Timeline::Position position)
{
    if (!isBroken(position)) {
        m_targetPosition.reset();
        finishSeek(true);
    }
    updatePosition(position);
}

void StreamPlayer::updatePosition(Timeline::Position position)
{
    if (isBroken(position)) {
        m_engine->stop();
        handleBrokenStream({Cause::BrokenStream, 0, {}});
        return;
    }
    m_position = position.seconds;
    m_stallDetector.onProgress();
    m_reconnectSchedule.onPositionReached(m_position);
    m_notifications.add([this, seconds = m_position] { m_timeObservers.setPosition(seconds); });
}

// A first gap counts as a broken stream. A gap skipped twice is accepted, except at the end of the stream.
bool StreamPlayer::isBroken(Timeline::Position position) const
{
    const bool isAtEnd = m_duration > 0 && position.seconds >= m_duration - endTolerance;
    return position.kind == Timeline::Position::Kind::Gap ||
           (position.kind == Timeline::Position::Kind::RepeatedGap && isAtEnd);
}

void StreamPlayer::logState(bool timeControlChanged)
{
    static constexpr const char* phases[] = {"Idle", "Loading", "Shown", "Broken", "Ended", "Failed"};
    if (std::exchange(m_loggedPhase, m_phase) == m_phase && !timeControlChanged)
        return;
    qCInfo(logPlayback).noquote().nospace()
        << (m_item ? m_item->url().path() : QString()) << ": " << phases[int(m_phase)] << ", "
        << keyOf(m_notifiedState.timeControl) << ", at " << m_notifiedState.position << " of "
        << m_notifiedState.duration << " s";
}

// Data stopped arriving. The position decides whether this is the end of the recording or a broken stream.
void StreamPlayer::handleBrokenStream(const VideoFailure& failure)
{
    logFailure("breaks", failure);
    ++m_loadId;
    m_buffering = false;
    if (m_phase == Phase::Shown && !m_targetPosition && m_duration > 0 && m_position >= m_duration - endTolerance)
        end();
    else if (m_phase == Phase::Loading && clamped(*m_targetPosition) < *m_targetPosition)
        load(clamped(*m_targetPosition)); // the start position was beyond the end
    else if ((m_hasShownPicture || m_item->isLive()) && m_reconnectSchedule.schedule(position()))
        m_phase = Phase::Broken;
    else
        fail(failure);
}

void StreamPlayer::end()
{
    m_phase = Phase::Ended;
    m_wantsToPlay = false;
    m_position = std::max(m_position, m_duration); // the engine does not report the very last position
    m_engine->setPaused(true);
    notifyItem([](PlayerItem& item) { item.setPlayedToEnd(); });
}

void StreamPlayer::fail(const VideoFailure& failure)
{
    logFailure("fails", failure);
    ++m_loadId;
    m_phase = Phase::Failed;
    m_reconnectSchedule.cancel();
    finishSeek(false);
    notifyItem([failure](PlayerItem& item) { item.setFailed(failure); });
}

void StreamPlayer::finishSeek(bool finished)
{
    postSeekResult(std::exchange(m_seekCallback, {}), finished);
}

void StreamPlayer::postSeekResult(SeekCallback callback, bool finished)
{
    if (callback)
        QMetaObject::invokeMethod(
            this, [callback = std::move(callback), finished] { callback(finished); }, Qt::QueuedConnection);
}

// Does nothing if the player has another item or none by then.
void StreamPlayer::notifyItem(std::function<void(PlayerItem&)> notification)
{
    m_notifications.add([this, item = m_item, notification = std::move(notification)] {
        if (item == m_item)
            notification(*item);
    });
}

// Limits a seek so that the end is still played. Without a duration only the lower limit is known.
double StreamPlayer::clamped(double seconds) const
{
    const double last = m_duration > 0 ? std::max(m_duration - seekMargin, 0.0) : seconds;
    return std::max(std::min(seconds, last), 0.0);
}

void StreamPlayer::setTracks(const QList<MediaTrack>& tracks)
{
    if (std::exchange(m_tracks, tracks) != tracks)
        m_notifications.add([this] { Q_EMIT tracksChanged(); });
}

void StreamPlayer::notifyChanges()
{
    m_stallDetector.setActive(m_phase == Phase::Shown && (m_wantsToPlay || m_targetPosition));
    m_loadStallDetector.setActive(m_phase == Phase::Loading && m_rendererReady);
    const PublicState now{timeControl(), isWaiting(), position(), duration(), bufferedTo(), isSeekable()};
    const PublicState before = std::exchange(m_notifiedState, now);
    logState(before.timeControl != now.timeControl);
    const auto notifyIf = [this](bool changed, void (VideoPlayer::*signal)()) {
        if (changed)
            m_notifications.add([this, signal] { Q_EMIT(this->*signal)(); });
    };
    notifyIf(now.timeControl != before.timeControl, &VideoPlayer::timeControlChanged);
    notifyIf(now.isWaiting != before.isWaiting, &VideoPlayer::waitingChanged);
    notifyIf(now.position != before.position, &VideoPlayer::positionChanged);
    notifyIf(now.duration != before.duration, &VideoPlayer::durationChanged);
    notifyIf(now.bufferedTo != before.bufferedTo, &VideoPlayer::bufferedToChanged);
    notifyIf(now.isSeekable != before.isSeekable, &VideoPlayer::seekableChanged);
}

void StreamPlayer::onEngineReady()
{
    const ChangeScope scope(*this);
    m_engine = std::move(m_startingEngine);
    m_engine->setPaused(!m_wantsToPlay);
    m_engine->setWaitsForData(m_waitsForData);
    m_notifications.add([this] { Q_EMIT engineChanged(); });
}

void StreamPlayer::onRendererReady()
{
    const ChangeScope scope(*this);
    m_rendererReady = true;
    m_notifications.add([this] { Q_EMIT VideoPlayer::rendererReady(); });
    if (m_phase == Phase::Loading)
        load(*m_targetPosition);
}

void StreamPlayer::onEngineFailed(const VideoFailure& failure)
{
    const ChangeScope scope(*this);
    m_openingEngine = false;
    m_rendererReady = false;
    m_startingEngine.reset();
    if (std::exchange(m_engine, nullptr))
        m_notifications.add([this] { Q_EMIT engineChanged(); });
    if (m_phase == Phase::Loading || m_phase == Phase::Shown || m_phase == Phase::Broken)
        fail(failure);
}

void StreamPlayer::onPictureShown(int loadId, double seconds)
{
    const ChangeScope scope(*this);
    if (!isCurrentLoad(loadId) || m_phase != Phase::Loading)
        return;
    m_phase = Phase::Shown;
    const Timeline::Position position = reachedPosition(seconds);
    // An unseekable stream starts at its beginning; observers get no position until the target is reached again.
    const double target = clamped(*m_targetPosition);
    const bool isFarBefore = !m_item->isLive() && position.seconds < target - farBeforeTarget;
    if (isFarBefore)
        m_timeObservers.suspendUntil(target);
    m_notifications.add([this] { Q_EMIT VideoPlayer::pictureShown(); });
    if (!std::exchange(m_hasShownPicture, true)) {
        m_timeObservers.start(isBroken(position) || isFarBefore ? target : position.seconds);
        notifyItem([](PlayerItem& item) { item.setReadyToPlay(); });
    }
    for (auto it = m_selectedTracks.cbegin(); it != m_selectedTracks.cend(); ++it)
        m_engine->selectTrack(it.key(), it.value());
    onTargetReached(position);
}

// The timestamps of a live stream are used as positions.
Timeline::Position StreamPlayer::reachedPosition(double timestamp)
{
    if (!std::isfinite(timestamp))
        return {*m_targetPosition};
    return m_item->isLive() ? Timeline::Position{timestamp} : m_timeline.onSeekFinished(*m_targetPosition, timestamp);
}

void StreamPlayer::onPositionChanged(int loadId, double seconds)
{
    const ChangeScope scope(*this);
    if (!isCurrentLoad(loadId) || m_phase != Phase::Shown || m_targetPosition || !std::isfinite(seconds))
        return;
    const std::chrono::duration<double> elapsed = m_stallDetector.sinceLastProgress();
    const auto position =
        m_item->isLive() ? Timeline::Position{seconds} : m_timeline.onTimestamp(m_position, seconds, elapsed.count());
    if (position && position->seconds != m_position)
        updatePosition(*position);
}

void StreamPlayer::onDurationKnown(int loadId, double seconds)
{
    const ChangeScope scope(*this);
    if (isCurrentLoad(loadId) && !m_item->isLive() && std::isfinite(seconds) && seconds > 0)
        m_duration = seconds;
}

void StreamPlayer::onBufferedToChanged(int loadId, double seconds)
{
    const ChangeScope scope(*this);
    if (isCurrentLoad(loadId) && std::isfinite(seconds))
        m_bufferedTo = seconds;
}

void StreamPlayer::onSeekableKnown(int loadId, bool seekable)
{
    const ChangeScope scope(*this);
    if (isCurrentLoad(loadId))
        m_seekable = seekable && !m_item->isLive();
}

void StreamPlayer::onTracksChanged(int loadId, const QList<MediaTrack>& tracks)
{
    const ChangeScope scope(*this);
    if (isCurrentLoad(loadId))
        setTracks(tracks);
}

void StreamPlayer::onWaitingChanged(int loadId, bool waiting)
{
    const ChangeScope scope(*this);
    if (isCurrentLoad(loadId))
        m_buffering = waiting;
}

void StreamPlayer::onSeekFinished(int loadId, int seekId, double seconds)
{
    const ChangeScope scope(*this);
    if (!isCurrentLoad(loadId) || seekId != m_seekId || !m_targetPosition)
        return;
    m_reconnectSchedule.resetAttempts();
    m_timeObservers.resume();
    onTargetReached(reachedPosition(seconds));
}

void StreamPlayer::onDataSkipped(int loadId)
{
    if (isCurrentLoad(loadId))
        m_timeline.onDataSkipped();
}

void StreamPlayer::onEndOfFile(int loadId)
{
    const ChangeScope scope(*this);
    if (isCurrentLoad(loadId))
        handleBrokenStream({Cause::BrokenStream, 0, {}});
}

void StreamPlayer::onLoadFailed(int loadId, const VideoFailure& failure)
{
    const ChangeScope scope(*this);
    if (!isCurrentLoad(loadId))
        return;
    if (m_phase == Phase::Shown && failure.cause == Cause::Unknown)
        handleBrokenStream({Cause::BrokenStream, 0, failure.description});
    else
        handleBrokenStream(failure);
}

} // namespace quillmere
