#pragma once

#include <QFont>
#include <QList>
#include <QString>

/** A text wrapped at some width, which shares a height with other texts. A value. */
struct WrappedText
{
    QString text;
    QFont font;
    double width = 0;     ///< points
    double gap = 0;       ///< points above it, unless the text is empty
    int minimumLines = 1; ///< lines reserved before any text gets more than its own minimum
};

/**
 * Number of lines of each text if all texts share `height`, in points. If not all lines fit, each text first gets its
 * minimum, then the rest goes to the texts in their order. If even the minimums do not fit, later texts lose lines
 * first. A text that is not empty gets at least one line. Any thread that may use fonts.
 */
QList<int> linesThatFit(const QList<WrappedText>& texts, double height);
