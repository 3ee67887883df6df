#include "ShopList.h"

#include "Dressing.h"
#include "LivingRoom.h"
#include "Picture.h"
#include "RecordDecoder.h"
#include "SampleHub.h"
#include "TapePage.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace shoplist {

namespace {

const QColor cream(247, 244, 236);
constexpr QSizeF row(1600, 62); // points
constexpr double listLeft = 160;
constexpr double beforeText = 14; // points into a row: past its rounded corner, left of its text

} // namespace

std::optional<QRectF> focusedRow(const QImage& picture)
{
    constexpr int step = 2; // points
    int top = -1;
    for (int y = 0; y < 1080; y += step) {
        const bool isCream = picture::isLike(picture::colourAt(picture, {listLeft + beforeText, double(y)}), cream, 3);
        if (isCream && top < 0)
            top = y;
        if (!isCream && top >= 0) {
            if (y - top >= row.height() - 2 * step)
                return QRectF(QPointF(listLeft, top), row);
            top = -1;
        }
    }
    return std::nullopt;
}

QString focusedText(LivingRoom& room)
{
    const QImage picture = room.screen().look();
    const auto focused = focusedRow(picture);
    return focused ? room.reader().read(picture, focused->adjusted(16, 4, -16, -4)) : QString();
}

int placeOf(SampleHub& hub, const QString& title)
{
    const auto page = decodeRecord<TapePage>(hub.fetchBody(u"/api/tv/tapes?page=1&per_page=200"_s));
    int place = 0;
    for (const Shelf& shelf : buildShelves(page ? page->items : QList<Tape>())) {
        for (const VHSCover& cover : shelf.covers) {
            if (cover.title.contains(title))
                return place;
            ++place;
        }
    }
    return -1;
}

bool open(LivingRoom& room)
{
    if (!room.waitForText(area::rightDoor, u"every one plays right here"_s))
        return false;
    room.screen().waitUntilSettled(200ms, 2s);
    room.pressAndSee(u"right"_s);
    room.screen().waitUntilSettled(200ms, 2s);
    room.press(u"select"_s);
    return room.screen().waitUntil([](const QImage& picture) { return focusedRow(picture).has_value(); }, 5s);
}

} // namespace shoplist
