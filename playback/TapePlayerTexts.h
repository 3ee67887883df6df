#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

/** Texts of the tape player's screen: for a tape that does not play, and names of the panel's rows. Any thread. */
class TapePlayerTexts : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString tracking READ tracking CONSTANT FINAL)
    Q_PROPERTY(QString backToTheShelves READ backToTheShelves CONSTANT FINAL)
    Q_PROPERTY(QString sound READ sound CONSTANT FINAL)
    Q_PROPERTY(QString subtitles READ subtitles CONSTANT FINAL)

public:
    using QObject::QObject;

    static QString tracking() { return QStringLiteral("TRACKING"); }
    static QString backToTheShelves() { return QStringLiteral("Back to the shelves"); }
    static QString sound() { return QStringLiteral("Sound"); }
    static QString subtitles() { return QStringLiteral("Subtitles"); }

    static QString noPlayableCopy() { return QStringLiteral("This tape has no playable copy on the shelf."); }

    /** Message for a failure of unknown cause. */
    static QString wouldNotPlay() { return QStringLiteral("The tape wouldn't play. It may still be being archived."); }
};
