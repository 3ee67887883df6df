#include "Graphemes.h"

#include <QtGlobal>

#include <algorithm>
#include <memory>
#include <unicode/ubrk.h>
#include <unicode/uchar.h>

namespace quillmere {

namespace {

struct CloseIterator
{
    void operator()(UBreakIterator* iterator) const { ubrk_close(iterator); }
};

/**
 * The thread's break iterator, set to `text`. It is reused because creating one takes longer than computing a whole
 * cassette cover.
 */
UBreakIterator* breakIterator(QStringView text)
{
    thread_local const std::unique_ptr<UBreakIterator, CloseIterator> iterator = [] {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<UBreakIterator, CloseIterator> created(ubrk_open(UBRK_CHARACTER, "", nullptr, 0, &status));
        if (U_FAILURE(status))
            qFatal("ICU cannot tell characters apart: %s", u_errorName(status));
        return created;
    }();
    UErrorCode status = U_ZERO_ERROR;
    ubrk_setText(iterator.get(), text.utf16(), int32_t(text.size()), &status);
    if (U_FAILURE(status))
        qFatal("ICU does not take a text: %s", u_errorName(status));
    return iterator.get();
}

bool isAscii(char16_t unit)
{
    return unit < 0x80;
}

bool isAscii(QStringView text)
{
    char16_t all = 0;
    for (const QChar unit : text)
        all |= unit.unicode();
    return isAscii(all);
}

/** The end of the character that starts at `index`. In ASCII each unit is a character, except that CR LF is one. */
qsizetype asciiEnd(QStringView text, qsizetype index)
{
    const bool isLineBreak = text[index] == u'\r' && index + 1 < text.size() && text[index + 1] == u'\n';
    return index + (isLineBreak ? 2 : 1);
}

/** True if the adjacent units alone show a character boundary before `index`. If false, ICU must decide. */
bool isPlainBoundary(QStringView text, qsizetype index)
{
    if (index == 0 || index == text.size())
        return true;
    const char16_t before = text[index - 1].unicode();
    const char16_t after = text[index].unicode();
    return isAscii(before) && isAscii(after) && !(before == u'\r' && after == u'\n');
}

constexpr char16_t textSelector = 0xFE0E;
constexpr char16_t emojiSelector = 0xFE0F;
constexpr char16_t joiner = 0x200D;
constexpr char16_t keycap = 0x20E3;

/** Whether a text with this unit can contain an emoji. Every emoji is in these blocks or has an emoji selector. */
bool mayBePartOfEmoji(QChar unit)
{
    const char16_t code = unit.unicode();
    return code == emojiSelector || (code >= 0x2300 && code < 0x2C00) || (code >= 0xD83C && code <= 0xD83E);
}

bool isEmoji(QStringView character)
{
    const QList<uint> points = character.toUcs4();
    const auto is = [](uint point, UProperty property) { return u_hasBinaryProperty(UChar32(point), property); };
    const uint first = points.constFirst();
    if (!is(first, UCHAR_EMOJI))
        return false;
    const uint second = points.value(1);
    if (points.contains(keycap))
        return second == emojiSelector;
    return second == emojiSelector || (is(first, UCHAR_EMOJI_PRESENTATION) && second != textSelector) ||
           is(second, UCHAR_EMOJI_MODIFIER) || points.contains(joiner);
}

} // namespace

qsizetype Graphemes::count(QStringView text)
{
    qsizetype characters = 0;
    if (isAscii(text)) {
        for (qsizetype index = 0; index < text.size(); index = asciiEnd(text, index))
            ++characters;
        return characters;
    }
    UBreakIterator* iterator = breakIterator(text);
    while (ubrk_next(iterator) != UBRK_DONE)
        ++characters;
    return characters;
}

std::optional<qsizetype> Graphemes::prefixLength(QStringView text, qsizetype characters)
{
    qsizetype index = 0;
    if (isAscii(text)) {
        for (; characters > 0 && index < text.size(); --characters)
            index = asciiEnd(text, index);
        return characters > 0 ? std::nullopt : std::optional(index);
    }
    UBreakIterator* iterator = breakIterator(text);
    for (; characters > 0; --characters) {
        const int32_t next = ubrk_next(iterator);
        if (next == UBRK_DONE)
            return std::nullopt;
        index = next;
    }
    return index;
}

bool Graphemes::isWholeCharacter(QStringView text, qsizetype index)
{
    if (isPlainBoundary(text, index) && isPlainBoundary(text, index + 1))
        return true;
    UBreakIterator* iterator = breakIterator(text);
    return ubrk_isBoundary(iterator, int32_t(index)) && ubrk_isBoundary(iterator, int32_t(index) + 1);
}

QList<Graphemes::Range> Graphemes::emoji(QStringView text)
{
    QList<Range> found;
    if (!std::any_of(text.begin(), text.end(), mayBePartOfEmoji))
        return found;
    UBreakIterator* iterator = breakIterator(text);
    int32_t start = 0;
    for (int32_t end = ubrk_next(iterator); end != UBRK_DONE; start = end, end = ubrk_next(iterator)) {
        if (isEmoji(text.sliced(start, end - start)))
            found.append({start, end - start});
    }
    return found;
}

} // namespace quillmere
