#include "PlayerController.h"

#include "ClockText.h"
#include "PlaybackTexts.h"
#include "ShortenedText.h"

#include <algorithm>
#include <cmath>

using namespace std::chrono_literals;
using TimeControl = VideoPlayer::TimeControl;

namespace {

constexpr auto spinnerDelay = 500ms;

// In steps no wider than a pixel of the widest screen: a smaller one would be painted for nothing.
constexpr double progressSteps = 4096;

double partOf(double seconds, double duration)
{
    return std::round(std::clamp(seconds / duration, 0.0, 1.0) * progressSteps) / progressSteps;
}

} // namespace

PlayerController::PlayerController(Clock& clock, QObject* parent)
    : QObject(parent), m_clock(clock), m_playhead(clock, [this] { update(); })
{
    for (TrackList* const list : {&m_audioTracks, &m_subtitleTracks}) {
        connect(list, &TrackList::picked, this, [this](MediaTrack::Kind kind, int id) {
            if (m_player)
                m_player->select(kind, id);
        });
    }
    update();
}

void PlayerController::setPlayer(VideoPlayer* player)
{
    if (m_player == player)
        return;
    if (m_player)
        disconnect(m_player, nullptr, this, nullptr);
    m_player = player;
    if (player) {
        connect(player, &VideoPlayer::itemChanged, this, &PlayerController::takeItem);
        connect(player, &VideoPlayer::timeControlChanged, this, &PlayerController::update);
        connect(player, &VideoPlayer::waitingChanged, this, &PlayerController::update);
        connect(player, &VideoPlayer::positionChanged, this, &PlayerController::updateTimes);
        connect(player, &VideoPlayer::durationChanged, this, &PlayerController::updateTimes);
        connect(player, &VideoPlayer::bufferedToChanged, this, &PlayerController::updateTimes);
        connect(player, &VideoPlayer::seekableChanged, this, &PlayerController::seekableChanged);
        connect(player, &VideoPlayer::tracksChanged, this, &PlayerController::showTracks);
        connect(player, &QObject::destroyed, this, &PlayerController::playerChanged);
        connect(player, &QObject::destroyed, this, &PlayerController::takeItem);
    }
    Q_EMIT playerChanged();
    takeItem();
}

/** What was shown over the item before goes with it. */
void PlayerController::takeItem()
{
    disconnect(m_statusObservation);
    if (item())
        m_statusObservation = connect(item(), &PlayerItem::statusChanged, this, &PlayerController::update);
    m_playhead.setPlayer(m_player);
    m_hasPlayed = false;
    m_lastKey.reset();
    setTransportShown(false);
    setPanelShown(false);
    showTracks();
    Q_EMIT itemChanged();
    Q_EMIT seekableChanged();
    update();
}

QString PlayerController::title() const
{
    return shortenedLine(metadata(MetadataItem::Identifier::Title));
}

QString PlayerController::subtitle() const
{
    return shortenedLine(metadata(MetadataItem::Identifier::SubTitle));
}

QString PlayerController::description() const
{
    return shortenedText(metadata(MetadataItem::Identifier::Description));
}

QString PlayerController::publisher() const
{
    return shortenedLine(metadata(MetadataItem::Identifier::Publisher));
}

bool PlayerController::isLive() const
{
    return item() && item()->isLive();
}

void PlayerController::setPanelTopFocused(bool focused)
{
    change(m_panelTopFocused, focused, &PlayerController::panelTopFocusedChanged);
}

PlayerItem* PlayerController::item() const
{
    return m_player ? m_player->item().get() : nullptr;
}

QString PlayerController::metadata(MetadataItem::Identifier identifier) const
{
    return item() ? item()->metadata(identifier) : QString();
}

bool PlayerController::hasFailed() const
{
    return item() && item()->status() == PlayerItem::Status::Failed;
}

PlayerController::State PlayerController::currentState() const
{
    if (m_playhead.isScrubbing())
        return m_playhead.speed() > 0 ? State::FastForwarding : State::Rewinding;
    if (!item() || hasFailed())
        return State::Paused;
    // A player that seeks before it starts is paused meanwhile, though not by the viewer.
    if (m_player->timeControl() == TimeControl::Paused)
        return m_hasPlayed ? State::Paused : State::Waiting;
    return m_player->timeControl() == TimeControl::WaitingToPlay ? State::Waiting : State::Playing;
}

QString PlayerController::currentStateText() const
{
    switch (m_state) {
    case State::Waiting:
        return waitingText;
    case State::Playing:
        return isLive() ? liveText : playingText;
    case State::Paused:
        return pausedText;
    default:
        return scrubbingText(m_playhead.speed());
    }
}

void PlayerController::showTracks()
{
    const QList<MediaTrack> tracks = m_player ? m_player->tracks() : QList<MediaTrack>();
    m_audioTracks.show(tracks);
    m_subtitleTracks.show(tracks);
}

void PlayerController::update()
{
    if (hasFailed()) {
        m_playhead.drop();
        m_lastKey.reset();
        setPanelShown(false);
    }
    m_hasPlayed = m_hasPlayed || (m_player && m_player->timeControl() != TimeControl::Paused);
    updateSpinner();
    const State state = currentState();
    const bool isOther = state != m_state;
    m_state = state;
    if (const QString text = currentStateText(); isOther || text != m_stateText) {
        m_stateText = text;
        Q_EMIT stateChanged();
    }
    updateTransport();
    updateTimes();
}

void PlayerController::updateSpinner()
{
    if (!m_player || !m_player->isWaiting() || hasFailed()) {
        m_spinnerDelay.reset();
        change(m_spinnerShown, false, &PlayerController::spinnerShownChanged);
    } else if (!m_spinnerDelay && !m_spinnerShown) {
        m_spinnerDelay = m_clock.after(spinnerDelay, [this] {
            m_spinnerDelay.reset();
            change(m_spinnerShown, true, &PlayerController::spinnerShownChanged);
        });
    }
}

/** Shown after a key and while paused; once shown, it stays as long as nothing plays. */
void PlayerController::updateTransport()
{
    const bool isPaused = m_state == State::Paused && item();
    const bool stays = m_transportShown && m_state != State::Playing;
    setTransportShown(!hasFailed() && (m_lastKey || isPaused || stays));
}

void PlayerController::updateTimes()
{
    if (!m_transportShown || !m_player)
        return;
    const double position = m_playhead.position();
    const double duration = m_player->duration();
    const bool hasEnd = duration > 0 && !isLive();
    const QString elapsed = isLive() ? QString() : clockText(position);
    const QString remaining = hasEnd ? ::remainingText(position, duration) : QString();
    const double progress = hasEnd ? partOf(position, duration) : 0;
    const double buffered = hasEnd ? partOf(m_player->bufferedTo(), duration) : 0;
    if (elapsed != m_elapsedText || remaining != m_remainingText) {
        m_elapsedText = elapsed;
        m_remainingText = remaining;
        Q_EMIT timesChanged();
    }
    if (progress != m_progress || buffered != m_bufferedPart) {
        m_progress = progress;
        m_bufferedPart = buffered;
        Q_EMIT progressChanged();
    }
}

void PlayerController::setTransportShown(bool shown)
{
    if (m_transportShown == shown)
        return;
    m_transportShown = shown;
    updateTimes();
    Q_EMIT transportShownChanged();
}

void PlayerController::setPanelShown(bool shown)
{
    change(m_panelShown, shown, &PlayerController::panelShownChanged);
}

template<typename Value>
void PlayerController::change(Value& member, Value value, void (PlayerController::*changed)())
{
    if (member == value)
        return;
    member = value;
    Q_EMIT(this->*changed)();
}
