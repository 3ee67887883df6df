#include "CassetteRenderer.h"

#include "FittedText.h"
#include "ShelfCard.h"

#include <QPainter>

#include <cmath>

namespace quillmere {

namespace {

/** A copy with only the fields that are painted, and no text longer than is painted. */
VHSCover paintedFields(const VHSCover& cover, CassetteRenderer::Form form)
{
    VHSCover fields;
    fields.title = cover.title.left(FittedText::maxLength);
    fields.genre = cover.genre.left(FittedText::maxLength);
    fields.year = cover.year.left(FittedText::maxLength);
    fields.runtime = cover.runtime;
    fields.speed = cover.speed.left(FittedText::maxLength);
    fields.rating.code = cover.rating.code.left(FittedText::maxLength);
    fields.tagline = cover.tagline.left(FittedText::maxLength);
    fields.hue = cover.hue;
    fields.catalogNo = cover.catalogNo.left(FittedText::maxLength);
    fields.barcode = cover.barcode;
    fields.hasTranscript = form == CassetteRenderer::Form::ShelfCard && cover.hasTranscript;
    return fields;
}

} // namespace

CassetteRenderer::CassetteRenderer(Form form, const VHSCover& cover, double width, QSize pixels)
    : form(form), cover(paintedFields(cover, form)), width(width), pixels(pixels)
{}

/** How far outline and bar code extend beyond the box; in whole pixels, so that the box starts on a whole pixel. */
QMargins CassetteRenderer::margins() const
{
    const BoxFront front{cover, width};
    const double pixelsPerPointX = pixels.width() / width;
    const double pixelsPerPointY = pixels.height() / front.size().height();
    const QRectF bounds = front.bounds();
    const auto roundedUp = [](double length) { return int(std::ceil(length)); };
    // The bar code is moved by up to half a pixel, to start on a whole one.
    return {roundedUp(-bounds.left() * pixelsPerPointX), roundedUp(-bounds.top() * pixelsPerPointY),
            roundedUp((bounds.right() - width) * pixelsPerPointX + 0.5),
            roundedUp((bounds.bottom() - front.size().height()) * pixelsPerPointY)};
}

CassettePicture CassetteRenderer::paint() const
{
    const QMargins extra = margins();
    CassettePicture picture{QImage(pixels.grownBy(extra), QImage::Format_ARGB32_Premultiplied),
                            QRect(QPoint(extra.left(), extra.top()), pixels)};
    if (picture.image.isNull())
        return picture;
    picture.image.fill(Qt::transparent);
    QPainter painter(&picture.image);
    painter.translate(picture.box.topLeft());
    // Two scales, so that the box fills its pixels exactly although its height is rounded.
    painter.scale(pixels.width() / width, pixels.height() / BoxFront::heightOf(width));
    if (form == Form::ShelfCard)
        ShelfCard{cover, width}.paint(painter);
    else
        BoxFront{cover, width}.paint(painter);
    return picture;
}

size_t qHash(const CassetteRenderer& renderer, size_t seed) noexcept
{
    return qHashMulti(seed, int(renderer.form), renderer.cover, renderer.width, renderer.pixels.width(),
                      renderer.pixels.height());
}

} // namespace quillmere
