#pragma once

#include "VideoPlayer.h"

#include <QList>

/** A player without a stream: it notes what it is told, and the test says what happens. It shows no picture. */
class ScriptedVideoPlayer : public VideoPlayer
{
    Q_OBJECT

public:
    struct Load
    {
        QUrl url;
        double startAt;
    };

    using VideoPlayer::VideoPlayer;

    void load(const QUrl& url, double startAt = 0) override;
    void play() override { setPaused(false); }
    void pause() override { setPaused(true); }
    void stop() override;

    State state() const override { return m_state; }
    bool isWaiting() const override { return m_waiting; }
    double position() const override { return m_position; }
    double duration() const override { return m_duration; }
    std::shared_ptr<VideoEngine> engine() const override { return nullptr; }

    const QList<Load>& loads() const { return m_loads; }

    // What happens, as the test tells it; each inside the call.
    void showPicture();
    void moveTo(double seconds);
    void setDuration(double seconds);
    void setWaiting(bool waiting);
    void end();
    void fail(const VideoFailure& failure);

private:
    void setState(State state);
    void setPaused(bool paused);

    QList<Load> m_loads;
    State m_state = State::Idle;
    bool m_paused = false;
    bool m_waiting = false;
    double m_position = 0;
    double m_duration = 0;
};
