#pragma once

#include <QFont>
#include <QList>
#include <QString>

/** A text that is wrapped into lines of some width, and what it may claim of a height that it shares. A value. */
struct WrappedText
{
    QString text;
    QFont font;
    double width = 0;   ///< points
    double gap = 0;     ///< points above it, while there is a text
    int leastLines = 1; ///< it has so many, if it needs them, before any other gets more than its own
};

/**
 * How many lines each text shows in a height, in points, that they share: all of them if they fit; else first the least
 * of each, and then the earlier ones as many as fit before the later ones get any more. A text that is there has one
 * line at least. Any thread that may use fonts.
 */
QList<int> linesThatFit(const QList<WrappedText>& texts, double height);
