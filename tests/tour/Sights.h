#pragma once

#include "State.h"

#include <QColor>

/** The things that prove a state. Areas are in points of the 1920 x 1080 canvas. */
namespace tour {

Sight reads(const QRectF& area, const QString& text);
Sight readsNot(const QRectF& area, const QString& text);
/** At least `share` of the area is in that colour. */
Sight shows(const QString& what, const QRectF& area, const QColor& colour, double share);
Sight showsNot(const QString& what, const QRectF& area, const QColor& colour, double share);
/** The area is as it was when that state's picture was taken. */
Sight looksAsIn(const QString& state, const QRectF& area);
Sight differsFrom(const QString& state, const QRectF& area, double share = 0.002);
/** A sample recording fills the screen. */
Sight plays();
/** It has played on by at least `seconds` since that state's picture was taken. */
Sight playsOnFrom(const QString& state, int seconds);

} // namespace tour
