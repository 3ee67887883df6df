#pragma once

#include "State.h"

#include <QColor>

/** Checks that prove a state. Areas are in points of the 1920 x 1080 canvas. */
namespace quillmere::tour {

Check hasText(const QRectF& area, const QString& text);
Check hasNoText(const QRectF& area, const QString& text);
/** At least `share` (0 to 1) of the area has this colour. */
Check hasColour(const QString& what, const QRectF& area, const QColor& colour, double share);
Check hasNoColour(const QString& what, const QRectF& area, const QColor& colour, double share);
/** The area equals that in the picture of another state. */
Check equalsPictureOf(const QString& state, const QRectF& area);
Check differsFromPictureOf(const QString& state, const QRectF& area, double share = 0.002);
/** A sample recording plays on the full screen. */
Check isPlaying();
/** The recording has advanced by at least `seconds` since the picture of another state. */
Check hasPlayedSince(const QString& state, int seconds);

} // namespace quillmere::tour
