#pragma once

#include "Shelf.h"

#include <QRectF>
#include <QString>

namespace quillmere {

class SimulatedViewer;
class SampleHub;

/** Simulates a viewer in the rental shop. Areas are in points of the canvas. */
namespace shop {

inline constexpr QRectF header(40, 20, 1400, 280); ///< before any scrolling: sign, stock line, controls

// The screen of a tape with a one-line title.
inline constexpr QRectF detailTitle(550, 40, 1300, 200);
inline constexpr QRectF detailTexts(540, 20, 1340, 460);  ///< from the title to the synopsis
inline constexpr QRectF detailFacts(540, 480, 1340, 560); ///< from the buttons to the catalogue line
inline constexpr QRectF firstButton(562, 502, 240, 60);   ///< inside its plate while it has focus

// The search: title and hint above the field.
inline constexpr QRectF searchHeader(80, 50, 1760, 160);
inline constexpr QRectF searchField(106, 232, 1700, 60);
inline constexpr QRectF searchOutcome(80, 320, 1760, 56);
inline constexpr QRectF keyboard(0, 544, 1920, 536); ///< covers the lower half

/**
 * A position in the shop: row of the shelf from the top, -1 for the controls above the shelves, and column from the
 * left.
 */
struct Position
{
    int shelf = -1;
    int column = 0;
};

/** The shelves, built from the hub's first page as the program builds them. */
QList<Shelf> shelves(SampleHub& hub);

/** The position of the tape whose cover's title contains `title`; throws std::runtime_error if it is on no shelf. */
Position positionOf(SampleHub& hub, const QString& title);

/** The position of the tape with this id; throws std::runtime_error if it is on no shelf. */
Position positionOf(SampleHub& hub, qint64 tape);

/** Waits until the front screen shows the shop's figures and selects the shop; false if they do not appear. */
bool selectShop(SimulatedViewer& viewer);

/** Opens the shop and waits for the shelves; the focus is then on the controls. False if the shelves do not appear. */
bool open(SimulatedViewer& viewer);

/**
 * Moves the focus with the arrow keys: left to the shelf's first card, up or down, then right. The target shelf must
 * not have been visited before, or its current card must be the first one.
 */
void moveFocus(SimulatedViewer& viewer, Position from, Position to);

} // namespace shop

} // namespace quillmere
