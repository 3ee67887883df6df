#pragma once

#include "Clock.h"
#include "Playhead.h"
#include "TrackList.h"
#include "VideoPlayer.h"

#include <QPointer>

#include <memory>

namespace quillmere {

/**
 * Controls of a full-screen player: handles the remote's keys, and decides which controls and texts are shown over the
 * picture. Screen thread only; the class that hosts the player owns it. The clock must outlive it; the player may be
 * destroyed first.
 *
 * The times, `progress` and `bufferedPart` are updated only while the transport bar is shown, so that a hidden bar
 * causes no painting.
 */
class PlayerController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Created in C++ by the owner of the player.")
    Q_PROPERTY(quillmere::VideoPlayer* player READ player NOTIFY playerChanged FINAL)

    /** From the item's metadata; empty if missing. */
    Q_PROPERTY(QString title READ title NOTIFY itemChanged FINAL)
    Q_PROPERTY(QString subtitle READ subtitle NOTIFY itemChanged FINAL)
    Q_PROPERTY(QString description READ description NOTIFY itemChanged FINAL)
    Q_PROPERTY(QString publisher READ publisher NOTIFY itemChanged FINAL)

    Q_PROPERTY(bool live READ isLive NOTIFY itemChanged FINAL)
    Q_PROPERTY(bool seekable READ isSeekable NOTIFY seekableChanged FINAL)

    /** The player's state; `stateText` is its name for the viewer, with the speed of a scrub. */
    Q_PROPERTY(State state READ state NOTIFY stateChanged FINAL)
    Q_PROPERTY(bool scrubbing READ isScrubbing NOTIFY stateChanged FINAL)
    Q_PROPERTY(QString stateText READ stateText NOTIFY stateChanged FINAL)

    /** "1:02:05" and "-12:34"; during a scrub, of the scrub's position. Both are empty for a live item; the remaining
        time is empty while the duration is unknown. */
    Q_PROPERTY(QString elapsedText READ elapsedText NOTIFY timesChanged FINAL)
    Q_PROPERTY(QString remainingText READ remainingText NOTIFY timesChanged FINAL)
    /** Fractions of the duration, 0 to 1; 0 while it is unknown. */
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged FINAL)
    Q_PROPERTY(double bufferedPart READ bufferedPart NOTIFY progressChanged FINAL)

    /** Which controls are shown over the picture. */
    Q_PROPERTY(bool transportShown READ transportShown NOTIFY transportShownChanged FINAL)
    Q_PROPERTY(bool panelShown READ panelShown NOTIFY panelShownChanged FINAL)
    Q_PROPERTY(bool spinnerShown READ spinnerShown NOTIFY spinnerShownChanged FINAL)

    /** The panel's choices; empty if there is nothing to choose. */
    Q_PROPERTY(quillmere::TrackList* audioTracks READ audioTracks CONSTANT FINAL)
    Q_PROPERTY(quillmere::TrackList* subtitleTracks READ subtitleTracks CONSTANT FINAL)
    /** Set by the panel: whether nothing on it is above the focus, so that the up key closes the panel. */
    Q_PROPERTY(bool panelTopFocused READ isPanelTopFocused WRITE setPanelTopFocused NOTIFY panelTopFocusedChanged FINAL)

public:
    enum class State { Waiting, Playing, Paused, FastForwarding, Rewinding };
    Q_ENUM(State)

    explicit PlayerController(Clock& clock, QObject* parent = nullptr);

    VideoPlayer* player() const { return m_player; }
    /** May be null: all controls are hidden, and a scrub is cancelled without a seek. */
    void setPlayer(VideoPlayer* player);

    QString title() const;
    QString subtitle() const;
    QString description() const;
    QString publisher() const;
    bool isLive() const;
    bool isSeekable() const { return m_player && m_player->isSeekable(); }
    State state() const { return m_state; }
    bool isScrubbing() const { return m_state == State::FastForwarding || m_state == State::Rewinding; }
    QString stateText() const { return m_stateText; }
    QString elapsedText() const { return m_elapsedText; }
    QString remainingText() const { return m_remainingText; }
    double progress() const { return m_progress; }
    double bufferedPart() const { return m_bufferedPart; }
    bool transportShown() const { return m_transportShown; }
    bool panelShown() const { return m_panelShown; }
    bool spinnerShown() const { return m_spinnerShown; }
    TrackList* audioTracks() { return &m_audioTracks; }
    TrackList* subtitleTracks() { return &m_subtitleTracks; }
    bool isPanelTopFocused() const { return m_panelTopFocused; }
    void setPanelTopFocused(bool focused);

    /**
     * Handles a key press (a Qt::Key) or an auto-repeat of it; returns whether it was used. While the panel is shown
     * with something to choose, arrows and select are not used, so that the panel gets them. After a failure, and
     * without an item, only back and stop are used.
     */
    Q_INVOKABLE bool press(int key, bool isAutoRepeat = false);

    /** Handles a key release; returns whether it ended a scrub. */
    Q_INVOKABLE bool release(int key);

Q_SIGNALS:
    void playerChanged();
    void itemChanged();
    void seekableChanged();
    void stateChanged();
    void timesChanged();
    void progressChanged();
    void transportShownChanged();
    void panelShownChanged();
    void spinnerShownChanged();
    void panelTopFocusedChanged();

    /** The viewer wants to leave the player. */
    void dismissRequested();

private:
    PlayerItem* item() const;
    QString metadata(MetadataItem::Identifier identifier) const;
    bool hasFailed() const;
    State currentState() const;
    QString currentStateText() const;

    void onItemChanged();
    void updateTracks();
    void updateState();
    void updateSpinner();
    void updateTransport();
    void updateTimes();
    void setTransportShown(bool shown);
    void setPanelShown(bool shown);
    template<typename Value>
    void setMember(Value& member, Value value, void (PlayerController::*changed)());

    // Key handling.
    bool isPanelKey(int key) const;
    bool handleKey(int key, bool isAutoRepeat);
    bool handlePress(int key);
    void scrub(int key, int direction);
    void setPaused(bool paused);
    void handleBack();
    void showTransport();

    Clock& m_clock;
    QPointer<VideoPlayer> m_player;
    QMetaObject::Connection m_statusObservation;
    Playhead m_playhead;
    bool m_hasPlayed = false; ///< whether the player has played, or waited to play, since it got the item
    int m_scrubKey = 0;       ///< the key held during a scrub
    State m_state = State::Paused;
    QString m_stateText;
    QString m_elapsedText;
    QString m_remainingText;
    double m_progress = 0;
    double m_bufferedPart = 0;
    bool m_transportShown = false;
    bool m_panelShown = false;
    bool m_spinnerShown = false;
    bool m_panelTopFocused = true;
    TrackList m_audioTracks{MediaTrack::Kind::Audio};
    TrackList m_subtitleTracks{MediaTrack::Kind::Subtitle};
    std::unique_ptr<Clock::Timer> m_transportTimer; ///< shows the bar for some seconds after a key press
    std::unique_ptr<Clock::Timer> m_spinnerTimer;   ///< delays the spinner, so that short waits do not show it
};

} // namespace quillmere
