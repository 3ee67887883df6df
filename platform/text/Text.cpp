#include "Text.h"

#include <QRegularExpression>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace quillmere {

bool matchesFormat(QStringView text, QStringView format)
{
    return text.size() == format.size() &&
           std::equal(text.begin(), text.end(), format.begin(),
                      [](QChar unit, QChar pattern) { return pattern == u'0' ? isDigit(unit) : unit == pattern; });
}

int digitsToInt(QStringView digits)
{
    int value = 0;
    for (const QChar digit : digits)
        value = value * 10 + (digit.unicode() - u'0');
    return value;
}

qsizetype cutLength(QStringView text, qsizetype maxLength)
{
    if (text.size() <= maxLength)
        return text.size();
    return text[maxLength - 1].isHighSurrogate() ? maxLength - 1 : maxLength;
}

QString truncatedText(const QString& text, qsizetype maxLength)
{
    return text.size() <= maxLength ? text : text.first(cutLength(text, maxLength));
}

QString shortenedText(const QString& text, qsizetype maxLength)
{
    return text.size() <= maxLength ? text : truncatedText(text, maxLength) + u'…';
}

QString shortenedLine(const QString& text, qsizetype maxLength)
{
    static const QRegularExpression lineBreaks(u"\\R+"_s);
    return shortenedText(text, maxLength).replace(lineBreaks, u" "_s);
}

QString wellFormed(QString text)
{
    for (qsizetype index = 0; index < text.size(); ++index) {
        const QChar unit = std::as_const(text)[index];
        if (!unit.isSurrogate())
            continue;
        const bool isPair =
            unit.isHighSurrogate() && index + 1 < text.size() && std::as_const(text)[index + 1].isLowSurrogate();
        if (isPair)
            ++index;
        else
            text[index] = QChar::ReplacementCharacter;
    }
    return text;
}

} // namespace quillmere
