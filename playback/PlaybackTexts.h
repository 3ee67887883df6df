#pragma once

#include "MediaTrack.h"
#include "VideoFailure.h"

#include <QString>

#include <optional>

/** What the player says: pure functions of what it knows. */

/** The time left, "-12:34"; both times are cut to whole seconds first, so that it changes together with the time played. */
QString remainingText(double position, double duration);

/** What the transport bar says of how it plays. */
inline const QString playingText = QStringLiteral("Playing");
inline const QString liveText = QStringLiteral("Live");
inline const QString pausedText = QStringLiteral("Paused");
inline const QString waitingText = QStringLiteral("Loading…");

/** "Fast forward 16×", "Rewind 8×"; `speed` is negative for backward. */
QString scrubbingText(int speed);

/** The choice of no track. */
inline const QString noTrackText = QStringLiteral("Off");

/** A track as a choice: its own title, else its language in English, else "Track 3". */
QString trackText(const MediaTrack& track);

/** The sentence for the viewer; none where the cause is not known. */
QString failureText(const std::optional<VideoFailure>& failure);
