#include "ShortenedText.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

QString shortenedText(const QString& text, qsizetype longest)
{
    if (text.size() <= longest)
        return text;
    const bool splitsAPair = text.at(longest - 1).isHighSurrogate();
    return text.first(splitsAPair ? longest - 1 : longest) + u'…';
}

QString shortenedLine(const QString& text, qsizetype longest)
{
    static const QRegularExpression lineBreaks(u"\\R+"_s);
    return shortenedText(text, longest).replace(lineBreaks, u" "_s);
}
