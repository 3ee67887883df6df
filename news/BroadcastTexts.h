#pragma once

#include <QDateTime>
#include <QString>

#include <chrono>
#include <optional>

// What the news channel says while the tower is dark, and how its ticker moves: pure functions. Any thread.

/**
 * The moment that a status's `nextBroadcast` names: "2025-06-03T17:00:00Z", with an offset such as "+02:00" in place of
 * the "Z", with a fraction of the second or without, and nothing else. Nothing for a date or time that does not exist; a
 * leap second counts as none.
 */
std::optional<QDateTime> broadcastDate(QStringView nextBroadcast);

/** A remaining time, not below 0: "23:59:59", from a day on "1d 01:01:01"; fractions of a second are dropped. */
QString remainingText(std::chrono::milliseconds remaining);

/** The moment on this set's clock: "Tue Jun 3 · 5:00 PM". No locale has a say. */
QString scheduleText(const QDateTime& moment);

/** What the countdown shows. */
struct CountdownReading
{
    bool counting = false; ///< a broadcast is to come
    QString headline;      ///< the remaining time, or that there is no broadcast
    QString detail;        ///< which broadcast; empty when none is or was on the schedule

    bool operator==(const CountdownReading&) const = default;
};

CountdownReading countdownReading(const std::optional<QDateTime>& target, const QString& label, const QDateTime& now);

/** What stands between two lines of the ticker, and between the ticker's text and its repetition. */
QString tickerSeparator();

/** The ticker's text; without any lines the station's own, with the hub's host in capitals. */
QString tickerText(const QStringList& lines, const QString& hubHost);

/** How long the ticker takes for one round, in seconds, with a text of so many characters as a reader counts them. */
double tickerPeriod(qsizetype characters);

/**
 * How far right of its place the ticker's line stands, in the unit of `width`, which the space for it has: from `width`
 * down to -`width` in each period (seconds), which are counted from the beginning of 2001.
 */
double tickerOffset(double width, double period, const QDateTime& now);
