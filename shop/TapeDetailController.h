#pragma once

#include "FactList.h"
#include "HubAPI.h"
#include "Store.h"

#include <QtQml/qqmlregistration.h>

/**
 * The state and texts of one tape's screen: the tape as its list had it until the hub has sent the full record, and
 * where the viewer left it. Screen thread only; the screen makes and owns it; store and hub, set once when it is made,
 * outlive it.
 */
class TapeDetailController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(Store* store READ store WRITE setStore NOTIFY storeChanged REQUIRED FINAL)
    Q_PROPERTY(HubAPI* hub READ hub WRITE setHub NOTIFY hubChanged REQUIRED FINAL)
    /** The tape that the screen was opened with, set once. */
    Q_PROPERTY(Tape tape READ tape WRITE setTape NOTIFY shownTapeChanged FINAL)
    /** The full record once it is there, else the tape; dressed as `cover`. All that the screen shows is drawn from them. */
    Q_PROPERTY(Tape shownTape READ shownTape NOTIFY shownTapeChanged FINAL)
    Q_PROPERTY(VHSCover cover READ cover NOTIFY shownTapeChanged FINAL)

    /** Whether the player, or the transcript, covers the screen. */
    Q_PROPERTY(bool playing READ isPlaying WRITE setPlaying NOTIFY playingChanged FINAL)
    Q_PROPERTY(bool readingTranscript READ isReadingTranscript WRITE setReadingTranscript NOTIFY
                   readingTranscriptChanged FINAL)
    /** Where the player starts, in seconds. */
    Q_PROPERTY(double startAt READ startAt NOTIFY startAtChanged FINAL)

    Q_PROPERTY(QString title READ title NOTIFY shownTapeChanged FINAL)
    Q_PROPERTY(QString genreBadge READ genreBadge NOTIFY shownTapeChanged FINAL)
    Q_PROPERTY(QString ratingBadge READ ratingBadge NOTIFY shownTapeChanged FINAL)
    Q_PROPERTY(QString runtimeBadge READ runtimeBadge NOTIFY shownTapeChanged FINAL)
    Q_PROPERTY(QString speedBadge READ speedBadge NOTIFY shownTapeChanged FINAL)
    Q_PROPERTY(QString agendaBadge READ agendaBadge NOTIFY shownTapeChanged FINAL)
    Q_PROPERTY(QString tagline READ tagline NOTIFY shownTapeChanged FINAL)
    Q_PROPERTY(QString synopsis READ synopsis NOTIFY shownTapeChanged FINAL)
    Q_PROPERTY(QString catalogueLine READ catalogueLine NOTIFY shownTapeChanged FINAL)
    Q_PROPERTY(FactList* facts READ facts CONSTANT FINAL)

    /** What the first button says; which others there are. */
    Q_PROPERTY(QString playText READ playText NOTIFY resumePositionChanged FINAL)
    Q_PROPERTY(bool canStartOver READ canStartOver NOTIFY resumePositionChanged FINAL)
    Q_PROPERTY(bool hasTranscript READ hasTranscript NOTIFY shownTapeChanged FINAL)

public:
    using QObject::QObject;

    Store* store() const { return m_store; }
    void setStore(Store* store);
    HubAPI* hub() const { return m_hub; }
    void setHub(HubAPI* hub);
    const Tape& tape() const { return m_tape; }
    void setTape(Tape tape);

    /** The full record, once fetched; kept as long as the screen lives. */
    const std::optional<Tape>& detail() const { return m_detail; }
    const Tape& shownTape() const { return m_detail ? *m_detail : m_tape; }
    /** Dressed anew with every change of the shown tape, and so never older than it. */
    const VHSCover& cover() const { return m_cover; }

    bool isPlaying() const { return m_playing; }
    void setPlaying(bool playing);
    bool isReadingTranscript() const { return m_readingTranscript; }
    void setReadingTranscript(bool readingTranscript);
    double startAt() const { return m_startAt; }

    QString title() const;
    QString genreBadge() const;
    QString ratingBadge() const;
    QString runtimeBadge() const;
    QString speedBadge() const;
    QString agendaBadge() const;
    QString tagline() const;
    QString synopsis() const;
    QString catalogueLine() const;
    FactList* facts() { return &m_facts; }

    QString playText() const;
    bool canStartOver() const { return m_resumePosition > 0; }
    bool hasTranscript() const { return shownTape().hasTranscript; }

    /**
     * The screen has come into view: the full record is fetched. A failure is silent, as is a record of another tape, and
     * nothing is tried again.
     */
    Q_INVOKABLE void appear();
    /** The screen has gone away: the fetch ends. */
    Q_INVOKABLE void disappear();

    /** The buttons: play from where the viewer left the tape, or from its top; read what was said. */
    Q_INVOKABLE void play();
    Q_INVOKABLE void startOver();
    Q_INVOKABLE void readTranscript();

Q_SIGNALS:
    void storeChanged();
    void hubChanged();
    void shownTapeChanged();
    void playingChanged();
    void readingTranscriptChanged();
    void startAtChanged();
    void resumePositionChanged();

private:
    QCoro::Task<> fetch();
    void show();
    void readResumePosition();
    void playFrom(double seconds);

    Store* m_store = nullptr; ///< not there before it is set, when the tape may be already
    HubAPI* m_hub = nullptr;
    Tape m_tape;
    std::optional<Tape> m_detail;
    VHSCover m_cover; ///< kept between changes, as dressing a title without end takes its time
    bool m_playing = false;
    bool m_readingTranscript = false;
    double m_startAt = 0;
    double m_resumePosition = 0; ///< as the row of buttons shows it
    FactList m_facts;
    TaskScope m_tasks;
};
