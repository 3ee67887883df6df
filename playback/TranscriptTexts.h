#pragma once

#include "VHSCover.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

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

    static QString pulling();
    static QString backToTheTape();

    /** The line above the title, in capitals. */
    static QString caption(const VHSCover& cover);

    /** "12,408 words"; empty below 1. */
    static QString wordCount(qint64 words);

    static QString noneHarvested();

    /** `reason` is a message for the viewer; it may be empty. */
    static QString outOfReach(const QString& reason);
};
