#pragma once

#include <QFont>
#include <QImage>
#include <QList>
#include <QString>

#include <stop_token>

/** What is seen of the ticker's line: its first two widths, in device pixels. A value. */
struct TickerPicture
{
    double period = 0;   ///< of its crawl, in seconds
    int baseline = 0;    ///< pixels below the top
    QList<QImage> tiles; ///< side by side from the line's left edge
};

/** What the ticker's line says, and how large; two equal ones give the same picture. A value, any thread. */
struct TickerPrint
{
    static constexpr int widestTile = 4096; ///< pixels; every display takes such a texture

    QString text;     ///< the line is this, the separator and this again
    double width = 0; ///< of the space that the line crawls through, in points
    double scale = 0; ///< device pixels a point

    bool operator==(const TickerPrint&) const = default;

    static QFont font();

    /** Lays out no more of the line than is seen, whatever its length; gives up early, without tiles, when stopped. */
    TickerPicture paint(const std::stop_token& stop = {}) const;
};
