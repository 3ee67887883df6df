#pragma once

#include "DeferredNotifications.h"
#include "PeriodicTimeObservers.h"
#include "ReconnectSchedule.h"
#include "StallDetector.h"
#include "TaskScope.h"
#include "Timeline.h"
#include "VideoEngine.h"
#include "VideoOptions.h"
#include "VideoPlayer.h"
#include "VideoPlugins.h"

#include <QMap>

#include <algorithm>
#include <functional>
#include <optional>

namespace quillmere {

/**
 * The real player: the rules of playback, on an engine of the video plug-in, which is loaded for the first item. Screen
 * thread only; its creator owns it; the clock must outlive it. The destructor does not wait for the engine.
 *
 * When the data ends, the item has played to its end only if the position is at most 2 seconds before the duration;
 * otherwise the stream is broken. It is also broken when the position has not advanced for 12 seconds, when a load
 * shows no picture within 30 seconds, and at a gap in the data that is met for the first time (see Timeline). The
 * player then reconnects (see ReconnectSchedule) and continues at its position. A recording whose first load fails is
 * not tried again.
 */
class StreamPlayer : public VideoPlayer, private VideoEngineListener
{
    Q_OBJECT

public:
    using LoadPlugin = std::function<QCoro::Task<tl::expected<VideoPlugin*, QString>>()>;

    StreamPlayer(VideoOptions options, Clock& clock, LoadPlugin loadPlugin = &VideoPlugins::load,
                 QObject* parent = nullptr);

    void setItem(std::shared_ptr<PlayerItem> item) override;
    std::shared_ptr<PlayerItem> item() const override { return m_item; }
    void play() override { setPlaying(true); }
    void pause() override { setPlaying(false); }
    TimeControl timeControl() const override;
    bool isWaiting() const override;
    bool automaticallyWaitsToMinimizeStalling() const override { return m_waitsForData; }
    void setAutomaticallyWaitsToMinimizeStalling(bool waits) override;
    double position() const override { return m_targetPosition.value_or(m_position); }
    double duration() const override { return m_duration; }
    double bufferedTo() const override;
    bool isSeekable() const override { return m_seekable && m_duration > 0; }
    void seek(double seconds, SeekTolerance tolerance, SeekCallback onFinished = {}) override;
    [[nodiscard]] std::unique_ptr<TimeObserver>
    addPeriodicTimeObserver(std::chrono::seconds interval, std::function<void(double seconds)> callback) override;
    const QList<MediaTrack>& tracks() const override { return m_tracks; }
    void select(MediaTrack::Kind kind, int id) override;
    std::shared_ptr<VideoEngine> engine() const override { return m_engine; }

private:
    enum class Phase {
        Idle,
        Loading, ///< this load has shown no picture yet
        Shown,
        Broken, ///< waits for the next attempt to reconnect
        Ended,
        Failed
    };
    /** The properties with change signals, to find out which have changed. */
    struct PublicState
    {
        TimeControl timeControl = TimeControl::Paused;
        bool isWaiting = false;
        double position = 0;
        double duration = 0;
        double bufferedTo = 0;
        bool isSeekable = false;
    };

    /** Open in each function that changes the state; its end emits the signals. These may destroy the player. */
    class ChangeScope
    {
    public:
        explicit ChangeScope(StreamPlayer& player) : m_player(player), m_scope(player.m_notifications) {}
        ~ChangeScope() { m_player.notifyChanges(); }
        ChangeScope(const ChangeScope&) = delete;
        ChangeScope& operator=(const ChangeScope&) = delete;

    private:
        StreamPlayer& m_player;
        DeferredNotifications::Scope m_scope;
    };

    void onEngineReady() override;
    void onRendererReady() override;
    void onEngineFailed(const VideoFailure& failure) override;
    void onPictureShown(int loadId, double seconds) override;
    void onPositionChanged(int loadId, double seconds) override;
    void onDurationKnown(int loadId, double seconds) override;
    void onBufferedToChanged(int loadId, double seconds) override;
    void onSeekableKnown(int loadId, bool seekable) override;
    void onTracksChanged(int loadId, const QList<MediaTrack>& tracks) override;
    void onWaitingChanged(int loadId, bool waiting) override;
    void onSeekFinished(int loadId, int seekId, double seconds) override;
    void onDataSkipped(int loadId) override;
    void onEndOfFile(int loadId) override;
    void onLoadFailed(int loadId, const VideoFailure& failure) override;

    QCoro::Task<> openEngine();
    void setPlaying(bool playing);
    void load(double startAt);
    void releaseItem();
    void reconnect();
    void onStalled();
    void onTargetReached(Timeline::Position position);
    void updatePosition(Timeline::Position position);
    bool isBroken(Timeline::Position position) const;
    Timeline::Position reachedPosition(double timestamp);
    void handleBrokenStream(const VideoFailure& failure);
    void end();
    void fail(const VideoFailure& failure);
    void finishSeek(bool finished);
    void postSeekResult(SeekCallback callback, bool finished);
    bool isCurrentLoad(int loadId) const
    {
        return loadId == m_loadId && (m_phase == Phase::Loading || m_phase == Phase::Shown);
    }
    void notifyItem(std::function<void(PlayerItem&)> notification);
    double clamped(double seconds) const;
    void setTracks(const QList<MediaTrack>& tracks);
    void notifyChanges();
    void logState(bool timeControlChanged);

    VideoOptions m_options;
    LoadPlugin m_loadPlugin;
    std::shared_ptr<VideoEngine> m_startingEngine; ///< until it is ready
    std::shared_ptr<VideoEngine> m_engine;
    bool m_openingEngine = false;
    bool m_rendererReady = false;

    std::shared_ptr<PlayerItem> m_item;
    Phase m_phase = Phase::Idle;
    Phase m_loggedPhase = Phase::Idle;
    int m_loadId = 0;
    bool m_wantsToPlay = false; ///< not paused by the viewer
    bool m_waitsForData = true;
    bool m_hasShownPicture = false; ///< in any load of the item
    bool m_buffering = false;
    double m_position = 0;                  ///< of the last picture shown
    std::optional<double> m_targetPosition; ///< of the load or seek in progress
    int m_seekId = 0;
    SeekCallback m_seekCallback;
    double m_duration = 0;
    double m_bufferedTo = 0; ///< a timestamp, not a position
    bool m_seekable = false;
    Timeline m_timeline;
    QList<MediaTrack> m_tracks;
    QMap<MediaTrack::Kind, int> m_selectedTracks; ///< by the viewer; ids

    PeriodicTimeObservers m_timeObservers;
    ReconnectSchedule m_reconnectSchedule;
    StallDetector m_stallDetector;
    StallDetector m_loadStallDetector;
    PublicState m_notifiedState; ///< at the last notification
    DeferredNotifications m_notifications;
    std::shared_ptr<VideoEngineListener> m_listener; ///< this object; expires with it, so that late events are dropped
    TaskScope m_tasks;
};

} // namespace quillmere
