#include "ShelfCard.h"

#include "FittedText.h"
#include "SnappedRect.h"
#include "StationPalette.h"
#include "Typography.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

// In units of the box, which is 320 wide.
constexpr int badgeSize = 16;
constexpr QSizeF badgePadding(8.96, 3.2);
constexpr double badgeFromTrailing = 17.6;
constexpr double badgeFromTop = 52.8;

constexpr double badgeOutline = 1.5; // points

void paintBadge(QPainter& painter, double unitsPerPoint)
{
    const FittedText text =
        FittedText::line(u"CC"_s, Typography::standard(badgeSize, QFont::Black), BoxFront::gridWidth, 1);
    const QSizeF size(text.width() + 2 * badgePadding.width(), text.height() + 2 * badgePadding.height());
    const QRectF badge(QPointF(BoxFront::gridWidth - badgeFromTrailing - size.width(), badgeFromTop), size);
    const double outline = badgeOutline * unitsPerPoint;
    const double half = outline / 2; // the outline is centred on the badge's edge
    const QRectF area = snappedRect(painter, badge.marginsAdded({half, half, half, half}));
    painter.fillRect(area, StationPalette::inkNavy());
    painter.fillRect(area.marginsRemoved({outline, outline, outline, outline}), StationPalette::amber());
    text.paint(painter, area.center() - QPointF(text.width(), text.height()) / 2, StationPalette::inkNavy());
}

} // namespace

void ShelfCard::paint(QPainter& painter) const
{
    BoxFront{cover, width}.paint(painter);
    if (!cover.hasTranscript)
        return;
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.scale(width / BoxFront::gridWidth, width / BoxFront::gridWidth);
    paintBadge(painter, BoxFront::gridWidth / width);
    painter.restore();
}

} // namespace quillmere
