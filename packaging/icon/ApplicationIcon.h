#pragma once

class QPainter;

/** The program's icon, made of the front screen's own art: a television in veneer, on standby, its lamp lit. */
namespace ApplicationIcon {

constexpr int side = 256; ///< points

/** Paints the icon into a square of `side` with its top left corner at the origin. Needs an application object. */
void paint(QPainter& painter);

} // namespace ApplicationIcon
