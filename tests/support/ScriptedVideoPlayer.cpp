#include "ScriptedVideoPlayer.h"

using namespace Qt::StringLiterals;

namespace quillmere {

void ScriptedVideoPlayer::setItem(std::shared_ptr<PlayerItem> item)
{
    m_calls->append(item ? u"setItem"_s : u"clearItem"_s);
    items.append(item);
    m_item = std::move(item);
    Q_EMIT itemChanged();
    moveTo(0);
    setDuration(0);
    setBufferedTo(0);
    setSeekable(false);
    setTracks({});
    setWaiting(m_item != nullptr);
}

void ScriptedVideoPlayer::play()
{
    m_calls->append(u"play"_s);
    m_playing = true;
    Q_EMIT timeControlChanged();
}

void ScriptedVideoPlayer::pause()
{
    m_calls->append(u"pause"_s);
    m_playing = false;
    Q_EMIT timeControlChanged();
}

VideoPlayer::TimeControl ScriptedVideoPlayer::timeControl() const
{
    if (!m_playing || !m_item)
        return TimeControl::Paused;
    return m_waiting ? TimeControl::WaitingToPlay : TimeControl::Playing;
}

void ScriptedVideoPlayer::seek(double seconds, SeekTolerance tolerance, SeekCallback done)
{
    m_calls->append(u"seek"_s);
    seeks.append({seconds, tolerance, std::move(done)});
    moveTo(seconds);
}

std::unique_ptr<TimeObserver> ScriptedVideoPlayer::addPeriodicTimeObserver(std::chrono::seconds interval,
                                                                           std::function<void(double)> callback)
{
    struct Token : TimeObserver
    {
        explicit Token(std::shared_ptr<QStringList> callList) : calls(std::move(callList)) {}
        ~Token() override { calls->append(u"unobserve"_s); }

        std::shared_ptr<QStringList> calls;
        std::shared_ptr<int> lifetime = std::make_shared<int>();
    };
    m_calls->append(u"observe"_s);
    auto token = std::make_unique<Token>(m_calls);
    observations.append({interval, std::move(callback), token->lifetime});
    return token;
}

void ScriptedVideoPlayer::showPicture()
{
    const auto item = m_item;
    setWaiting(false);
    Q_EMIT pictureShown();
    item->setReadyToPlay();
}

void ScriptedVideoPlayer::fail(const VideoFailure& failure)
{
    const auto item = m_item;
    m_playing = false;
    setWaiting(false);
    Q_EMIT timeControlChanged();
    item->setFailed(failure);
}

void ScriptedVideoPlayer::end()
{
    const auto item = m_item;
    m_playing = false;
    Q_EMIT timeControlChanged();
    item->setPlayedToEnd();
}

void ScriptedVideoPlayer::moveTo(double seconds)
{
    m_position = seconds;
    Q_EMIT positionChanged();
}

void ScriptedVideoPlayer::report(double seconds)
{
    moveTo(seconds);
    const auto all = observations;
    for (const Observation& observation : all) {
        if (!observation.token.expired())
            observation.callback(seconds);
    }
}

void ScriptedVideoPlayer::finishSeek(bool finished)
{
    const Seek seek = seeks.last();
    if (seek.done)
        seek.done(finished);
}

void ScriptedVideoPlayer::setWaiting(bool waiting)
{
    m_waiting = waiting;
    Q_EMIT waitingChanged();
    Q_EMIT timeControlChanged();
}

void ScriptedVideoPlayer::setDuration(double seconds)
{
    m_duration = seconds;
    Q_EMIT durationChanged();
}

void ScriptedVideoPlayer::setBufferedTo(double seconds)
{
    m_bufferedTo = seconds;
    Q_EMIT bufferedToChanged();
}

void ScriptedVideoPlayer::setSeekable(bool seekable)
{
    m_seekable = seekable;
    Q_EMIT seekableChanged();
}

void ScriptedVideoPlayer::setTracks(const QList<MediaTrack>& tracks)
{
    m_tracks = tracks;
    Q_EMIT tracksChanged();
}

} // namespace quillmere
