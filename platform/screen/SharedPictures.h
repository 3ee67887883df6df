#pragma once

#include "PixelPlacement.h"

#include <QImage>
#include <QString>

#include <functional>
#include <memory>

/**
 * Pictures that several items show: each is painted once, by whoever needs it first, and stays as long as anyone holds
 * it. The latest small ones stay longer, as a shadow comes and goes with the focus. Any thread.
 */
class SharedPictures
{
public:
    using Picture = std::shared_ptr<const QImage>;

    struct Subject
    {
        QString look; ///< in words
        QSizeF size;  ///< points
        PixelPlacement placement;

        bool operator==(const Subject&) const = default;
    };

    /** Bytes of pictures that stay although nobody shows them: the shadows of two screens of 1080 lines. */
    static constexpr qint64 keptUnshown = 4 * 1024 * 1024;
    /** Bytes of the largest that stays so: no background of a whole display. */
    static constexpr qint64 largestUnshown = 2 * 1024 * 1024;

    static Picture get(const Subject& subject, const std::function<QImage()>& paint);
};
