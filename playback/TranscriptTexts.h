#pragma once

#include "VHSCover.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace quillmere {

/** Texts of the transcript's screen around the transcript. Stateless: any thread. */
class TranscriptTexts : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString pulling READ pulling CONSTANT FINAL)
    Q_PROPERTY(QString backToTheTape READ backToTheTape CONSTANT FINAL)

public:
    using QObject::QObject;

    static QString pulling() { return QStringLiteral("Pulling the transcript…"); }
    static QString backToTheTape() { return QStringLiteral("Back to the tape"); }

    /** The line above the title, in capitals. */
    static QString caption(const VHSCover& cover);

    /** "12,408 words"; empty below 1. */
    static QString wordCount(qint64 words);

    static QString noneHarvested() { return QStringLiteral("No transcript has been harvested for this tape yet."); }

    /** Message for a failed request. `reason` is a sentence for the viewer; it may be empty. */
    static QString outOfReach(const QString& reason);
};

} // namespace quillmere
