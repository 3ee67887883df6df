#include "Picture.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace quillmere::picture {

namespace {

constexpr QSizeF canvas(1920, 1080); // points
constexpr int stripBits = 12;
constexpr double stripMiddle = 1080 - 45; // points; the bars are in the lowest 60 of the recording's 720 rows
constexpr int darkest = 70;               // of 255; up to this value a pixel is black, in spite of compression
constexpr int lightest = 185;             // from this value on a pixel is white

bool isLike(QRgb one, QRgb other, int tolerance)
{
    return std::abs(qRed(one) - qRed(other)) <= tolerance && std::abs(qGreen(one) - qGreen(other)) <= tolerance &&
           std::abs(qBlue(one) - qBlue(other)) <= tolerance;
}

template<typename Test>
double share(const QRect& area, const Test& matches)
{
    if (area.isEmpty())
        return 0;
    qint64 count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x)
            count += matches(x, y) ? 1 : 0;
    }
    return double(count) / (double(area.width()) * area.height());
}

const QRgb* row(const QImage& picture, int y)
{
    return reinterpret_cast<const QRgb*>(picture.constScanLine(y));
}

} // namespace

QRect pixels(const QSize& screen, const QRectF& points)
{
    const double scale = std::min(screen.width() / canvas.width(), screen.height() / canvas.height());
    const QPointF corner((screen.width() - canvas.width() * scale) / 2,
                         (screen.height() - canvas.height() * scale) / 2);
    const QRectF scaled(corner + points.topLeft() * scale, points.size() * scale);
    return scaled.toAlignedRect().intersected(QRect(QPoint(), screen));
}

QColor colourAt(const QImage& picture, const QPointF& point)
{
    const QRect area = pixels(picture.size(), QRectF(point, QSizeF(0.5, 0.5)));
    return area.isEmpty() ? QColor() : picture.pixelColor(area.topLeft());
}

bool isLike(const QColor& one, const QColor& other, int tolerance)
{
    return isLike(one.rgb(), other.rgb(), tolerance);
}

double shareOf(const QImage& picture, const QRectF& points, const QColor& colour, int tolerance)
{
    const QRgb wanted = colour.rgb();
    return share(pixels(picture.size(), points),
                 [&](int x, int y) { return isLike(row(picture, y)[x], wanted, tolerance); });
}

double difference(const QImage& one, const QImage& other, const QRectF& points, int tolerance)
{
    if (one.size() != other.size())
        return 1;
    return share(pixels(one.size(), points),
                 [&](int x, int y) { return !isLike(row(one, y)[x], row(other, y)[x], tolerance); });
}

QRect whereDifferent(const QImage& one, const QImage& other, int tolerance)
{
    QRect area;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            if (!isLike(row(one, y)[x], row(other, y)[x], tolerance))
                area |= QRect(x, y, 1, 1);
        }
    }
    return area;
}

std::optional<int> recordedSeconds(const QImage& picture)
{
    int seconds = 0;
    for (int bit = 0; bit < stripBits; ++bit) {
        const QPointF middle((bit + 0.5) * canvas.width() / stripBits, stripMiddle);
        const QColor colour = colourAt(picture, middle);
        const auto [low, high] = std::minmax({colour.red(), colour.green(), colour.blue()});
        if (high > darkest && low < lightest)
            return std::nullopt;
        seconds = seconds * 2 + (low >= lightest ? 1 : 0);
    }
    return seconds;
}

} // namespace quillmere::picture
