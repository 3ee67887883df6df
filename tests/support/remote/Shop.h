#pragma once

#include "Shelf.h"

#include <QRectF>
#include <QString>

class LivingRoom;
class SampleHub;

/** The rental shop, as a test sees it and walks along its shelves. Areas are in points of the canvas. */
namespace shop {

inline constexpr QRectF header(40, 20, 1840, 360);       ///< while nothing is scrolled: sign, stock line, controls
inline constexpr QRectF detailTitle(550, 40, 1300, 200); ///< of a tape's own screen, not scrolled

/** Where something stands: the shelf from above, -1 for the controls over them, and the place on it from the left. */
struct Place
{
    int shelf = -1;
    int column = 0;
};

/** What stands on the shelves, made of the hub's first page as the program does. */
QList<Shelf> shelves(SampleHub& hub);

/** Where the tape whose cover's title contains `title` stands; throws std::runtime_error when it is on no shelf. */
Place placeOf(SampleHub& hub, const QString& title);

/** Waits for the front screen's figures and selects the shop's door; false when they do not come. */
bool enter(LivingRoom& room);

/** Enters and waits for the shelves, the focus then on the controls; false when they do not come. */
bool open(LivingRoom& room);

/**
 * Goes with the arrows from one place to another: along the shelf to its first card, up or down, and along. A shelf
 * must have been left at its first card, as this does, or never entered.
 */
void walk(LivingRoom& room, Place from, Place to);

} // namespace shop
