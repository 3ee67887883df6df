#pragma once

#include "Announcements.h"
#include "PeriodicTime.h"
#include "Reconnection.h"
#include "StallWatch.h"
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

/**
 * The real player: the rules of playing, on an engine of the plug-in's, which its first item brings in. Screen thread
 * only; whoever made it owns it; the clock outlives it. Destroying it does not wait for the engine.
 *
 * Data that stop coming are the end of play only where the position has come within 2 seconds of the duration. Anywhere
 * else, when the position has not moved for 12 seconds, and when a load shows no picture within 30, it reconnects (see
 * Reconnection) and goes on where it was; so it does, once for each place, where data were left out (see Timeline).
 * A recording that cannot be loaded at all fails at once.
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
    double position() const override { return m_target.value_or(m_position); }
    double duration() const override { return m_duration; }
    double bufferedTo() const override;
    bool isSeekable() const override { return m_seekable && m_duration > 0; }
    void seek(double seconds, SeekTolerance tolerance, SeekDone done = {}) override;
    [[nodiscard]] std::unique_ptr<TimeObserver>
    addPeriodicTimeObserver(std::chrono::seconds interval, std::function<void(double seconds)> callback) override;
    const QList<MediaTrack>& tracks() const override { return m_tracks; }
    void select(MediaTrack::Kind kind, int id) override;
    std::shared_ptr<VideoEngine> engine() const override { return m_engine; }

private:
    enum class Phase {
        Idle,
        Loading, ///< no picture of this load yet
        Shown,
        Broken, ///< until the next attempt
        Ended,
        Failed
    };
    /** What viewers see of it; what differs from the last time is told. */
    struct Public
    {
        TimeControl timeControl = TimeControl::Paused;
        bool isWaiting = false;
        double position = 0;
        double duration = 0;
        double bufferedTo = 0;
        bool isSeekable = false;
    };

    /** Around each change from outside: what has come of it is told at its end, when the player may be destroyed. */
    class Change
    {
    public:
        explicit Change(StreamPlayer& player) : m_player(player), m_change(player.m_announcements) {}
        ~Change() { m_player.announceChanges(); }
        Change(const Change&) = delete;
        Change& operator=(const Change&) = delete;

    private:
        StreamPlayer& m_player;
        Announcements::Change m_change;
    };

    void engineReady() override;
    void rendererReady() override;
    void engineFailed(const VideoFailure& failure) override;
    void pictureShown(int load, double seconds) override;
    void positionMoved(int load, double seconds) override;
    void durationKnown(int load, double seconds) override;
    void dataBuffered(int load, double upTo) override;
    void seekableKnown(int load, bool seekable) override;
    void tracksKnown(int load, const QList<MediaTrack>& tracks) override;
    void waitingChanged(int load, bool waiting) override;
    void seekDone(int load, int seek, double seconds) override;
    void dataSkipped(int load) override;
    void endOfFile(int load) override;
    void loadFailed(int load, const VideoFailure& failure) override;

    QCoro::Task<> openEngine();
    void setPlaying(bool playing);
    void load(double startAt);
    void letGo();
    void reconnect();
    void stalled();
    void arriveAt(Timeline::Place place);
    void moveTo(Timeline::Place place);
    bool isBreak(Timeline::Place place) const;
    Timeline::Place landing(double seconds);
    void takeBreak(const VideoFailure& failure);
    void end();
    void fail(const VideoFailure& failure);
    void finishSeek(bool finished);
    void callLater(SeekDone done, bool finished);
    bool concerns(int load) const { return load == m_load && (m_phase == Phase::Loading || m_phase == Phase::Shown); }
    void tellItem(std::function<void(PlayerItem&)> news);
    double bounded(double seconds) const;
    void setTracks(const QList<MediaTrack>& tracks);
    void announceChanges();
    void logState(bool timeControlChanged);

    VideoOptions m_options;
    LoadPlugin m_loadPlugin;
    std::shared_ptr<VideoEngine> m_starting; ///< before it is ready
    std::shared_ptr<VideoEngine> m_engine;
    bool m_opening = false;
    bool m_rendererReady = false;

    std::shared_ptr<PlayerItem> m_item;
    Phase m_phase = Phase::Idle;
    Phase m_loggedPhase = Phase::Idle;
    int m_load = 0;
    bool m_playing = false; ///< as the viewer wants it
    bool m_waitsForData = true;
    bool m_hasShownPicture = false; ///< of the item
    bool m_buffering = false;
    double m_position = 0;          ///< that has been seen
    std::optional<double> m_target; ///< where a load or a seek under way goes
    int m_seek = 0;
    SeekDone m_seekDone;
    double m_duration = 0;
    double m_bufferedTo = 0; ///< as the stream counts
    bool m_seekable = false;
    Timeline m_timeline;
    QList<MediaTrack> m_tracks;
    QMap<MediaTrack::Kind, int> m_selected; ///< by the viewer

    PeriodicTime m_periodicTime;
    Reconnection m_reconnection;
    StallWatch m_stallWatch;
    StallWatch m_loadWatch;
    Public m_announced;
    Announcements m_announcements;
    std::shared_ptr<VideoEngineListener> m_listener; ///< this object, held so that late reports find nobody
    TaskScope m_tasks;
};
