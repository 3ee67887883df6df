#pragma once

#include "State.h"

/** The tour's steps and checks in the shop. */
namespace quillmere::tour {

/** Opens the shop from the front screen; the focus is then on the controls above the shelves. */
Step openShop();
/** Opens the shop, whatever it then shows. */
Step enterShop();
/** Moves the focus with the arrow keys to the tape whose cover's title contains `title`. */
Step moveFocusTo(const QString& title);
/** Presses a button `times` times without waiting in between. */
Step pressRapidly(const QString& button, int times);
/** Adds one more market, the last in the list, without tapes. */
Step addEmptyMarket();

/** Adds many more markets without tapes, before those of the hub. */
Step addManyMarkets();

/** The stock line shows the number of tapes that the hub has in this market, or in all if `market` is empty. */
Check showsStock(const QString& market = {});
/** The title of a tape's screen contains letters. */
Check hasTitle();
Check hubGotNoRequestFor(const QString& path);

} // namespace quillmere::tour
