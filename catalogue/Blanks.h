#pragma once

#include <QStringView>

/** Trimming of the blank characters at the ends of a text. Pure functions, valid for any text; thread-safe. */
namespace Blanks {

/** Whether `unit` is a Unicode space separator or a tab. A line break is not blank. All blanks are in the BMP. */
inline bool isBlank(QChar unit)
{
    return unit == u'\t' || unit == u' ' || (unit.unicode() >= 0x80 && unit.category() == QChar::Separator_Space);
}

/** The text without blanks at either end. */
inline QStringView trimmed(QStringView text)
{
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text;
}

} // namespace Blanks
