#pragma once

#include <QDateTime>
#include <QString>

#include <chrono>
#include <optional>

namespace quillmere {

// Texts of the standby card, and the motion of its ticker, as pure functions. Any thread.

/**
 * Parses the `nextBroadcast` of a status, such as "2025-06-03T17:00:00Z". An offset such as "+02:00" may replace the
 * "Z", and the seconds may have a fraction. Returns nothing for any other format, for a date or time that does not
 * exist, and for a leap second.
 */
std::optional<QDateTime> broadcastDate(QStringView nextBroadcast);

/** Formats a time >= 0 as "23:59:59", or "1d 01:01:01" from one day on. Fractions of a second are dropped. */
QString countdownText(std::chrono::milliseconds remaining);

/** Formats a moment in local time: "Tue Jun 3 · 5:00 PM". Independent of the locale. */
QString scheduleText(const QDateTime& moment);

/** Texts of the countdown. */
struct CountdownReading
{
    bool counting = false; ///< whether a broadcast is in the future
    QString headline;      ///< the remaining time, or a text that no broadcast is scheduled
    QString detail;        ///< label or time of the broadcast, with a prefix if it is past; may be empty

    bool operator==(const CountdownReading&) const = default;
};

CountdownReading countdownReading(const std::optional<QDateTime>& target, const QString& label, const QDateTime& now);

/** Separator between two ticker lines, and between the ticker text and its repetition. */
QString tickerSeparator();

/** Joins the ticker lines. If there are none, returns the default text with the host of the hub in capitals. */
QString tickerText(const QStringList& lines, const QString& hubHost);

/** Period of the ticker motion in seconds, for a text of `characters` grapheme clusters. */
double tickerPeriod(qsizetype characters);

/**
 * Horizontal offset of the ticker line from the left edge of the ticker, in the unit of `width` (the ticker's width).
 * It decreases linearly from `width` to -`width` in each period. Periods are in seconds and counted from 2001-01-01
 * UTC.
 */
double tickerOffset(double width, double period, const QDateTime& now);

} // namespace quillmere
