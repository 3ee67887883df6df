#pragma once

#include <QString>

/** In UTF-16 units. Limit for texts that the screen thread scans or lays out; far longer than anyone reads. */
constexpr qsizetype maxTextLength = 20'000;

/** In UTF-16 units. Limit for texts that are only hashed; hashing that much takes about a millisecond. */
constexpr qsizetype maxHashedTextLength = 1'000'000;

/** The text, cut after `maxLength` UTF-16 units if it is longer. A surrogate pair is never split. */
inline QString truncatedText(const QString& text, qsizetype maxLength)
{
    if (text.size() <= maxLength)
        return text;
    const bool splitsPair = text.at(maxLength - 1).isHighSurrogate();
    return text.first(splitsPair ? maxLength - 1 : maxLength);
}
