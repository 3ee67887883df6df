#pragma once

#include "FactList.h"
#include "HubAPI.h"
#include "Store.h"

#include <QtQml/qqmlregistration.h>

namespace quillmere {

/**
 * State and texts of a tape's screen. It shows the tape as the list had it until the full record arrives from the hub,
 * and the resume position. Screen thread only; the screen creates and owns it; store and hub are set once and must
 * outlive it.
 */
class TapeDetailController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(quillmere::Store* store READ store WRITE setStore NOTIFY storeChanged REQUIRED FINAL)
    Q_PROPERTY(quillmere::HubAPI* hub MEMBER m_hub NOTIFY hubChanged REQUIRED FINAL)
    /** The tape that the screen was opened with; set once. */
    Q_PROPERTY(quillmere::Tape tape READ tape WRITE setTape NOTIFY shownTapeChanged FINAL)
    /** The full record once fetched, else the tape; and its cover. All that the screen shows comes from these. */
    Q_PROPERTY(quillmere::Tape shownTape READ shownTape NOTIFY shownTapeChanged FINAL)
    Q_PROPERTY(quillmere::VHSCover cover READ cover NOTIFY shownTapeChanged FINAL)

    /** Whether the player or the transcript covers the screen. */
    Q_PROPERTY(bool playing READ isPlaying WRITE setPlaying NOTIFY playingChanged FINAL)
    Q_PROPERTY(bool readingTranscript READ isReadingTranscript WRITE setReadingTranscript NOTIFY
                   readingTranscriptChanged FINAL)
    /** Start position of the player, in seconds. */
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
    Q_PROPERTY(quillmere::FactList* facts READ facts CONSTANT FINAL)

    /** Text of the first button, and which other buttons are shown. */
    Q_PROPERTY(QString playText READ playText NOTIFY resumePositionChanged FINAL)
    Q_PROPERTY(bool canStartOver READ canStartOver NOTIFY resumePositionChanged FINAL)
    Q_PROPERTY(bool hasTranscript READ hasTranscript NOTIFY shownTapeChanged FINAL)

public:
    using QObject::QObject;

    Store* store() const { return m_store; }
    void setStore(Store* store);
    const Tape& tape() const { return m_tape; }
    void setTape(Tape tape);

    /** The full record once fetched; kept until the screen is destroyed. */
    const std::optional<Tape>& detail() const { return m_detail; }
    const Tape& shownTape() const { return m_detail ? *m_detail : m_tape; }
    /** The cover of the shown tape, computed at each of its changes. */
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
     * The screen was shown: fetches the full record, without retries. A failure, or a record of another tape, is
     * ignored.
     */
    Q_INVOKABLE void appear();
    /** The screen was hidden: cancels the fetch. */
    Q_INVOKABLE void disappear();

    /** The buttons: play from the resume position, play from the beginning, show the transcript. */
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
    void updateShownTape();
    void updateResumePosition();
    void playFrom(double seconds);

    Store* m_store = nullptr; ///< may still be null when the tape is set
    HubAPI* m_hub = nullptr;
    Tape m_tape;
    std::optional<Tape> m_detail;
    VHSCover m_cover; ///< cached, because computing it takes long for a very long title
    bool m_playing = false;
    bool m_readingTranscript = false;
    double m_startAt = 0;
    double m_resumePosition = 0; ///< as shown by the buttons; in seconds
    FactList m_facts;
    TaskScope m_tasks;
};

} // namespace quillmere
