#pragma once

#include <QImage>
#include <QRectF>

#include <optional>

/** What can be told of a picture of the screen. Areas and places are in points of the 1920 x 1080 canvas. */
namespace picture {

/** The pixels of an area of the canvas, which is scaled by one factor and centred in the picture. */
QRect pixels(const QSize& screen, const QRectF& points);

QColor colourAt(const QImage& picture, const QPointF& point);

/** Whether no channel of the two differs by more than `tolerance` of 255. */
bool isLike(const QColor& one, const QColor& other, int tolerance);

/** Share, 0 to 1, of the area's pixels that are like `colour`. */
double shareOf(const QImage& picture, const QRectF& points, const QColor& colour, int tolerance);

/** Share, 0 to 1, of the area's pixels in which two pictures of one size differ by more than `tolerance`. */
double difference(const QImage& one, const QImage& other, const QRectF& points, int tolerance = 8);

/** The least rectangle, in pixels, around what differs between two pictures of one size; empty when nothing does. */
QRect whereDifferent(const QImage& one, const QImage& other, int tolerance);

/**
 * The seconds that a sample recording, shown on the full screen, writes in blocks along its bottom edge: twelve bits,
 * the highest on the left, white is 1. Nothing when a block is neither black nor white.
 */
std::optional<int> recordedSeconds(const QImage& picture);

} // namespace picture
