#include "CassettePrint.h"

#include "FittedText.h"
#include "ShelfCard.h"

#include <QPainter>

namespace {

VHSCover drawn(const VHSCover& cover, CassettePrint::Form form)
{
    VHSCover drawn;
    drawn.title = cover.title.left(FittedText::longest);
    drawn.genre = cover.genre.left(FittedText::longest);
    drawn.year = cover.year.left(FittedText::longest);
    drawn.runtime = cover.runtime;
    drawn.speed = cover.speed.left(FittedText::longest);
    drawn.rating.code = cover.rating.code.left(FittedText::longest);
    drawn.tagline = cover.tagline.left(FittedText::longest);
    drawn.hue = cover.hue;
    drawn.catalogNo = cover.catalogNo.left(FittedText::longest);
    drawn.barcode = cover.barcode;
    drawn.hasTranscript = form == CassettePrint::Form::ShelfCard && cover.hasTranscript;
    return drawn;
}

} // namespace

CassettePrint::CassettePrint(Form form, const VHSCover& cover, double width, QSize pixels)
    : form(form), cover(drawn(cover, form)), width(width), pixels(pixels)
{}

QImage CassettePrint::paint() const
{
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return image;
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
