#include "StreamPlayer.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

// A server that dies leaves an end of file like any other; only near the duration is it the end of play.
constexpr double endTolerance = 2.0;

bool isPlayable(const QUrl& url)
{
    return url.isValid() && !url.host().isEmpty() && (url.scheme() == u"https"_s || url.scheme() == u"http"_s);
}

} // namespace

StreamPlayer::StreamPlayer(VideoOptions options, LoadPlugin loadPlugin, QObject* parent)
    : VideoPlayer(parent), m_options(std::move(options)), m_loadPlugin(std::move(loadPlugin)),
      m_listener(static_cast<VideoEngineListener*>(this), [](VideoEngineListener*) {})
{}

void StreamPlayer::load(const QUrl& url, double startAt)
{
    letGo();
    m_url = url;
    m_startAt = std::isfinite(startAt) ? std::max(startAt, 0.0) : 0.0;
    setState(State::Loading);
    if (!isPlayable(url))
        fail({VideoFailure::Cause::BadAddress, 0, url.toDisplayString()});
    else if (m_engine)
        startLoading();
    else if (!m_opening)
        openEngine();
}

void StreamPlayer::stop()
{
    letGo();
    setState(State::Idle);
}

void StreamPlayer::setPaused(bool paused)
{
    if (m_paused == paused)
        return;
    m_paused = paused;
    if (m_engine)
        m_engine->setPaused(paused);
    if (m_state == State::Playing || m_state == State::Paused)
        setState(paused ? State::Paused : State::Playing);
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
        engineFailed({VideoFailure::Cause::NoPlugin, 0, plugin.error()});
}

void StreamPlayer::engineReady()
{
    m_engine = std::move(m_starting);
    m_engine->setPaused(m_paused);
    Q_EMIT engineChanged();
}

void StreamPlayer::rendererReady()
{
    m_rendererReady = true;
    Q_EMIT VideoPlayer::rendererReady();
    startLoading();
}

void StreamPlayer::startLoading()
{
    if (m_rendererReady && m_state == State::Loading)
        m_engine->load(m_load, m_url, m_startAt);
}

void StreamPlayer::letGo()
{
    ++m_load;
    if (m_engine && m_rendererReady && m_state != State::Idle)
        m_engine->stop();
    setWaiting(false);
    setPosition(0);
    setDuration(0);
}

void StreamPlayer::engineFailed(const VideoFailure& failure)
{
    m_opening = false;
    m_rendererReady = false;
    m_starting.reset();
    if (std::exchange(m_engine, nullptr))
        Q_EMIT engineChanged();
    if (m_state == State::Loading || m_state == State::Playing || m_state == State::Paused)
        fail(failure);
}

void StreamPlayer::pictureShown(int load)
{
    if (!concerns(load) || m_state != State::Loading)
        return;
    setState(m_paused ? State::Paused : State::Playing);
    Q_EMIT VideoPlayer::pictureShown();
}

void StreamPlayer::positionMoved(int load, double seconds)
{
    if (concerns(load) && m_state != State::Loading)
        setPosition(seconds);
}

void StreamPlayer::durationKnown(int load, double seconds)
{
    if (concerns(load))
        setDuration(seconds);
}

void StreamPlayer::waitingChanged(int load, bool waiting)
{
    if (concerns(load))
        setWaiting(waiting);
}

void StreamPlayer::endOfFile(int load)
{
    if (concerns(load))
        finish({});
}

void StreamPlayer::loadFailed(int load, const VideoFailure& failure)
{
    if (!concerns(load))
        return;
    if (m_state == State::Loading)
        fail(failure);
    else
        finish(failure.description);
}

// However the data stopped: whether it was the end of play, the position says.
void StreamPlayer::finish(const QString& description)
{
    if (m_duration <= 0 || m_position < m_duration - endTolerance) {
        fail({VideoFailure::Cause::BrokenStream, 0, description});
        return;
    }
    setWaiting(false);
    setState(State::Ended);
    Q_EMIT ended();
}

void StreamPlayer::fail(const VideoFailure& failure)
{
    setWaiting(false);
    setState(State::Failed);
    Q_EMIT failed(failure);
}

bool StreamPlayer::concerns(int load) const
{
    return load == m_load && (m_state == State::Loading || m_state == State::Playing || m_state == State::Paused);
}

void StreamPlayer::setState(State state)
{
    if (m_state == state)
        return;
    m_state = state;
    Q_EMIT stateChanged();
}

void StreamPlayer::setWaiting(bool waiting)
{
    if (m_waiting == waiting)
        return;
    m_waiting = waiting;
    Q_EMIT VideoPlayer::waitingChanged();
}

void StreamPlayer::setPosition(double seconds)
{
    if (m_position == seconds)
        return;
    m_position = seconds;
    Q_EMIT positionChanged();
}

void StreamPlayer::setDuration(double seconds)
{
    if (m_duration == seconds)
        return;
    m_duration = seconds;
    Q_EMIT durationChanged();
}
