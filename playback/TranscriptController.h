#pragma once

#include "HubAPI.h"
#include "PassageList.h"
#include "VHSCover.h"

#include <QtQml/qqmlregistration.h>

/**
 * The state of the screen that shows what was said on a tape. The transcript is made into paragraphs on a thread of its
 * own; the hub's client refuses more than 16 MiB of it. Screen thread only; the screen makes and owns it; the hub, set
 * once when it is made, outlives it.
 */
class TranscriptController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(HubAPI* hub READ hub WRITE setHub NOTIFY hubChanged REQUIRED FINAL)
    // What comes of this once the screen has appeared changes nothing.
    Q_PROPERTY(Tape tape READ tape WRITE setTape FINAL)
    Q_PROPERTY(VHSCover cover READ cover WRITE setCover NOTIFY coverChanged FINAL)

    Q_PROPERTY(QString caption READ caption NOTIFY coverChanged FINAL)
    Q_PROPERTY(QString title READ title NOTIFY coverChanged FINAL)
    /** Empty while there is no transcript, and when the hub has not counted its words. */
    Q_PROPERTY(QString wordCount READ wordCount NOTIFY stateChanged FINAL)
    Q_PROPERTY(LoadState state READ state NOTIFY stateChanged FINAL)
    /** What the viewer reads instead of a transcript; empty but in state `Empty`. */
    Q_PROPERTY(QString message READ message NOTIFY stateChanged FINAL)
    Q_PROPERTY(PassageList* passages READ passages CONSTANT FINAL)

public:
    enum LoadState { Empty, Loading, Ready };
    Q_ENUM(LoadState)

    using QObject::QObject;

    HubAPI* hub() const { return m_hub; }
    void setHub(HubAPI* hub);
    const Tape& tape() const { return m_tape; }
    void setTape(Tape tape) { m_tape = std::move(tape); }
    const VHSCover& cover() const { return m_cover; }
    void setCover(VHSCover cover);

    QString caption() const;
    QString title() const;
    QString wordCount() const;
    qint64 words() const { return m_words; }
    LoadState state() const { return m_state; }
    QString message() const { return m_message; }
    /** One for each paragraph, or more for one that is too long to be laid out at once. */
    PassageList* passages() { return &m_passages; }
    /** The thread on which paragraphs are made, so that a test can keep it busy. */
    Worker& reflowWorker() { return m_reflow; }

    /** The screen has come into view: the transcript is fetched. Nothing is tried again. */
    Q_INVOKABLE void appear();
    /** The screen has gone away: the fetch ends. */
    Q_INVOKABLE void disappear();

Q_SIGNALS:
    void hubChanged();
    void coverChanged();
    void stateChanged();

private:
    QCoro::Task<> load();
    void show(LoadState state, const QString& message = {});

    HubAPI* m_hub = nullptr;
    Tape m_tape;
    VHSCover m_cover;
    qint64 m_words = 0;
    LoadState m_state = Loading;
    QString m_message;
    PassageList m_passages;
    Worker m_reflow;
    TaskScope m_tasks;
};
