#include "ShortenedText.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

QString shortenedText(const QString& text, qsizetype maximumLength)
{
    if (text.size() <= maximumLength)
        return text;
    const bool splitsSurrogatePair = text.at(maximumLength - 1).isHighSurrogate();
    return text.first(splitsSurrogatePair ? maximumLength - 1 : maximumLength) + u'…';
}

QString shortenedLine(const QString& text, qsizetype maximumLength)
{
    static const QRegularExpression lineBreaks(u"\\R+"_s);
    return shortenedText(text, maximumLength).replace(lineBreaks, u" "_s);
}
