#pragma once

#include <QFont>
#include <QImage>
#include <QList>
#include <QString>

#include <stop_token>

namespace quillmere {

/** Picture of the visible part of the ticker line: its leftmost two ticker widths, in device pixels. A value. */
struct TickerPicture
{
    double period = 0;   ///< of its motion, in seconds
    int baseline = 0;    ///< pixels below the top
    QList<QImage> tiles; ///< side by side, from the left end of the line
};

/** Paints the ticker line for a text, width and scale. Equal renderers paint equal pictures. A value; any thread. */
struct TickerRenderer
{
    static constexpr int maximumTileWidth = 4096; ///< pixels; every GPU supports textures of this width

    QString text;     ///< the line is this text, the separator, and this text again
    double width = 0; ///< of the ticker, in points
    double scale = 0; ///< device pixels per point

    bool operator==(const TickerRenderer&) const = default;

    static QFont font();

    /**
     * Lays out only the visible part of the line, however long the line is. If stopped, returns early, with no tiles or
     * only some.
     */
    TickerPicture paint(const std::stop_token& stop = {}) const;
};

} // namespace quillmere
