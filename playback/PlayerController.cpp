#include "PlayerController.h"

#include "ClockText.h"
#include "PlaybackTexts.h"
#include "Text.h"

#include <algorithm>
#include <cmath>

using namespace std::chrono_literals;

namespace quillmere {

using TimeControl = VideoPlayer::TimeControl;

namespace {

constexpr auto spinnerDelay = 500ms;
constexpr auto transportTime = 4s; // after the last key

// Seconds of play time.
constexpr double shortSkip = 10;
constexpr double longSkip = 600;

// A step is at most one pixel of a screen 4096 pixels wide; smaller changes would be painted without being visible.
constexpr double progressSteps = 4096;

double fractionOf(double seconds, double duration)
{
    return std::round(std::clamp(seconds / duration, 0.0, 1.0) * progressSteps) / progressSteps;
}

} // namespace

PlayerController::PlayerController(Clock& clock, QObject* parent)
    : QObject(parent), m_clock(clock), m_playhead(clock, [this] { updateState(); })
{
    for (TrackList* const list : {&m_audioTracks, &m_subtitleTracks}) {
        connect(list, &TrackList::picked, this, [this](MediaTrack::Kind kind, int id) {
            if (m_player)
                m_player->select(kind, id);
        });
    }
    updateState();
}

void PlayerController::setPlayer(VideoPlayer* player)
{
    if (m_player == player)
        return;
    if (m_player)
        disconnect(m_player, nullptr, this, nullptr);
    m_player = player;
    if (player) {
        connect(player, &VideoPlayer::itemChanged, this, &PlayerController::onItemChanged);
        connect(player, &VideoPlayer::timeControlChanged, this, &PlayerController::updateState);
        connect(player, &VideoPlayer::waitingChanged, this, &PlayerController::updateState);
        connect(player, &VideoPlayer::positionChanged, this, &PlayerController::updateTimes);
        connect(player, &VideoPlayer::durationChanged, this, &PlayerController::updateTimes);
        connect(player, &VideoPlayer::bufferedToChanged, this, &PlayerController::updateTimes);
        connect(player, &VideoPlayer::seekableChanged, this, &PlayerController::seekableChanged);
        connect(player, &VideoPlayer::tracksChanged, this, &PlayerController::updateTracks);
        connect(player, &QObject::destroyed, this, &PlayerController::playerChanged);
        connect(player, &QObject::destroyed, this, &PlayerController::onItemChanged);
    }
    Q_EMIT playerChanged();
    onItemChanged();
}

/** Hides the controls that were shown for the previous item. */
void PlayerController::onItemChanged()
{
    disconnect(m_statusObservation);
    if (item())
        m_statusObservation = connect(item(), &PlayerItem::statusChanged, this, &PlayerController::updateState);
    m_playhead.setPlayer(m_player);
    m_hasPlayed = false;
    m_transportTimer.reset();
    setTransportShown(false);
    setPanelShown(false);
    updateTracks();
    Q_EMIT itemChanged();
    Q_EMIT seekableChanged();
    updateState();
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
    setMember(m_panelTopFocused, focused, &PlayerController::panelTopFocusedChanged);
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
    // Before its first play() the player may be seeking to the start position; the viewer has not paused it.
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

bool PlayerController::press(int key, bool isAutoRepeat)
{
    if (!isAutoRepeat || key != m_scrubKey)
        m_playhead.endScrub();
    if (key == Qt::Key_Back) {
        handleBack();
        return true;
    }
    if (key == Qt::Key_MediaStop) {
        Q_EMIT dismissRequested();
        return true;
    }
    if (!item() || hasFailed())
        return false;
    showTransport();
    return !isPanelKey(key) && handleKey(key, isAutoRepeat);
}

bool PlayerController::release(int key)
{
    if (!m_playhead.isScrubbing() || key != m_scrubKey)
        return false;
    showTransport();
    m_playhead.endScrub();
    return true;
}

bool PlayerController::isPanelKey(int key) const
{
    if (!m_panelShown || m_audioTracks.count() + m_subtitleTracks.count() == 0)
        return false;
    switch (key) {
    case Qt::Key_Up:
        return !m_panelTopFocused;
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Select:
        return true;
    default:
        return false;
    }
}

bool PlayerController::handleKey(int key, bool isAutoRepeat)
{
    switch (key) {
    case Qt::Key_Left:
        isAutoRepeat ? scrub(key, -1) : m_playhead.skip(-shortSkip);
        return true;
    case Qt::Key_Right:
        isAutoRepeat ? scrub(key, 1) : m_playhead.skip(shortSkip);
        return true;
    case Qt::Key_AudioRewind:
        scrub(key, -1);
        return true;
    case Qt::Key_AudioForward:
        scrub(key, 1);
        return true;
    default:
        return isAutoRepeat || handlePress(key);
    }
}

/** Keys without auto-repeat: for example, a held up key moves the focus to the panel's top, but does not close it. */
bool PlayerController::handlePress(int key)
{
    switch (key) {
    case Qt::Key_Select:
    case Qt::Key_MediaTogglePlayPause:
        setPaused(m_player->timeControl() != TimeControl::Paused);
        return true;
    case Qt::Key_MediaPlay:
        setPaused(false);
        return true;
    case Qt::Key_MediaPause:
        setPaused(true);
        return true;
    case Qt::Key_MediaPrevious:
        m_playhead.skip(-longSkip);
        return true;
    case Qt::Key_MediaNext:
        m_playhead.skip(longSkip);
        return true;
    case Qt::Key_Up:
        setPanelShown(false);
        return true;
    case Qt::Key_Down:
        setPanelShown(true);
        return true;
    default:
        return false;
    }
}

void PlayerController::scrub(int key, int direction)
{
    m_scrubKey = key;
    m_playhead.startScrub(direction);
}

void PlayerController::setPaused(bool paused)
{
    if (paused)
        m_player->pause();
    else
        m_player->play();
}

/** Hides the panel, else the transport bar, else leaves the player. While paused the bar stays: back leaves at once. */
void PlayerController::handleBack()
{
    if (m_panelShown) {
        setPanelShown(false);
    } else if (m_transportShown && m_state != State::Paused) {
        m_transportTimer.reset();
        setTransportShown(false);
    } else {
        Q_EMIT dismissRequested();
    }
}

void PlayerController::showTransport()
{
    m_transportTimer = m_clock.after(transportTime, [this] {
        m_transportTimer.reset();
        updateTransport();
    });
    updateTransport();
}

void PlayerController::updateTracks()
{
    const QList<MediaTrack> tracks = m_player ? m_player->tracks() : QList<MediaTrack>();
    m_audioTracks.setTracks(tracks);
    m_subtitleTracks.setTracks(tracks);
}

void PlayerController::updateState()
{
    if (hasFailed()) {
        m_playhead.cancelScrub();
        m_transportTimer.reset();
        setPanelShown(false);
    }
    m_hasPlayed = m_hasPlayed || (m_player && m_player->timeControl() != TimeControl::Paused);
    updateSpinner();
    const State state = currentState();
    const bool hasChanged = state != m_state;
    m_state = state;
    if (const QString text = currentStateText(); hasChanged || text != m_stateText) {
        m_stateText = text;
        Q_EMIT stateChanged();
    }
    updateTransport();
    updateTimes();
}

void PlayerController::updateSpinner()
{
    if (!m_player || !m_player->isWaiting() || hasFailed()) {
        m_spinnerTimer.reset();
        setMember(m_spinnerShown, false, &PlayerController::spinnerShownChanged);
    } else if (!m_spinnerTimer && !m_spinnerShown) {
        m_spinnerTimer = m_clock.after(spinnerDelay, [this] {
            m_spinnerTimer.reset();
            setMember(m_spinnerShown, true, &PlayerController::spinnerShownChanged);
        });
    }
}

/**
 * The bar is shown for some seconds after a key press, and while paused. While playback waits, or the viewer scrubs, it
 * stays if it is shown. A failure hides it.
 */
void PlayerController::updateTransport()
{
    const bool isPaused = m_state == State::Paused && item();
    const bool stays = m_transportShown && m_state != State::Playing;
    setTransportShown(!hasFailed() && (m_transportTimer || isPaused || stays));
}

void PlayerController::updateTimes()
{
    if (!m_transportShown || !m_player)
        return;
    const double position = m_playhead.position();
    const double duration = m_player->duration();
    const bool hasEnd = duration > 0 && !isLive();
    const QString elapsed = isLive() ? QString() : clockText(position);
    const QString remaining = hasEnd ? quillmere::remainingText(position, duration) : QString();
    const double progress = hasEnd ? fractionOf(position, duration) : 0;
    const double buffered = hasEnd ? fractionOf(m_player->bufferedTo(), duration) : 0;
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
    setMember(m_panelShown, shown, &PlayerController::panelShownChanged);
}

template<typename Value>
void PlayerController::setMember(Value& member, Value value, void (PlayerController::*changed)())
{
    if (member == value)
        return;
    member = value;
    Q_EMIT(this->*changed)();
}

} // namespace quillmere
