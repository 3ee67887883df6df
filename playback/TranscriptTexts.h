#pragma once

#include "VHSCover.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

/** What the transcript's screen says around the transcript. Stateless: any thread. */
class TranscriptTexts : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString pulling READ pulling CONSTANT FINAL)
    Q_PROPERTY(QString backToTheTape READ backToTheTape CONSTANT FINAL)

public:
    using QObject::QObject;

    static QString pulling();
    static QString backToTheTape();

    /** The line over the title, in capitals. */
    static QString caption(const VHSCover& cover);

    /** "12,408 words"; nothing when none are known. */
    static QString wordCount(qint64 words);

    static QString noneHarvested();

    /** `reason`, which may be empty, is the viewer's. */
    static QString outOfReach(const QString& reason);
};
