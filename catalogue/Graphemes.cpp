#include "Graphemes.h"

#include <QtGlobal>

#include <memory>
#include <unicode/ubrk.h>

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
