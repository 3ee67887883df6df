#pragma once

#include "State.h"

/** What the tour does and sees in the shop while it is a plain list. */
namespace tour {

Step openShop();
/** Presses the arrows until the focus is on the tape whose cover's title contains `title`. */
Step walkTo(const QString& title);

Sight focusReads(const QString& text);
/** There are letters in the row with the focus. */
Sight focusIsWritten();
Sight hasNoRows();
Sight hubWasNotAskedFor(const QString& path);

} // namespace tour
