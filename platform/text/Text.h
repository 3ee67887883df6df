#pragma once

#include <QString>

namespace quillmere {

// Functions for texts. All are pure, valid for any text unless stated otherwise, and thread-safe. A maximum length is
// at least 1.

/** In UTF-16 units. Limit for texts that the screen thread scans or lays out; far longer than anyone reads. */
constexpr qsizetype maxTextLength = 20'000;

/** In UTF-16 units. Limit for texts that are only hashed; hashing that much takes about a millisecond. */
constexpr qsizetype maxHashedTextLength = 1'000'000;

/** Whether `unit` is a Unicode space separator or a tab. A line break is not blank. All blanks are in the BMP. */
inline bool isBlank(QChar unit)
{
    return unit == u'\t' || unit == u' ' || (unit.unicode() >= 0x80 && unit.category() == QChar::Separator_Space);
}

/** The text without blanks at either end. */
inline QStringView trimmedText(QStringView text)
{
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text;
}

/** Whether `unit` is an ASCII digit. */
constexpr bool isDigit(QChar unit)
{
    return unit >= u'0' && unit <= u'9';
}

/** Whether the text has this format, in which each 0 stands for any digit and other characters for themselves. */
bool matchesFormat(QStringView text, QStringView format);

/** The value of at most nine ASCII digits; 0 if there are none. */
int digitsToInt(QStringView digits);

/** The largest length up to `maxLength` at which the text can be cut without splitting a surrogate pair. */
qsizetype cutLength(QStringView text, qsizetype maxLength);

/** The text, cut to at most `maxLength` UTF-16 units. A surrogate pair is never split. */
QString truncatedText(const QString& text, qsizetype maxLength);

/**
 * Same as truncatedText(), but appends an ellipsis to a text that was cut. The default is enough for a text of few
 * lines, as one line shows a few hundred UTF-16 units at most. Without a limit, laying out a million characters would
 * block the screen thread for 0.1 s.
 */
QString shortenedText(const QString& text, qsizetype maxLength = 1000);

/** Same as shortenedText(), with each sequence of line breaks replaced by a space, for texts shown on one line. */
QString shortenedLine(const QString& text, qsizetype maxLength = 1000);

/** The text with each lone surrogate replaced by U+FFFD, so that it can be encoded in UTF-8. */
QString wellFormed(QString text);

} // namespace quillmere
