#pragma once

#include "Clock.h"
#include "Playhead.h"
#include "TrackList.h"
#include "VideoPlayer.h"

#include <QPointer>

#include <memory>

/**
 * The controls of a player that fills the screen: what the remote's keys do to it, what is shown over its picture, and
 * what stands there. Screen thread only; whoever hosts the player owns it. The clock outlives it; the player may go first.
 *
 * The times, the progress and the buffered part are kept up to date while the transport bar is shown, and stand still
 * while it is not, so that nothing is painted for them.
 */
class PlayerController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Whoever hosts the player makes it.")
    Q_PROPERTY(VideoPlayer* player READ player NOTIFY playerChanged FINAL)

    /** From the item's metadata; empty where there is none. */
    Q_PROPERTY(QString title READ title NOTIFY itemChanged FINAL)
    Q_PROPERTY(QString subtitle READ subtitle NOTIFY itemChanged FINAL)
    Q_PROPERTY(QString description READ description NOTIFY itemChanged FINAL)
    Q_PROPERTY(QString publisher READ publisher NOTIFY itemChanged FINAL)

    Q_PROPERTY(bool live READ isLive NOTIFY itemChanged FINAL)
    Q_PROPERTY(bool seekable READ isSeekable NOTIFY seekableChanged FINAL)

    /** How it plays, and in words, with the speed of a scrub. */
    Q_PROPERTY(State state READ state NOTIFY stateChanged FINAL)
    Q_PROPERTY(bool scrubbing READ isScrubbing NOTIFY stateChanged FINAL)
    Q_PROPERTY(QString stateText READ stateText NOTIFY stateChanged FINAL)

    /** "1:02:05" and "-12:34"; while scrubbing of where it would go on. Empty for a live item; no remaining time while
        the duration is not known. */
    Q_PROPERTY(QString elapsedText READ elapsedText NOTIFY timesChanged FINAL)
    Q_PROPERTY(QString remainingText READ remainingText NOTIFY timesChanged FINAL)
    /** Parts of the duration, 0 to 1; 0 while it is not known. */
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged FINAL)
    Q_PROPERTY(double bufferedPart READ bufferedPart NOTIFY progressChanged FINAL)

    /** What is shown over the picture. */
    Q_PROPERTY(bool transportShown READ transportShown NOTIFY transportShownChanged FINAL)
    Q_PROPERTY(bool panelShown READ panelShown NOTIFY panelShownChanged FINAL)
    Q_PROPERTY(bool spinnerShown READ spinnerShown NOTIFY spinnerShownChanged FINAL)

    /** The panel's choices; empty where there is nothing to choose. */
    Q_PROPERTY(TrackList* audioTracks READ audioTracks CONSTANT FINAL)
    Q_PROPERTY(TrackList* subtitleTracks READ subtitleTracks CONSTANT FINAL)
    /** Told by the panel: whether the focus stands where nothing is above it, so that up closes the panel. */
    Q_PROPERTY(bool panelTopFocused READ isPanelTopFocused WRITE setPanelTopFocused NOTIFY panelTopFocusedChanged FINAL)

public:
    enum class State { Waiting, Playing, Paused, FastForwarding, Rewinding };
    Q_ENUM(State)

    explicit PlayerController(Clock& clock, QObject* parent = nullptr);

    VideoPlayer* player() const { return m_player; }
    /** None when the player is let go: nothing is shown then, and an unfinished scrub is dropped. */
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
     * Takes a remote's key (a Qt::Key) or a step of a held one; answers whether it was used. Arrows and select are left
     * to the panel where there is something to choose on it. After a failure only back and stop are used: they leave.
     */
    Q_INVOKABLE bool press(int key, bool isAutoRepeat = false);

    /** Takes a key's release; answers whether it ended anything. */
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

    /** The viewer leaves the player. */
    void leave();

private:
    PlayerItem* item() const;
    QString metadata(MetadataItem::Identifier identifier) const;
    bool hasFailed() const;
    State currentState() const;
    QString currentStateText() const;

    void takeItem();
    void showTracks();
    void update();
    void updateSpinner();
    void updateTransport();
    void updateTimes();
    void setTransportShown(bool shown);
    void setPanelShown(bool shown);
    template<typename Value>
    void change(Value& member, Value value, void (PlayerController::*changed)());

    // What the keys do: PlayerControllerKeys.cpp.
    bool isForPanel(int key) const;
    bool act(int key, bool isAutoRepeat);
    bool actOnAPress(int key);
    void scrub(int key, int direction);
    void setPaused(bool paused);
    void back();
    void showTransport();

    Clock& m_clock;
    QPointer<VideoPlayer> m_player;
    QMetaObject::Connection m_statusObservation;
    Playhead m_playhead;
    bool m_hasPlayed = false; ///< the item, or was to
    int m_scrubKey = 0;       ///< the one that is held while scrubbing
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
    std::unique_ptr<Clock::Timer> m_lastKey;      ///< runs since the last key while the bar is shown for it
    std::unique_ptr<Clock::Timer> m_spinnerDelay; ///< runs while there is waiting that is too short to show yet
};
