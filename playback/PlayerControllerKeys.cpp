#include "PlayerController.h"

using namespace std::chrono_literals;

namespace {

constexpr auto transportTime = 4s;

// Seconds of play time.
constexpr double shortSkip = 10;
constexpr double longSkip = 600;

} // namespace

bool PlayerController::press(int key, bool isAutoRepeat)
{
    if (!isAutoRepeat || key != m_scrubKey)
        m_playhead.letGo();
    if (key == Qt::Key_Back) {
        back();
        return true;
    }
    if (key == Qt::Key_MediaStop) {
        Q_EMIT leave();
        return true;
    }
    if (!item() || hasFailed())
        return false;
    showTransport();
    return !isForPanel(key) && act(key, isAutoRepeat);
}

bool PlayerController::release(int key)
{
    if (!m_playhead.isScrubbing() || key != m_scrubKey)
        return false;
    showTransport();
    m_playhead.letGo();
    return true;
}

bool PlayerController::isForPanel(int key) const
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

bool PlayerController::act(int key, bool isAutoRepeat)
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
        return isAutoRepeat || actOnAPress(key);
    }
}

/** What a held key does once only: a held up that walks the panel to its top does not close it, for one. */
bool PlayerController::actOnAPress(int key)
{
    switch (key) {
    case Qt::Key_Select:
    case Qt::Key_MediaTogglePlayPause:
        setPaused(m_player->timeControl() != VideoPlayer::TimeControl::Paused);
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
    m_playhead.scrub(direction);
}

void PlayerController::setPaused(bool paused)
{
    if (paused)
        m_player->pause();
    else
        m_player->play();
}

/** A paused player's bar is not in the viewer's way: it goes with the player. */
void PlayerController::back()
{
    if (m_panelShown) {
        setPanelShown(false);
    } else if (m_transportShown && m_state != State::Paused) {
        m_lastKey.reset();
        setTransportShown(false);
    } else {
        Q_EMIT leave();
    }
}

void PlayerController::showTransport()
{
    m_lastKey = m_clock.after(transportTime, [this] {
        m_lastKey.reset();
        updateTransport();
    });
    updateTransport();
}
