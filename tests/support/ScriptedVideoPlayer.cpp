#include "ScriptedVideoPlayer.h"

void ScriptedVideoPlayer::load(const QUrl& url, double startAt)
{
    m_loads.append({url, startAt});
    moveTo(0);
    setDuration(0);
    setState(State::Loading);
}

void ScriptedVideoPlayer::stop()
{
    moveTo(0);
    setState(State::Idle);
}

void ScriptedVideoPlayer::showPicture()
{
    setState(m_paused ? State::Paused : State::Playing);
    Q_EMIT pictureShown();
}

void ScriptedVideoPlayer::moveTo(double seconds)
{
    m_position = seconds;
    Q_EMIT positionChanged();
}

void ScriptedVideoPlayer::setDuration(double seconds)
{
    m_duration = seconds;
    Q_EMIT durationChanged();
}

void ScriptedVideoPlayer::setWaiting(bool waiting)
{
    m_waiting = waiting;
    Q_EMIT waitingChanged();
}

void ScriptedVideoPlayer::end()
{
    setState(State::Ended);
    Q_EMIT ended();
}

void ScriptedVideoPlayer::fail(const VideoFailure& failure)
{
    setState(State::Failed);
    Q_EMIT failed(failure);
}

void ScriptedVideoPlayer::setState(State state)
{
    m_state = state;
    Q_EMIT stateChanged();
}

void ScriptedVideoPlayer::setPaused(bool paused)
{
    m_paused = paused;
    if (m_state == State::Playing || m_state == State::Paused)
        setState(paused ? State::Paused : State::Playing);
}
