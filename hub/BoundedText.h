#pragma once

#include <QString>

/** UTF-16 units, many times more than anybody reads: what is looked through letter by letter on the screen thread. */
constexpr qsizetype longestReadText = 20'000;

/** UTF-16 units, which no honest title comes near: what is only hashed, in about a millisecond. */
constexpr qsizetype longestHashedText = 1'000'000;

/** The beginning of a text that is longer, less half of a surrogate pair. */
inline QString boundedText(const QString& text, qsizetype longest)
{
    if (text.size() <= longest)
        return text;
    const bool splitsAPair = text.at(longest - 1).isHighSurrogate();
    return text.first(splitsAPair ? longest - 1 : longest);
}
