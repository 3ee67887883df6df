#include "BroadcastTexts.h"

#include "Text.h"

#include <QStringBuilder>
#include <QTimeZone>

#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

namespace {

// Formats for matchesFormat().
constexpr QStringView dateTimeFormat = u"0000-00-00T00:00:00";
constexpr QStringView offsetFormat = u"+00:00";
constexpr qint64 referenceDate = 978'307'200'000; // 2001-01-01T00:00:00Z, in milliseconds since 1970
constexpr double charactersPerSecond = 11;
constexpr double minimumPeriod = 24; // seconds

/**
 * Removes a leading fraction such as ".25" and returns it in whole milliseconds: 0 if there is none, nothing if no
 * digit follows the point.
 */
std::optional<int> takeFraction(QStringView& text)
{
    if (!text.startsWith(u'.'))
        return 0;
    const auto end = std::find_if_not(text.begin() + 1, text.end(), isDigit);
    const QStringView digits = text.sliced(1, end - text.begin() - 1);
    text = text.sliced(digits.size() + 1);
    if (digits.isEmpty())
        return std::nullopt;
    int milliseconds = 0;
    for (qsizetype i = 0; i < 3; ++i)
        milliseconds = milliseconds * 10 + (i < digits.size() ? digitsToInt(digits.sliced(i, 1)) : 0);
    return milliseconds;
}

/** Offset of a time zone such as "Z" or "-05:30" from UTC, in seconds; nothing if malformed. */
std::optional<int> zoneOffset(QStringView zone)
{
    if (zone == u'Z')
        return 0;
    const bool isBehind = zone.startsWith(u'-');
    const bool hasSign = isBehind || zone.startsWith(u'+');
    if (!hasSign || !matchesFormat(zone.sliced(1), offsetFormat.sliced(1)))
        return std::nullopt;
    const int hours = digitsToInt(zone.sliced(1, 2));
    const int minutes = digitsToInt(zone.sliced(4, 2));
    if (hours > 23 || minutes > 59)
        return std::nullopt;
    return (isBehind ? -1 : 1) * (hours * 60 + minutes) * 60;
}

QString twoDigits(qint64 number)
{
    return u"%1"_s.arg(number, 2, 10, QChar(u'0'));
}

} // namespace

std::optional<QDateTime> broadcastDate(QStringView nextBroadcast)
{
    if (!matchesFormat(nextBroadcast.first(std::min(nextBroadcast.size(), dateTimeFormat.size())), dateTimeFormat))
        return std::nullopt;
    const auto part = [&](qsizetype index, qsizetype digits) {
        return digitsToInt(nextBroadcast.sliced(index, digits));
    };
    const QDate date(part(0, 4), part(5, 2), part(8, 2));
    const QTime time(part(11, 2), part(14, 2), part(17, 2));
    QStringView rest = nextBroadcast.sliced(dateTimeFormat.size());
    const std::optional<int> milliseconds = takeFraction(rest);
    const std::optional<int> offset = zoneOffset(rest);
    if (!date.isValid() || !time.isValid() || !milliseconds || !offset)
        return std::nullopt;
    return QDateTime(date, time.addMSecs(*milliseconds), QTimeZone::utc()).addSecs(-*offset);
}

QString countdownText(std::chrono::milliseconds remaining)
{
    const qint64 seconds = std::chrono::floor<std::chrono::seconds>(remaining).count();
    constexpr qint64 day = 86'400;
    const QString clock =
        twoDigits(seconds % day / 3600) % u':' % twoDigits(seconds % 3600 / 60) % u':' % twoDigits(seconds % 60);
    return seconds < day ? clock : QString(QString::number(seconds / day) % u"d "_s % clock);
}

QString scheduleText(const QDateTime& moment)
{
    static constexpr std::array<QStringView, 7> days{u"Mon", u"Tue", u"Wed", u"Thu", u"Fri", u"Sat", u"Sun"};
    static constexpr std::array<QStringView, 12> months{u"Jan", u"Feb", u"Mar", u"Apr", u"May", u"Jun",
                                                        u"Jul", u"Aug", u"Sep", u"Oct", u"Nov", u"Dec"};
    const QDateTime local = moment.toLocalTime();
    const QDate date = local.date();
    const int hour = local.time().hour();
    return days[size_t(date.dayOfWeek()) - 1] % u' ' % months[size_t(date.month()) - 1] % u' ' %
           QString::number(date.day()) % u" · "_s % QString::number((hour + 11) % 12 + 1) % u':' %
           twoDigits(local.time().minute()) % (hour < 12 ? u" AM"_s : u" PM"_s);
}

CountdownReading countdownReading(const std::optional<QDateTime>& target, const QString& label, const QDateTime& now)
{
    const QString nothing = u"no broadcast scheduled"_s;
    if (!target)
        return {false, nothing, {}};
    const QString which = label.isEmpty() ? scheduleText(*target) : label;
    const std::chrono::milliseconds remaining(now.msecsTo(*target));
    if (remaining > 0ms)
        return {true, countdownText(remaining), which};
    return {false, nothing, u"last on the schedule · "_s + which};
}

QString tickerSeparator()
{
    return u"   ·   "_s;
}

QString tickerText(const QStringList& lines, const QString& hubHost)
{
    if (lines.isEmpty())
        return u"THIS IS THE 5 O'CLOCK NEWS · QUILLMERE TELEVISION · "_s + hubHost.toUpper();
    return lines.join(tickerSeparator());
}

double tickerPeriod(qsizetype characters)
{
    return std::max(double(characters) / charactersPerSecond, minimumPeriod);
}

double tickerOffset(double width, double period, const QDateTime& now)
{
    const double seconds = double(now.toMSecsSinceEpoch() - referenceDate) / 1000;
    const double rounds = seconds / period;
    const double phase = rounds - std::floor(rounds);
    return width - 2 * width * phase;
}

} // namespace quillmere
