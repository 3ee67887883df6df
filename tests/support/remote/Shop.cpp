#include "Shop.h"

#include "Dressing.h"
#include "LivingRoom.h"
#include "RecordDecoder.h"
#include "SampleHub.h"
#include "TapePage.h"

#include <optional>
#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace shop {

namespace {

/** Presses a button `count` times without waiting: the program takes them in its own time. */
void pressAll(LivingRoom& room, const QString& button, int count)
{
    for (int i = 0; i < count; ++i)
        room.press(button);
}

template<typename Fits>
std::optional<Place> firstPlace(SampleHub& hub, const Fits& fits)
{
    Place place{0, 0};
    for (const Shelf& shelf : shelves(hub)) {
        place.column = 0;
        for (const VHSCover& cover : shelf.covers) {
            if (fits(cover))
                return place;
            ++place.column;
        }
        ++place.shelf;
    }
    return std::nullopt;
}

} // namespace

QList<Shelf> shelves(SampleHub& hub)
{
    const auto page = decodeRecord<TapePage>(hub.fetchBody(u"/api/tv/tapes?page=1&per_page=200"_s));
    return buildShelves(page ? page->items : QList<Tape>());
}

Place placeOf(SampleHub& hub, const QString& title)
{
    const auto place = firstPlace(hub, [&](const VHSCover& cover) { return cover.title.contains(title); });
    if (!place)
        throw std::runtime_error(("No shelf has the tape \""_L1 + title + "\"."_L1).toStdString());
    return *place;
}

Place placeOf(SampleHub& hub, qint64 tape)
{
    const auto place = firstPlace(hub, [tape](const VHSCover& cover) { return cover.id == tape; });
    if (!place)
        throw std::runtime_error("No shelf has the tape " + std::to_string(tape) + '.');
    return *place;
}

bool enter(LivingRoom& room)
{
    if (!room.waitForText(area::rightDoor, u"every one plays right here"_s))
        return false;
    room.screen().waitUntilSettled(200ms, 2s);
    room.pressAndSee(u"right"_s);
    room.screen().waitUntilSettled(200ms, 2s);
    room.press(u"select"_s);
    return true;
}

bool open(LivingRoom& room)
{
    return enter(room) && room.waitForText(header, u"tapes in stock — pull one off the shelf"_s, 5s);
}

void walk(LivingRoom& room, Place from, Place to)
{
    pressAll(room, u"left"_s, from.column);
    pressAll(room, to.shelf > from.shelf ? u"down"_s : u"up"_s, std::abs(to.shelf - from.shelf));
    pressAll(room, u"right"_s, to.column);
    room.screen().waitUntilSettled(300ms, 5s);
}

} // namespace shop
