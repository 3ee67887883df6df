#include "Shop.h"

#include "Dressing.h"
#include "RecordDecoder.h"
#include "SampleHub.h"
#include "SimulatedViewer.h"
#include "Tape.h"

#include <optional>
#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere::shop {

namespace {

/** Presses a button `count` times without waiting for the program to react. */
void pressAll(SimulatedViewer& viewer, const QString& button, int count)
{
    for (int i = 0; i < count; ++i)
        viewer.press(button);
}

template<typename Matches>
std::optional<Position> firstPosition(SampleHub& hub, const Matches& matches)
{
    Position position{0, 0};
    for (const Shelf& shelf : shelves(hub)) {
        position.column = 0;
        for (const VHSCover& cover : shelf.covers) {
            if (matches(cover))
                return position;
            ++position.column;
        }
        ++position.shelf;
    }
    return std::nullopt;
}

} // namespace

QList<Shelf> shelves(SampleHub& hub)
{
    const auto page = decodeRecord<TapePage>(hub.fetchBody(u"/api/tv/tapes?page=1&per_page=200"_s));
    return buildShelves(page ? page->items : QList<Tape>());
}

Position positionOf(SampleHub& hub, const QString& title)
{
    const auto position = firstPosition(hub, [&](const VHSCover& cover) { return cover.title.contains(title); });
    if (!position)
        throw std::runtime_error(("No shelf has the tape \""_L1 + title + "\"."_L1).toStdString());
    return *position;
}

Position positionOf(SampleHub& hub, qint64 tape)
{
    const auto position = firstPosition(hub, [tape](const VHSCover& cover) { return cover.id == tape; });
    if (!position)
        throw std::runtime_error("No shelf has the tape " + std::to_string(tape) + '.');
    return *position;
}

bool selectShop(SimulatedViewer& viewer)
{
    if (!viewer.waitForText(area::rightDoor, u"every one plays right here"_s))
        return false;
    viewer.screen().waitUntilStill(200ms, 2s);
    viewer.pressAndWaitForChange(u"right"_s);
    viewer.screen().waitUntilStill(200ms, 2s);
    viewer.press(u"select"_s);
    return true;
}

bool open(SimulatedViewer& viewer)
{
    return selectShop(viewer) && viewer.waitForText(header, u"tapes in stock — pull one off the shelf"_s, 5s);
}

void moveFocus(SimulatedViewer& viewer, Position from, Position to)
{
    pressAll(viewer, u"left"_s, from.column);
    pressAll(viewer, to.shelf > from.shelf ? u"down"_s : u"up"_s, std::abs(to.shelf - from.shelf));
    pressAll(viewer, u"right"_s, to.column);
    viewer.screen().waitUntilStill(300ms, 5s);
}

} // namespace quillmere::shop
