#pragma once

#include "MediaTrack.h"
#include "VideoFailure.h"

#include <QString>

#include <optional>

/** Texts of the player's controls. Pure functions. */

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
