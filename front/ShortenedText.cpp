#include "ShortenedText.h"

namespace {

constexpr qsizetype longest = 1000; // UTF-16 units; the roomiest line of a screen shows a few hundred

} // namespace

QString shortenedText(const QString& text)
{
    if (text.size() <= longest)
        return text;
    const bool splitsAPair = text.at(longest - 1).isHighSurrogate();
    return text.first(splitsAPair ? longest - 1 : longest) + u'…';
}
