#pragma once

class QPainter;

/**
 * The program's icon, drawn by the painters of the front screen: a television with colour bars, a shelf and a lit lamp.
 */
namespace quillmere::ApplicationIcon {

constexpr int side = 256; ///< points

/** Paints the icon into a square of size `side` with its top left corner at the origin. Needs a QGuiApplication. */
void paint(QPainter& painter);

} // namespace quillmere::ApplicationIcon
