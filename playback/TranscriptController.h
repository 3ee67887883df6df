#pragma once

#include "CurrentRowModel.h"
#include "HubAPI.h"
#include "VHSCover.h"

#include <QtQml/qqmlregistration.h>

namespace quillmere {

/** The passages of a transcript, in order. Screen thread only; its controller owns it. */
class PassageList : public quillmere::CurrentRowModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Created by TranscriptController.")

public:
    enum Role { TextRole = Qt::UserRole };

    using CurrentRowModel::CurrentRowModel;

    const QStringList& passages() const { return m_passages; }
    void setPassages(QStringList passages);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    QStringList m_passages;
};

/**
 * State of the screen that shows a tape's transcript. A background thread splits the transcript into passages; HubAPI
 * refuses one of more than 16 MiB. Screen thread only; the screen creates and owns it; the hub, which is set once, must
 * outlive it.
 */
class TranscriptController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(quillmere::HubAPI* hub MEMBER m_hub NOTIFY hubChanged REQUIRED FINAL)
    // Changes after the screen has appeared have no effect.
    Q_PROPERTY(quillmere::Tape tape READ tape WRITE setTape FINAL)
    Q_PROPERTY(quillmere::VHSCover cover READ cover WRITE setCover NOTIFY coverChanged FINAL)

    Q_PROPERTY(QString caption READ caption NOTIFY coverChanged FINAL)
    Q_PROPERTY(QString title READ title NOTIFY coverChanged FINAL)
    /** Empty without a transcript, and if the hub sent no word count. */
    Q_PROPERTY(QString wordCount READ wordCount NOTIFY stateChanged FINAL)
    Q_PROPERTY(LoadState state READ state NOTIFY stateChanged FINAL)
    /** Message shown instead of a transcript in state `Empty`; else empty. */
    Q_PROPERTY(QString message READ message NOTIFY stateChanged FINAL)
    Q_PROPERTY(quillmere::PassageList* passages READ passages CONSTANT FINAL)

public:
    enum LoadState { Empty, Loading, Ready };
    Q_ENUM(LoadState)

    using QObject::QObject;

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
    /** One passage per paragraph; several if it is too long to be laid out at once. */
    PassageList* passages() { return &m_passages; }
    /** The thread that splits the transcript; public so that a test can keep it busy. */
    Worker& reflowWorker() { return m_reflow; }

    /** The screen was shown: fetches the transcript, without retries. */
    Q_INVOKABLE void appear();
    /** The screen was hidden: cancels the fetch. */
    Q_INVOKABLE void disappear();

Q_SIGNALS:
    void hubChanged();
    void coverChanged();
    void stateChanged();

private:
    QCoro::Task<> load();
    void setState(LoadState state, const QString& message = {});

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

} // namespace quillmere
