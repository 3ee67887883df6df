#include "CassettePrint.h"

#include "FittedText.h"
#include "ShelfCard.h"

#include <QPainter>

#include <cmath>

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

/** What reaches beyond the box, in whole pixels; so it stands in its picture on whole ones, whatever does. */
QMargins CassettePrint::margins() const
{
    const BoxFront front{cover, width};
    const double across = pixels.width() / width;
    const double along = pixels.height() / front.size().height();
    const QRectF bounds = front.bounds();
    const auto whole = [](double reach) { return int(std::ceil(reach)); };
    // Bar codes are moved by up to half a pixel, to begin on a whole one.
    return {whole(-bounds.left() * across), whole(-bounds.top() * along),
            whole((bounds.right() - width) * across + 0.5), whole((bounds.bottom() - front.size().height()) * along)};
}

CassettePicture CassettePrint::paint() const
{
    const QMargins beyond = margins();
    CassettePicture picture{QImage(pixels.grownBy(beyond), QImage::Format_ARGB32_Premultiplied),
                            QRect(QPoint(beyond.left(), beyond.top()), pixels)};
    if (picture.image.isNull())
        return picture;
    picture.image.fill(Qt::transparent);
    QPainter painter(&picture.image);
    painter.translate(picture.box.topLeft());
    // The box is filled to its edges, although a height of whole pixels is not quite its proportion.
    painter.scale(pixels.width() / width, pixels.height() / BoxFront::heightOf(width));
    if (form == Form::ShelfCard)
        ShelfCard{cover, width}.paint(painter);
    else
        BoxFront{cover, width}.paint(painter);
    return picture;
}

size_t qHash(const CassettePrint& print, size_t seed) noexcept
{
    return qHashMulti(seed, int(print.form), print.cover, print.width, print.pixels.width(), print.pixels.height());
}
