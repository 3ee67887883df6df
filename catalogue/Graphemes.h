#pragma once

#include <QList>
#include <QStringView>

#include <optional>

/**
 * Characters as a reader counts them (extended grapheme clusters): pure functions, total, usable from any thread.
 * Lengths and places are in UTF-16 code units.
 */
namespace Graphemes {

/** How many characters the text has. */
qsizetype count(QStringView text);

/** The length of the text's first `characters` characters; nothing when it has fewer. */
std::optional<qsizetype> lengthOf(QStringView text, qsizetype characters);

/** Whether the code unit at `place` is a character by itself: "-" is, "-" with a combining mark behind it is not. */
bool isWholeCharacter(QStringView text, qsizetype place);

/** Some of a text's code units that follow each other. */
struct Range
{
    qsizetype start;
    qsizetype length;

    bool operator==(const Range&) const = default;
};

/**
 * The text's characters that Unicode shows as a picture, with all that belongs to each: skin tones, what is joined by
 * U+200D, flags, keycaps, and signs that a variation selector turns into one.
 */
QList<Range> emoji(QStringView text);

} // namespace Graphemes
