#pragma once

#include "PixelPlacement.h"

#include <QImage>
#include <QString>

#include <functional>
#include <memory>

namespace quillmere {

/**
 * Cache of images that several items show. Each is painted by the first item that needs it and kept while an item uses
 * it. The most recently used small ones are kept longer, because a card's shadow comes and goes with the focus. Any
 * thread.
 */
class SharedPictures
{
public:
    using Picture = std::shared_ptr<const QImage>;

    struct Key
    {
        QString cacheKey; ///< describes the art; see PaintedItem::cacheKey
        QSizeF size;      ///< points
        PixelPlacement placement;

        bool operator==(const Key&) const = default;
    };

    /** Most bytes of images kept without a user: the shadows of two screens of 1080 lines. */
    static constexpr qint64 maxUnusedBytes = 4 * 1024 * 1024;
    /** Most bytes of one such image; excludes backgrounds of a whole display. */
    static constexpr qint64 maxUnusedPictureBytes = 2 * 1024 * 1024;

    static Picture get(const Key& key, const std::function<QImage()>& paint);
};

} // namespace quillmere
