#pragma once

#include <QString>

/**
 * Cuts a text from the hub to at most `maximumLength` UTF-16 units and marks the cut with an ellipsis. No screen has
 * room for more: the maximumLength line of a screen shows a few hundred. Without the limit, laying out a million
 * characters would block the screen thread for 0.1 s. Any thread.
 */
QString shortenedText(const QString& text, qsizetype maximumLength = 1000);

/** Same as shortenedText, with each sequence of line breaks replaced by a space, for texts shown on one line. */
QString shortenedLine(const QString& text, qsizetype maximumLength = 1000);
