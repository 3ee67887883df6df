#include "DateLabel.h"

#include "Graphemes.h"

#include <QDate>
#include <QStringBuilder>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype dateLength = 10;

bool isDigit(QChar unit)
{
    return unit >= u'0' && unit <= u'9';
}

bool hasDateForm(QStringView text)
{
    constexpr std::array<qsizetype, 2> hyphens{4, 7};
    for (qsizetype index = 0; index < dateLength; ++index) {
        const bool isHyphen = std::find(hyphens.begin(), hyphens.end(), index) != hyphens.end();
        if (isHyphen ? text[index] != u'-' : !isDigit(text[index]))
            return false;
    }
    return true;
}

int number(QStringView digits)
{
    int value = 0;
    for (const QChar digit : digits)
        value = value * 10 + (digit.unicode() - u'0');
    return value;
}

const QString& monthName(int month)
{
    static const std::array<QString, 12> names{u"January"_s,   u"February"_s, u"March"_s,    u"April"_s,
                                               u"May"_s,       u"June"_s,     u"July"_s,     u"August"_s,
                                               u"September"_s, u"October"_s,  u"November"_s, u"December"_s};
    return names[size_t(month) - 1];
}

} // namespace

QString dateLabel(QStringView text)
{
    // A date has ten code units and ten characters. If a combining mark follows the tenth unit, the text is not a date.
    if (text.size() < dateLength || !hasDateForm(text) || Graphemes::prefixLength(text, dateLength) != dateLength)
        return {};
    const QStringView year = text.first(4);
    const int month = number(text.sliced(5, 2));
    const int day = number(text.sliced(8, 2));
    if (!QDate::isValid(number(year), month, day))
        return {};
    return monthName(month) % u' ' % QString::number(day) % u", "_s % year;
}
