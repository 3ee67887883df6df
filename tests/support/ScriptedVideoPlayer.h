#pragma once

#include "VideoPlayer.h"

#include <QList>

namespace quillmere {

/**
 * A fake player without a stream or picture. It records the calls, and the test triggers events, including some that a
 * real player would not send.
 */
class ScriptedVideoPlayer : public VideoPlayer
{
    Q_OBJECT

public:
    struct Seek
    {
        double seconds;
        SeekTolerance tolerance;
        SeekCallback done;
    };
    struct Observation
    {
        std::chrono::seconds interval;
        std::function<void(double)> callback;
        std::weak_ptr<int> token; ///< expired once the observer is destroyed
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
    void seek(double seconds, SeekTolerance tolerance, SeekCallback done = {}) override;
    [[nodiscard]] std::unique_ptr<TimeObserver>
    addPeriodicTimeObserver(std::chrono::seconds interval, std::function<void(double seconds)> callback) override;
    const QList<MediaTrack>& tracks() const override { return m_tracks; }
    void select(MediaTrack::Kind kind, int id) override { selections.append({kind, id}); }
    std::shared_ptr<VideoEngine> engine() const override { return nullptr; }

    // Events triggered by the test; each is emitted before the call returns.
    void showPicture();             ///< stops waiting; the item becomes ready
    void fail(const VideoFailure&); ///< fails the item permanently
    void end();                     ///< the item has played to its end
    void moveTo(double seconds);    ///< changes only the position
    void report(double seconds);    ///< changes the position and calls the observers that still exist
    void finishSeek(bool finished); ///< completes the latest seek
    void setWaiting(bool waiting);
    void setDuration(double seconds);
    void setBufferedTo(double seconds);
    void setSeekable(bool seekable);
    void setTracks(const QList<MediaTrack>& tracks);

    /**
     * "setItem", "clearItem", "play", "pause", "seek", "observe" and "unobserve", in order. The list outlives the
     * player.
     */
    std::shared_ptr<const QStringList> calls() const { return m_calls; }

    // What was passed to the player. A test may call the stored callbacks too late, as a faulty player would.
    QList<std::shared_ptr<PlayerItem>> items; ///< null where the item was cleared
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

} // namespace quillmere
