#pragma once

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

} // namespace Graphemes
