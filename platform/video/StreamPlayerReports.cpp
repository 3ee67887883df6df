#include "StreamPlayer.h"

#include <cmath>

using Cause = VideoFailure::Cause;

// What the engine reports, and what a player makes of it.

namespace {

// A seek may land a segment before where it was sent, and these are rarely longer.
constexpr double farBefore = 12; // seconds

} // namespace

void StreamPlayer::engineReady()
{
    const Change change(*this);
    m_engine = std::move(m_starting);
    m_engine->setPaused(!m_playing);
    m_engine->setWaitsForData(m_waitsForData);
    m_announcements.add([this] { Q_EMIT engineChanged(); });
}

void StreamPlayer::rendererReady()
{
    const Change change(*this);
    m_rendererReady = true;
    m_announcements.add([this] { Q_EMIT VideoPlayer::rendererReady(); });
    if (m_phase == Phase::Loading)
        load(*m_target);
}

void StreamPlayer::engineFailed(const VideoFailure& failure)
{
    const Change change(*this);
    m_opening = false;
    m_rendererReady = false;
    m_starting.reset();
    if (std::exchange(m_engine, nullptr))
        m_announcements.add([this] { Q_EMIT engineChanged(); });
    if (m_phase == Phase::Loading || m_phase == Phase::Shown || m_phase == Phase::Broken)
        fail(failure);
}

void StreamPlayer::pictureShown(int load, double seconds)
{
    const Change change(*this);
    if (!concerns(load) || m_phase != Phase::Loading)
        return;
    m_phase = Phase::Shown;
    const Timeline::Place place = landing(seconds);
    // What cannot be sought plays from its top: where the viewer was still counts, until that has come again.
    const double due = bounded(*m_target);
    const bool isFarBefore = !m_item->isLive() && place.position < due - farBefore;
    if (isFarBefore)
        m_periodicTime.holdUntil(due);
    m_announcements.add([this] { Q_EMIT VideoPlayer::pictureShown(); });
    if (!std::exchange(m_hasShownPicture, true)) {
        m_periodicTime.begin(isBreak(place) || isFarBefore ? due : place.position);
        tellItem([](PlayerItem& item) { item.setReadyToPlay(); });
    }
    for (auto it = m_selected.cbegin(); it != m_selected.cend(); ++it)
        m_engine->selectTrack(it.key(), it.value());
    arriveAt(place);
}

// A live stream's positions are what they are.
Timeline::Place StreamPlayer::landing(double seconds)
{
    if (!std::isfinite(seconds))
        return {*m_target};
    return m_item->isLive() ? Timeline::Place{seconds} : m_timeline.landed(*m_target, seconds);
}

void StreamPlayer::positionMoved(int load, double seconds)
{
    const Change change(*this);
    if (!concerns(load) || m_phase != Phase::Shown || m_target || !std::isfinite(seconds))
        return;
    const std::chrono::duration<double> elapsed = m_stallWatch.sinceLastMove();
    const auto place =
        m_item->isLive() ? Timeline::Place{seconds} : m_timeline.moved(m_position, seconds, elapsed.count());
    if (place && place->position != m_position)
        moveTo(*place);
}

void StreamPlayer::durationKnown(int load, double seconds)
{
    const Change change(*this);
    if (concerns(load) && !m_item->isLive() && std::isfinite(seconds) && seconds > 0)
        m_duration = seconds;
}

void StreamPlayer::dataBuffered(int load, double upTo)
{
    const Change change(*this);
    if (concerns(load) && std::isfinite(upTo))
        m_bufferedTo = upTo;
}

void StreamPlayer::seekableKnown(int load, bool seekable)
{
    const Change change(*this);
    if (concerns(load))
        m_seekable = seekable && !m_item->isLive();
}

void StreamPlayer::tracksKnown(int load, const QList<MediaTrack>& tracks)
{
    const Change change(*this);
    if (concerns(load))
        setTracks(tracks);
}

void StreamPlayer::waitingChanged(int load, bool waiting)
{
    const Change change(*this);
    if (concerns(load))
        m_buffering = waiting;
}

void StreamPlayer::seekDone(int load, int seek, double seconds)
{
    const Change change(*this);
    if (!concerns(load) || seek != m_seek || !m_target)
        return;
    m_reconnection.forgetBreaks();
    m_periodicTime.release();
    arriveAt(landing(seconds));
}

void StreamPlayer::dataSkipped(int load)
{
    if (concerns(load))
        m_timeline.dataSkipped();
}

void StreamPlayer::endOfFile(int load)
{
    const Change change(*this);
    if (concerns(load))
        takeBreak({Cause::BrokenStream, 0, {}});
}

void StreamPlayer::loadFailed(int load, const VideoFailure& failure)
{
    const Change change(*this);
    if (!concerns(load))
        return;
    if (m_phase == Phase::Shown && failure.cause == Cause::Unknown)
        takeBreak({Cause::BrokenStream, 0, failure.description});
    else
        takeBreak(failure);
}
