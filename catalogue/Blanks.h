#pragma once

#include <QStringView>

/** What is trimmed from the ends of a line of text. Pure functions, total, usable from any thread. */
namespace Blanks {

/** Whether it is a space of any kind or the tab; a line break is neither. All of them are in the basic plane. */
inline bool isBlank(QChar unit)
{
    return unit == u'\t' || unit == u' ' || (unit.unicode() >= 0x80 && unit.category() == QChar::Separator_Space);
}

/** The text without the blanks at its ends. */
inline QStringView trimmed(QStringView text)
{
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text;
}

} // namespace Blanks
