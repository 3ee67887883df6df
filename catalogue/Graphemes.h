#pragma once

#include <QList>
#include <QStringView>

#include <optional>

/**
 * Characters as the reader sees them (extended grapheme clusters). Pure functions, valid for any text; thread-safe.
 * Lengths and indexes are in UTF-16 code units.
 */
namespace quillmere::Graphemes {

/** The number of characters in the text. */
qsizetype count(QStringView text);

/** The length of the first `characters` characters. Returns nothing if the text has fewer. */
std::optional<qsizetype> prefixLength(QStringView text, qsizetype characters);

/** Whether the code unit at `index` alone is a character: true for "-", false if a combining mark follows it. */
bool isWholeCharacter(QStringView text, qsizetype index);

/** A range of code units of a text. */
struct Range
{
    qsizetype start;
    qsizetype length;

    bool operator==(const Range&) const = default;
};

/**
 * The characters of the text that are shown as emoji. Each range covers the whole sequence: skin tones, ZWJ sequences
 * (U+200D), flags, keycaps, and characters with the emoji variation selector.
 */
QList<Range> emoji(QStringView text);

} // namespace quillmere::Graphemes
