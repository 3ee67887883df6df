#pragma once

#include <QStringList>

/**
 * Caption text, whose lines are as long as a picture is wide, made into paragraphs to be read. Pure functions, total, in
 * time linear in the text; any thread.
 */
namespace Reflow {

/**
 * Joins lines by single spaces until a paragraph has `limit` characters as a reader counts them; only the last may be
 * shorter. Blanks at the ends of lines and blank lines go; no line is ever cut.
 */
QStringList paragraphs(QStringView text, qsizetype limit);

/**
 * The paragraphs as a screen lays them out: one that is longer than `longest` UTF-16 units, as a text without line
 * breaks may be, is cut between words where it can.
 */
QStringList passages(const QStringList& paragraphs, qsizetype longest);

} // namespace Reflow
