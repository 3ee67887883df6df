#pragma once

#include "TaskScope.h"
#include "VideoEngine.h"
#include "VideoOptions.h"
#include "VideoPlayer.h"
#include "VideoPlugins.h"

#include <functional>

/**
 * The real player: the rules of playing, on an engine of the plug-in's, which its first load brings in.
 * Screen thread only; whoever made it owns it. Destroying it does not wait for the engine.
 */
class StreamPlayer : public VideoPlayer, private VideoEngineListener
{
    Q_OBJECT

public:
    using LoadPlugin = std::function<QCoro::Task<tl::expected<VideoPlugin*, QString>>()>;

    explicit StreamPlayer(VideoOptions options, LoadPlugin loadPlugin = &VideoPlugins::load, QObject* parent = nullptr);

    void load(const QUrl& url, double startAt = 0) override;
    void play() override { setPaused(false); }
    void pause() override { setPaused(true); }
    void stop() override;

    State state() const override { return m_state; }
    bool isWaiting() const override { return m_waiting; }
    double position() const override { return m_position; }
    double duration() const override { return m_duration; }
    std::shared_ptr<VideoEngine> engine() const override { return m_engine; }

private:
    void engineReady() override;
    void rendererReady() override;
    void engineFailed(const VideoFailure& failure) override;
    void pictureShown(int load) override;
    void positionMoved(int load, double seconds) override;
    void durationKnown(int load, double seconds) override;
    void waitingChanged(int load, bool waiting) override;
    void endOfFile(int load) override;
    void loadFailed(int load, const VideoFailure& failure) override;

    QCoro::Task<> openEngine();
    void startLoading();
    void setPaused(bool paused);
    void letGo();
    void finish(const QString& description);
    void fail(const VideoFailure& failure);
    bool concerns(int load) const;
    void setState(State state);
    void setWaiting(bool waiting);
    void setPosition(double seconds);
    void setDuration(double seconds);

    VideoOptions m_options;
    LoadPlugin m_loadPlugin;
    std::shared_ptr<VideoEngine> m_starting; ///< before it is ready
    std::shared_ptr<VideoEngine> m_engine;
    bool m_opening = false;
    bool m_rendererReady = false;
    QUrl m_url;
    double m_startAt = 0;
    int m_load = 0;
    State m_state = State::Idle;
    bool m_paused = false;
    bool m_waiting = false;
    double m_position = 0;
    double m_duration = 0;
    std::shared_ptr<VideoEngineListener> m_listener; ///< this object, held so that late reports find nobody
    TaskScope m_tasks;
};
