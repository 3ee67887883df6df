#pragma once

#include <QImage>
#include <QRectF>

#include <optional>

/** Measurements of screen pictures. Areas and points are in points of the 1920 x 1080 canvas. */
namespace quillmere::picture {

/** Converts an area of the canvas to pixels. The canvas is scaled uniformly and centred in the picture. */
QRect pixels(const QSize& screen, const QRectF& points);

QColor colourAt(const QImage& picture, const QPointF& point);

/** Whether every colour channel of the two differs by at most `tolerance` (of 255). */
bool isLike(const QColor& one, const QColor& other, int tolerance);

/** Share, 0 to 1, of the area's pixels that match `colour`. */
double shareOf(const QImage& picture, const QRectF& points, const QColor& colour, int tolerance);

/** Share, 0 to 1, of the area's pixels in which two pictures of one size differ by more than `tolerance`. */
double difference(const QImage& one, const QImage& other, const QRectF& points, int tolerance = 8);

/** The bounding rectangle, in pixels, of the differences between two pictures of one size; empty if there are none. */
QRect whereDifferent(const QImage& one, const QImage& other, int tolerance);

/**
 * The seconds that a sample recording on the full screen shows as bars along its bottom edge: twelve bits, the highest
 * on the left, white is 1. Returns nullopt if a bar is neither black nor white.
 */
std::optional<int> recordedSeconds(const QImage& picture);

} // namespace quillmere::picture
