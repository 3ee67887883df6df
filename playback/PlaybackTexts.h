#pragma once

#include "MediaTrack.h"
#include "MetadataItem.h"
#include "VHSCover.h"
#include "VideoFailure.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace quillmere {

/** Texts of the failure panel, and names of the rows of tracks in the information panel. Any thread. */
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

// Texts of the player's controls, and of its metadata, as pure functions.

/**
 * The remaining time, "-12:34". Both arguments are rounded down to whole seconds first, so that it changes at the same
 * moment as the elapsed time.
 */
QString remainingText(double position, double duration);

/** Player states in the transport bar. */
inline const QString playingText = QStringLiteral("Playing");
inline const QString liveText = QStringLiteral("Live");
inline const QString pausedText = QStringLiteral("Paused");
inline const QString waitingText = QStringLiteral("Loading…");

/** "Fast forward 16×", "Rewind 8×"; `speed` is negative for backward. */
QString scrubbingText(int speed);

/** Title of the choice that turns subtitles off. */
inline const QString noTrackText = QStringLiteral("Off");

/** Title of a track: its own title, else its language in English, else "Track 3". */
QString trackText(const MediaTrack& track);

/** Message for the viewer; empty if the cause is unknown. */
QString failureText(const std::optional<VideoFailure>& failure);

/** The now-playing metadata of a cassette, in the order in which it is shown. Empty values are left out. */
QList<MetadataItem> metadataItems(const VHSCover& cover);

} // namespace quillmere
