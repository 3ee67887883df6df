#pragma once

#include "FactList.h"
#include "VHSCover.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace quillmere {

/** Texts of a tape's screen. Stateless: any thread; independent of the locale. */
class TapeDetailTexts : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString startOver READ startOver CONSTANT FINAL)
    Q_PROPERTY(QString readTranscript READ readTranscript CONSTANT FINAL)

public:
    using QObject::QObject;

    /** Text of the first button; `resumePosition` is in seconds, 0 for the beginning. */
    static QString play(double resumePosition);
    static QString startOver() { return QStringLiteral("Start over"); }
    static QString readTranscript() { return QStringLiteral("Read the transcript"); }

    /** These may fill many lines; cut only at a length that nobody reads to the end. */
    static QString title(const VHSCover& cover);
    static QString synopsis(const VHSCover& cover);

    static QString runtimeBadge(const VHSCover& cover);
    static QString speedBadge(const VHSCover& cover);

    /** Empty if the recording has no agenda. */
    static QString agendaBadge(const VHSCover& cover);

    static QString tagline(const VHSCover& cover);
    static QString catalogueLine(const VHSCover& cover);

    /** "500 MB · self-hosted"; in GB with one decimal from 1 GiB. */
    static QString size(qint64 bytes);

    /** The titles of the first three documents, and the number of others; empty without documents. */
    static QString documents(const QList<TapeDocument>& documents);

    /** The facts about a tape; `cover` is its cover. Optional facts that are empty are left out. */
    static QList<TapeFact> facts(const Tape& tape, const VHSCover& cover);
};

} // namespace quillmere
