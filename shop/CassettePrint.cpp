#include "CassettePrint.h"

#include "ShelfCard.h"

#include <QPainter>

QImage CassettePrint::paint() const
{
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    // The picture is filled to its edges, although a height of whole pixels is not quite the box's proportion.
    painter.scale(pixels.width() / width, pixels.height() / BoxFront::heightOf(width));
    if (form == Form::ShelfCard)
        ShelfCard{cover, width}.paint(painter);
    else
        BoxFront{cover, width}.paint(painter);
    return image;
}

size_t qHash(const CassettePrint& print, size_t seed) noexcept
{
    return qHashMulti(seed, int(print.form), print.cover, print.width, print.pixels.width(), print.pixels.height());
}
