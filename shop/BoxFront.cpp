#include "BoxFront.h"

#include "Barcode.h"
#include "CoverArt.h"
#include "FittedText.h"
#include "SnappedRect.h"
#include "StationPalette.h"
#include "Typography.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

constexpr double unbounded = 1e5;

// Layout, in units of the box.
constexpr double outlineWidth = 3;
constexpr double miterLimit = 10;
constexpr double padding = 10;
constexpr double spacing = 6;
constexpr QRectF face(0, 0, BoxFront::gridWidth, BoxFront::gridHeight);
constexpr QRectF inside(padding, padding, BoxFront::gridWidth - 2 * padding, BoxFront::gridHeight - 2 * padding);

constexpr QRectF band(inside.left(), inside.top(), inside.width(), 34);
constexpr int brandSize = 17;
constexpr double brandSpacing = 1.5;
constexpr double textInset = 10; // of the brand band and the genre strip

constexpr QRectF scene(inside.left(), band.bottom() + spacing, inside.width(), 250);

constexpr QRectF strip(inside.left(), scene.bottom() + spacing, inside.width(), 24);
constexpr int genreSize = 13;
constexpr double genreSpacing = 2;
constexpr int yearSize = 11;
constexpr double yearGap = 4;
constexpr double minStripScale = 0.6; // fraction of the font size, like the other scales below

constexpr double titleTop = strip.bottom() + spacing;
constexpr int titleSize = 26;
constexpr double minTitleScale = 0.5;
constexpr int taglineSize = 12;
constexpr double taglineGap = 2;
constexpr double taglineOpacity = 0.7;
constexpr double minTaglineScale = 0.5;

constexpr QSizeF barcodeFrame(120, 26);
constexpr double catalogGap = 4;
constexpr int catalogSize = 10;
constexpr int ratingSize = 11;
constexpr double minBottomScale = 0.6;

void paintFace(QPainter& painter)
{
    QPen pen(StationPalette::inkNavy(), outlineWidth, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
    pen.setMiterLimit(miterLimit);
    painter.setPen(pen);
    painter.setBrush(StationPalette::cream());
    painter.drawRoundedRect(face, BoxFront::cornerRadius, BoxFront::cornerRadius);
    painter.setPen(Qt::NoPen);
}

void paintBand(QPainter& painter)
{
    painter.fillRect(snappedRect(painter, band), StationPalette::inkNavy());
    const FittedText brand = FittedText::line(
        u"REWINDERY"_s, Typography::standard(brandSize, QFont::Black, brandSpacing), band.width() - 2 * textInset, 1);
    brand.paint(painter, {band.left() + textInset, band.center().y() - brand.height() / 2}, StationPalette::amber());
}

void paintScene(QPainter& painter, const VHSCover& cover)
{
    const QRectF area = snappedRect(painter, scene);
    painter.save();
    painter.translate(area.topLeft());
    CoverArt{cover, 1}.paint(painter, area.size());
    painter.restore();
}

void paintStrip(QPainter& painter, const VHSCover& cover)
{
    painter.fillRect(snappedRect(painter, strip), StationPalette::teal());
    const QFont genreFont = Typography::standard(genreSize, QFont::Bold, genreSpacing);
    const QFont yearFont = Typography::standard(yearSize, QFont::Bold);
    const double availableWidth = strip.width() - 2 * textInset - yearGap;
    const double genreWidth = FittedText::line(cover.genre, genreFont, unbounded, 1).width();
    const double yearWidth = FittedText::line(cover.year, yearFont, unbounded, 1).width();
    // Both shrink by the same factor. If they are still too wide, the genre is elided.
    const double factor = std::min(1.0, availableWidth / (genreWidth + yearWidth));
    const FittedText year =
        FittedText::line(cover.year, yearFont, std::min(yearWidth * factor, availableWidth), minStripScale);
    const FittedText genre = FittedText::line(cover.genre, genreFont, availableWidth - year.width(), minStripScale);
    const double left = strip.left() + textInset;
    const double top = strip.center().y() - genre.height() / 2;
    genre.paint(painter, {left, top}, Qt::white);
    year.paint(painter, {left + genre.width() + yearGap, top + genre.ascent() - year.ascent()}, Qt::white);
}

void paintTitleBlock(QPainter& painter, const VHSCover& cover, double bottom)
{
    const QFont taglineFont = Typography::serif(taglineSize, QFont::Normal, true);
    // The tagline gets at least one line at full size, and all the height that the title does not need.
    const double taglineLine = cover.tagline.isEmpty() ? 0 : QFontMetricsF(taglineFont).height() + taglineGap;
    const QSizeF available(inside.width(), bottom - titleTop);
    const FittedText title =
        FittedText::block(cover.title, Typography::standard(titleSize, QFont::Black),
                          QSizeF(available.width(), available.height() - taglineLine), minTitleScale);
    title.paint(painter, {inside.left(), titleTop}, StationPalette::inkNavy());
    const double titleHeight = title.height() + taglineGap;
    const FittedText tagline = FittedText::block(
        cover.tagline, taglineFont, QSizeF(available.width(), available.height() - titleHeight), minTaglineScale);
    tagline.paint(painter, {inside.left(), titleTop + titleHeight},
                  StationPalette::faded(StationPalette::inkNavy(), taglineOpacity));
}

QFont catalogFont()
{
    return Typography::monospaced(catalogSize);
}

QPointF barcodeTopLeft()
{
    return {inside.right() - barcodeFrame.width(),
            inside.bottom() - QFontMetricsF(catalogFont()).height() - catalogGap - barcodeFrame.height()};
}

/** Returns the top of the row, in units of the box. */
double paintBottomRow(QPainter& painter, const VHSCover& cover, double unitsPerPoint)
{
    const FittedText catalogNo = FittedText::line(cover.catalogNo, catalogFont(), barcodeFrame.width(), minBottomScale);
    const QPointF topLeft = barcodeTopLeft();
    catalogNo.paint(
        painter, {topLeft.x() + (barcodeFrame.width() - catalogNo.width()) / 2, inside.bottom() - catalogNo.height()},
        StationPalette::inkNavy());

    const QString ratingText =
        u"RATED %1 · %2 MIN · %3"_s.arg(cover.rating.code, QString::number(cover.runtime), cover.speed);
    const FittedText rating = FittedText::line(ratingText, Typography::standard(ratingSize, QFont::Bold),
                                               topLeft.x() - spacing - inside.left(), minBottomScale);
    rating.paint(painter, {inside.left(), inside.bottom() - rating.height()}, StationPalette::inkNavy());

    painter.save();
    painter.translate(snappedRect(painter, QRectF(topLeft, barcodeFrame)).topLeft());
    painter.scale(unitsPerPoint, unitsPerPoint);
    Barcode{cover.barcode}.paint(painter, barcodeFrame / unitsPerPoint);
    painter.restore();
    return topLeft.y();
}

} // namespace

QRectF BoxFront::bounds() const
{
    const double pointsPerUnit = width / gridWidth;
    constexpr double half = outlineWidth / 2;
    const QRectF box = face.marginsAdded({half, half, half, half});
    const double barcode = Barcode{cover.barcode}.extent(barcodeFrame.width() * pointsPerUnit);
    return QRectF(box.topLeft() * pointsPerUnit, box.size() * pointsPerUnit)
        .united(QRectF(barcodeTopLeft() * pointsPerUnit, QSizeF(barcode, barcodeFrame.height() * pointsPerUnit)));
}

void BoxFront::paint(QPainter& painter) const
{
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.scale(width / gridWidth, width / gridWidth);
    paintFace(painter);
    paintBand(painter);
    paintScene(painter, cover);
    paintStrip(painter, cover);
    const double bottomRowTop = paintBottomRow(painter, cover, gridWidth / width);
    paintTitleBlock(painter, cover, bottomRowTop - spacing);
    painter.restore();
}

} // namespace quillmere
