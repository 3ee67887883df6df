#include "RewinderyTexts.h"

#include "Dressing.h"
#include "Text.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

// A year is the start of a date, which the hub writes in ASCII digits. Not QString's own conversion alone, which also
// accepts " 202" or "+202"; those are not the start of a date.
std::optional<qint64> wholeNumber(QStringView text)
{
    if (!std::all_of(text.begin(), text.end(), isDigit))
        return {};
    bool isNumber = false;
    const qint64 number = text.toLongLong(&isNumber);
    return isNumber ? std::optional(number) : std::nullopt;
}

} // namespace

QString RewinderyTexts::stockLine(qint64 tapes)
{
    return QString::number(tapes) + u" tapes in stock — pull one off the shelf and push it into the set. "
                                    "Every tape here plays on this television."_s;
}

QString RewinderyTexts::caption(const QList<VHSCover>& covers)
{
    const QString years = yearSpan(covers);
    return years.isEmpty() ? bodySummary(covers) : bodySummary(covers) + u" · "_s + years;
}

QString RewinderyTexts::yearSpan(const QList<VHSCover>& covers)
{
    QList<qint64> years;
    for (const VHSCover& cover : covers) {
        if (const auto year = wholeNumber(cover.year))
            years.append(*year);
    }
    if (years.isEmpty())
        return {};
    const auto [first, last] = std::minmax_element(years.cbegin(), years.cend());
    return *first == *last ? QString::number(*first) : QString::number(*first) + u'–' + QString::number(*last);
}

QString RewinderyTexts::message(const std::optional<QString>& lastError)
{
    return lastError.value_or(u"No tapes on the shelf for this view."_s);
}

} // namespace quillmere
