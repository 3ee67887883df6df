#pragma once

#include "Shelf.h"

#include <QRectF>
#include <QString>

class LivingRoom;
class SampleHub;

/** The rental shop, as a test sees it and walks along its shelves. Areas are in points of the canvas. */
namespace shop {

inline constexpr QRectF header(40, 20, 1400, 280); ///< while nothing is scrolled: sign, stock line, controls

// A tape's own screen, its title on one line.
inline constexpr QRectF detailTitle(550, 40, 1300, 200);
inline constexpr QRectF detailTexts(540, 20, 1340, 460);  ///< from the title to the synopsis
inline constexpr QRectF detailFacts(540, 480, 1340, 560); ///< from the buttons to the catalogue line
inline constexpr QRectF firstButton(562, 502, 240, 60);   ///< within its plate under focus

// The search, its title and its invitation over its field.
inline constexpr QRectF searchHeader(80, 50, 1760, 160);
inline constexpr QRectF searchField(106, 232, 1700, 60);
inline constexpr QRectF searchOutcome(80, 320, 1760, 56);
inline constexpr QRectF keyboard(0, 544, 1920, 536); ///< over the lower half

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

/** Where the tape with this id stands; throws the same. */
Place placeOf(SampleHub& hub, qint64 tape);

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
