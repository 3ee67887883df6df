#include "Graphemes.h"

#include <QtGlobal>

#include <algorithm>
#include <memory>
#include <unicode/ubrk.h>
#include <unicode/uchar.h>

namespace {

struct CloseIterator
{
    void operator()(UBreakIterator* iterator) const { ubrk_close(iterator); }
};

/** The thread's iterator, set on `text`; making one costs far more than a dressing, so each thread keeps its own. */
UBreakIterator* iteratorOn(QStringView text)
{
    thread_local const std::unique_ptr<UBreakIterator, CloseIterator> iterator = [] {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<UBreakIterator, CloseIterator> made(ubrk_open(UBRK_CHARACTER, "", nullptr, 0, &status));
        if (U_FAILURE(status))
            qFatal("ICU cannot tell characters apart: %s", u_errorName(status));
        return made;
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

/** Where the character that starts at `place` ends: in ASCII every unit is one, but for a line break of two. */
qsizetype asciiEnd(QStringView text, qsizetype place)
{
    const bool isLineBreak = text[place] == u'\r' && place + 1 < text.size() && text[place + 1] == u'\n';
    return place + (isLineBreak ? 2 : 1);
}

/** Whether a character ends before `place`, when its neighbours alone tell. */
bool isPlainBoundary(QStringView text, qsizetype place)
{
    if (place == 0 || place == text.size())
        return true;
    const char16_t before = text[place - 1].unicode();
    const char16_t after = text[place].unicode();
    return isAscii(before) && isAscii(after) && !(before == u'\r' && after == u'\n');
}

constexpr char16_t textSelector = 0xFE0E;
constexpr char16_t emojiSelector = 0xFE0F;
constexpr char16_t joiner = 0x200D;
constexpr char16_t keycap = 0x20E3;

/** Whether an emoji may be in a text that has this unit: all are in these blocks, or have a selector. */
bool hintsAtEmoji(QChar unit)
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
        for (qsizetype place = 0; place < text.size(); place = asciiEnd(text, place))
            ++characters;
        return characters;
    }
    UBreakIterator* iterator = iteratorOn(text);
    while (ubrk_next(iterator) != UBRK_DONE)
        ++characters;
    return characters;
}

std::optional<qsizetype> Graphemes::lengthOf(QStringView text, qsizetype characters)
{
    qsizetype place = 0;
    if (isAscii(text)) {
        for (; characters > 0 && place < text.size(); --characters)
            place = asciiEnd(text, place);
        return characters > 0 ? std::nullopt : std::optional(place);
    }
    UBreakIterator* iterator = iteratorOn(text);
    for (; characters > 0; --characters) {
        const int32_t next = ubrk_next(iterator);
        if (next == UBRK_DONE)
            return std::nullopt;
        place = next;
    }
    return place;
}

bool Graphemes::isWholeCharacter(QStringView text, qsizetype place)
{
    if (isPlainBoundary(text, place) && isPlainBoundary(text, place + 1))
        return true;
    UBreakIterator* iterator = iteratorOn(text);
    return ubrk_isBoundary(iterator, int32_t(place)) && ubrk_isBoundary(iterator, int32_t(place) + 1);
}

QList<Graphemes::Range> Graphemes::emoji(QStringView text)
{
    QList<Range> found;
    if (!std::any_of(text.begin(), text.end(), hintsAtEmoji))
        return found;
    UBreakIterator* iterator = iteratorOn(text);
    int32_t start = 0;
    for (int32_t end = ubrk_next(iterator); end != UBRK_DONE; start = end, end = ubrk_next(iterator)) {
        if (isEmoji(text.sliced(start, end - start)))
            found.append({start, end - start});
    }
    return found;
}
