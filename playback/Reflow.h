#pragma once

#include <QStringList>

/**
 * Joins caption text, whose lines fit the width of a picture, into paragraphs. Pure functions that accept any text; the
 * time is linear in its length; any thread.
 */
namespace quillmere::Reflow {

/**
 * Joins lines with single spaces until a paragraph has at least `minLength` grapheme clusters; only the last paragraph
 * may be shorter. Blanks at the ends of lines and blank lines are removed; lines are never split.
 */
QStringList paragraphs(QStringView text, qsizetype minLength);

/**
 * Splits paragraphs that are longer than `maxLength` UTF-16 units, as of a text without line breaks; between words if
 * possible. The screen lays out one passage at a time.
 */
QStringList passages(const QStringList& paragraphs, qsizetype maxLength);

} // namespace quillmere::Reflow
