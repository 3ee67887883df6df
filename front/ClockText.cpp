#include "ClockText.h"

#include <limits>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

constexpr double tooLarge = 0x1p63; // smallest positive number that does not fit in a qint64

QString twoDigits(qint64 number)
{
    return u"%1"_s.arg(number, 2, 10, QChar(u'0'));
}

qint64 wholeSeconds(double seconds)
{
    // Also true for NaN.
    if (!(seconds > 0))
        return 0;
    return seconds < tooLarge ? qint64(seconds) : std::numeric_limits<qint64>::max();
}

} // namespace

QString clockText(double seconds)
{
    const qint64 whole = wholeSeconds(seconds);
    const qint64 minutes = whole % 3600 / 60;
    const QString upToSeconds = u':' + twoDigits(whole % 60);
    if (whole < 3600)
        return QString::number(minutes) + upToSeconds;
    return QString::number(whole / 3600) + u':' + twoDigits(minutes) + upToSeconds;
}

} // namespace quillmere
