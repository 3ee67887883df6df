#pragma once

#include "VideoPlayer.h"

#include <QList>

/**
 * A player without a stream: it notes what it is told, and the test says what happens, also what a real player would
 * not do. It shows no picture.
 */
class ScriptedVideoPlayer : public VideoPlayer
{
    Q_OBJECT

public:
    struct Seek
    {
        double seconds;
        SeekTolerance tolerance;
        SeekDone done;
    };
    struct Observation
    {
        std::chrono::seconds interval;
        std::function<void(double)> callback;
        std::weak_ptr<int> token; ///< expired once the observer is gone
    };
    struct Selection
    {
        MediaTrack::Kind kind;
        int id;
    };

    using VideoPlayer::VideoPlayer;

    void setItem(std::shared_ptr<PlayerItem> item) override;
    std::shared_ptr<PlayerItem> item() const override { return m_item; }
    void play() override;
    void pause() override;
    TimeControl timeControl() const override;
    bool isWaiting() const override { return m_waiting; }
    bool automaticallyWaitsToMinimizeStalling() const override { return m_waitsToMinimizeStalling; }
    void setAutomaticallyWaitsToMinimizeStalling(bool waits) override { m_waitsToMinimizeStalling = waits; }
    double position() const override { return m_position; }
    double duration() const override { return m_duration; }
    double bufferedTo() const override { return m_bufferedTo; }
    bool isSeekable() const override { return m_seekable; }
    void seek(double seconds, SeekTolerance tolerance, SeekDone done = {}) override;
    [[nodiscard]] std::unique_ptr<TimeObserver>
    addPeriodicTimeObserver(std::chrono::seconds interval, std::function<void(double seconds)> callback) override;
    const QList<MediaTrack>& tracks() const override { return m_tracks; }
    void select(MediaTrack::Kind kind, int id) override { selections.append({kind, id}); }
    std::shared_ptr<VideoEngine> engine() const override { return nullptr; }

    // What happens, as the test tells it; each inside the call.
    void showPicture();             ///< no longer waiting, the item is ready
    void fail(const VideoFailure&); ///< the item, for good
    void end();                     ///< the item was played to its end
    void moveTo(double seconds);    ///< the position alone
    void report(double seconds);    ///< to the observers that are still there
    void finishSeek(bool finished); ///< the latest one
    void setWaiting(bool waiting);
    void setDuration(double seconds);
    void setBufferedTo(double seconds);
    void setSeekable(bool seekable);
    void setTracks(const QList<MediaTrack>& tracks);

    /** "setItem", "letGo", "play", "pause", "seek", "observe" and "unobserve", in order; readable after the player. */
    std::shared_ptr<const QStringList> calls() const { return m_calls; }

    // What it was told. A test may call what is noted here too late, as a careless player would.
    QList<std::shared_ptr<PlayerItem>> items; ///< null where it was let go
    QList<Seek> seeks;
    QList<Observation> observations;
    QList<Selection> selections;

private:
    std::shared_ptr<QStringList> m_calls = std::make_shared<QStringList>();
    std::shared_ptr<PlayerItem> m_item;
    bool m_playing = false;
    bool m_waiting = false;
    bool m_waitsToMinimizeStalling = true;
    double m_position = 0;
    double m_duration = 0;
    double m_bufferedTo = 0;
    bool m_seekable = false;
    QList<MediaTrack> m_tracks;
};
