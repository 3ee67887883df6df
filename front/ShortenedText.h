#pragma once

#include <QString>

/**
 * A text of the hub's as a screen lays it out: no more than any screen has room for, with an ellipsis where it was cut,
 * since laying out a million characters holds up the screen thread for a tenth of a second. Any thread.
 */
QString shortenedText(const QString& text);
