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

    /** Bytes of pictures that stay although nobody shows them: a few shadows, but no background of a whole display. */
    static constexpr qint64 keptUnshown = 3 * 1024 * 1024;

    static Picture get(const Subject& subject, const std::function<QImage()>& paint);
};
