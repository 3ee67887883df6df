#pragma once

#include <QString>

/**
 * A text of the hub's as a screen lays it out: no more than any screen has room for, with an ellipsis where it was cut,
 * since laying out a million characters holds up the screen thread for a tenth of a second. `longest` counts UTF-16 units;
 * the roomiest line of a screen shows a few hundred. Any thread.
 */
QString shortenedText(const QString& text, qsizetype longest = 1000);

/** The same on one line: where only one line is seen, what follows a line break would not be. */
QString shortenedLine(const QString& text, qsizetype longest = 1000);
