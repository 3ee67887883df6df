#pragma once

#include "State.h"

/** What the tour does and sees in the shop. */
namespace tour {

/** From the front screen to the shelves, the focus then on the controls over them. */
Step openShop();
/** The same, whatever the shop then shows. */
Step enterShop();
/** Presses the arrows until the focus is on the tape whose cover's title contains `title`. */
Step walkTo(const QString& title);
/** Presses a button many times without waiting in between. */
Step pressRapidly(const QString& button, int times);
/** The status then has one more market, the last, in which there are no tapes. */
Step addEmptyMarket();

/** The status then has many more markets, before those of the hub, in which there are no tapes. */
Step addManyMarkets();

/** The stock line counts the tapes as the hub does; of one market, or of all when `market` is empty. */
Sight countsStock(const QString& market = {});
/** There are letters where a tape's own screen has its title. */
Sight titleIsWritten();
Sight hubWasNotAskedFor(const QString& path);

} // namespace tour
