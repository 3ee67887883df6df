#pragma once

#include "VHSCover.h"

#include <QImage>
#include <QMargins>
#include <QSize>

namespace quillmere {

/** The painted image of a cassette. A value; any thread. */
struct CassettePicture
{
    QImage image; ///< null if memory allocation failed
    QRect box;    ///< the box within the image; the outline and a long bar code extend beyond it
};

/** Paints one cassette at one size. Also the cache key: equal renderers paint equal pictures. A value; any thread. */
struct CassetteRenderer
{
    enum class Form { BoxFront, ShelfCard };

    CassetteRenderer() = default;
    /** Copies only the fields of `cover` that are painted, so that others do not affect equality. */
    CassetteRenderer(Form form, const VHSCover& cover, double width, QSize pixels);

    Form form = Form::BoxFront;
    VHSCover cover;
    double width = 0; ///< of the box, in points
    QSize pixels;     ///< size of the box in device pixels

    bool operator==(const CassetteRenderer&) const = default;

    CassettePicture paint() const;

private:
    QMargins margins() const;
};

size_t qHash(const CassetteRenderer& renderer, size_t seed = 0) noexcept;

} // namespace quillmere
