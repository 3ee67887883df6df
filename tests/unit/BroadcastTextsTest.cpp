#include "BroadcastTexts.h"
#include "TestMain.h"

#include <QTest>
#include <QTimeZone>

#include <locale.h>
#include <time.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

namespace {

constexpr qint64 referenceDate = 978'307'200; // 2001-01-01 00:00 UTC, in seconds since 1970

QDateTime utc(int year, int month, int day, int hour = 0, int minute = 0, int second = 0, int millisecond = 0)
{
    return QDateTime(QDate(year, month, day), QTime(hour, minute, second, millisecond), QTimeZone::utc());
}

void setTimeZone(const char* zone)
{
    qputenv("TZ", zone);
    tzset();
}

} // namespace

/** Tests the dates, times and texts of the standby card, and the position of its ticker, at exact times. */
class BroadcastTextsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void nextBroadcastIsParsedWithAndWithoutFraction_data();
    void nextBroadcastIsParsedWithAndWithoutFraction();
    void otherTextIsNoDate_data();
    void otherTextIsNoDate();
    void remainingTimeIsFormattedAsClock_data();
    void remainingTimeIsFormattedAsClock();
    void scheduleIsShownInLocalTimeInEnglish_data();
    void scheduleIsShownInLocalTimeInEnglish();
    void countdownShowsTimeAndDetail_data();
    void countdownShowsTimeAndDetail();
    void tickerTextJoinsLines();
    void emptyTickerShowsStationText();
    void tickerPeriodDependsOnLength_data();
    void tickerPeriodDependsOnLength();
    void tickerOffsetDependsOnTime_data();
    void tickerOffsetDependsOnTime();
    void tickerMovesSameDistanceEachMillisecond();
};

void BroadcastTextsTest::initTestCase()
{
    // No text may depend on the system locale. If this locale is not installed, the test detects less.
    setlocale(LC_ALL, "de_DE.UTF-8");
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    setTimeZone("UTC");
}

void BroadcastTextsTest::nextBroadcastIsParsedWithAndWithoutFraction_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QDateTime>("moment");
    QTest::newRow("whole seconds") << u"2025-06-03T17:00:00Z"_s << utc(2025, 6, 3, 17);
    QTest::newRow("a fraction") << u"2025-06-03T17:00:00.250Z"_s << utc(2025, 6, 3, 17, 0, 0, 250);
    QTest::newRow("a short fraction") << u"2025-06-03T17:00:00.2Z"_s << utc(2025, 6, 3, 17, 0, 0, 200);
    QTest::newRow("a long fraction") << u"2025-06-03T17:00:00.123999999999999Z"_s << utc(2025, 6, 3, 17, 0, 0, 123);
    QTest::newRow("positive offset") << u"2025-06-03T01:30:00+02:00"_s << utc(2025, 6, 2, 23, 30);
    QTest::newRow("negative offset") << u"2025-12-31T20:00:59-05:30"_s << utc(2026, 1, 1, 1, 30, 59);
    QTest::newRow("a fraction and an offset") << u"2025-06-03T17:00:00.5-00:30"_s << utc(2025, 6, 3, 17, 30, 0, 500);
    QTest::newRow("offset of zero") << u"2025-06-03T17:00:00-00:00"_s << utc(2025, 6, 3, 17);
    QTest::newRow("largest offset") << u"2025-06-03T17:00:00+23:59"_s << utc(2025, 6, 2, 17, 1);
    QTest::newRow("a leap day") << u"2024-02-29T23:59:59Z"_s << utc(2024, 2, 29, 23, 59, 59);
    QTest::newRow("first year") << u"0001-01-01T00:00:00Z"_s << utc(1, 1, 1);
    QTest::newRow("last year") << u"9999-12-31T23:59:59Z"_s << utc(9999, 12, 31, 23, 59, 59);
}

void BroadcastTextsTest::nextBroadcastIsParsedWithAndWithoutFraction()
{
    QFETCH(QString, text);
    QFETCH(QDateTime, moment);
    QCOMPARE(broadcastDate(text).value_or(QDateTime()), moment);
}

void BroadcastTextsTest::otherTextIsNoDate_data()
{
    QTest::addColumn<QString>("text");
    for (const QString& text : {u""_s,
                                u"Z"_s,
                                u"2025-06-03"_s,
                                u"2025-06-03 17:00"_s,
                                u"2025-06-03 17:00:00Z"_s,
                                u"2025-06-03T17:00Z"_s,
                                u"2025-06-03T17:00:00"_s,
                                u"2025-06-03T17:00:00.250"_s,
                                u"2025-06-03T17:00:00.Z"_s,
                                u"2025-06-03T17:00:00,250Z"_s,
                                u"2025-06-03T17:00:00 Z"_s,
                                u"2025-06-03T17:00:00z"_s,
                                u"2025-06-03t17:00:00Z"_s,
                                u" 2025-06-03T17:00:00Z"_s,
                                u"2025-06-03T17:00:00Z "_s,
                                u"2025-06-03T17:00:00ZZ"_s,
                                u"2025-06-03T17:00:00+0200"_s,
                                u"2025-06-03T17:00:00+02"_s,
                                u"2025-06-03T17:00:00+02:0"_s,
                                u"2025-06-03T17:00:00+02:000"_s,
                                u"2025-06-03T17:00:00+24:00"_s,
                                u"2025-06-03T17:00:00+02:60"_s,
                                u"2025-06-03T17:00:00\u221202:00"_s,
                                u"2025-06-03T17:00:00.25+Z"_s,
                                u"20250603T170000Z"_s,
                                u"2025-6-3T17:00:00Z"_s,
                                u"2025-02-30T17:00:00Z"_s,
                                u"2025-02-29T17:00:00Z"_s,
                                u"2025-13-01T17:00:00Z"_s,
                                u"2025-00-01T17:00:00Z"_s,
                                u"2025-06-00T17:00:00Z"_s,
                                u"2025-06-31T17:00:00Z"_s,
                                u"0000-01-01T00:00:00Z"_s,
                                u"2025-06-03T24:00:00Z"_s,
                                u"2025-06-03T17:60:00Z"_s,
                                u"2016-12-31T23:59:60Z"_s,
                                u"-2025-06-03T17:00:00Z"_s,
                                u"+2025-06-03T17:00:00Z"_s,
                                u"2025-06-03T17:00:0\u0663Z"_s,
                                u"２０２５-06-03T17:00:00Z"_s,
                                u"tomorrow"_s})
        QTest::newRow(text.isEmpty() ? "nothing" : qPrintable(text)) << text;
}

void BroadcastTextsTest::otherTextIsNoDate()
{
    QFETCH(QString, text);
    QVERIFY(!broadcastDate(text));
}

void BroadcastTextsTest::remainingTimeIsFormattedAsClock_data()
{
    QTest::addColumn<qint64>("milliseconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("one millisecond") << qint64(1) << u"00:00:00"_s;
    QTest::newRow("a fraction is dropped") << qint64(59'999) << u"00:00:59"_s;
    QTest::newRow("a minute") << qint64(60'000) << u"00:01:00"_s;
    QTest::newRow("an hour") << qint64(3'600'000) << u"01:00:00"_s;
    QTest::newRow("nearly a day") << qint64(86'399'000) << u"23:59:59"_s;
    QTest::newRow("nearly a day and a fraction") << qint64(86'399'999) << u"23:59:59"_s;
    QTest::newRow("a day") << qint64(86'400'000) << u"1d 00:00:00"_s;
    QTest::newRow("a day, an hour, a minute and a second") << qint64(90'061'000) << u"1d 01:01:01"_s;
    QTest::newRow("many days") << qint64(8'640'000'000'000) << u"100000d 00:00:00"_s;
}

void BroadcastTextsTest::remainingTimeIsFormattedAsClock()
{
    QFETCH(qint64, milliseconds);
    QFETCH(QString, text);
    QCOMPARE(countdownText(std::chrono::milliseconds(milliseconds)), text);
}

void BroadcastTextsTest::scheduleIsShownInLocalTimeInEnglish_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<QDateTime>("moment");
    QTest::addColumn<QString>("text");
    const QByteArray utcZone = "UTC";
    QTest::newRow("afternoon") << utcZone << utc(2025, 6, 3, 17) << u"Tue Jun 3 · 5:00 PM"_s;
    QTest::newRow("midnight") << utcZone << utc(2025, 12, 31) << u"Wed Dec 31 · 12:00 AM"_s;
    QTest::newRow("after midnight") << utcZone << utc(2024, 2, 29, 0, 5) << u"Thu Feb 29 · 12:05 AM"_s;
    QTest::newRow("noon") << utcZone << utc(2025, 5, 4, 12) << u"Sun May 4 · 12:00 PM"_s;
    QTest::newRow("before noon") << utcZone << utc(2025, 3, 15, 11, 59, 59) << u"Sat Mar 15 · 11:59 AM"_s;
    QTest::newRow("in summer time") << QByteArray("EST5EDT,M3.2.0,M11.1.0") << utc(2025, 6, 3, 2)
                                    << u"Mon Jun 2 · 10:00 PM"_s;
    QTest::newRow("in winter time") << QByteArray("EST5EDT,M3.2.0,M11.1.0") << utc(2025, 1, 3, 2)
                                    << u"Thu Jan 2 · 9:00 PM"_s;
    QTest::newRow("east of UTC") << QByteArray("IST-5:30") << utc(2025, 10, 31, 19, 45) << u"Sat Nov 1 · 1:15 AM"_s;
    int month = 1;
    for (const QString& name : {u"Wed Jan"_s, u"Sat Feb"_s, u"Sat Mar"_s, u"Tue Apr"_s, u"Thu May"_s, u"Sun Jun"_s,
                                u"Tue Jul"_s, u"Fri Aug"_s, u"Mon Sep"_s, u"Wed Oct"_s, u"Sat Nov"_s, u"Mon Dec"_s}) {
        QTest::newRow(qPrintable(name)) << utcZone << utc(2025, month, 1, 9, 30) << name + u" 1 · 9:30 AM"_s;
        ++month;
    }
}

void BroadcastTextsTest::scheduleIsShownInLocalTimeInEnglish()
{
    QFETCH(QByteArray, zone);
    QFETCH(QDateTime, moment);
    QFETCH(QString, text);
    setTimeZone(zone.constData());
    const QString read = scheduleText(moment);
    setTimeZone("UTC");
    QCOMPARE(read, text);
}

void BroadcastTextsTest::countdownShowsTimeAndDetail_data()
{
    QTest::addColumn<QDateTime>("target");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QDateTime>("now");
    QTest::addColumn<bool>("counting");
    QTest::addColumn<QString>("headline");
    QTest::addColumn<QString>("detail");
    const QDateTime target = utc(2025, 6, 3, 17);
    const QString none = u"no broadcast scheduled"_s;
    QTest::newRow("in the future") << target << u"Tonight"_s << target.addSecs(-90'061) << true << u"1d 01:01:01"_s
                                   << u"Tonight"_s;
    QTest::newRow("in the future, without a label")
        << target << QString() << target.addMSecs(-1) << true << u"00:00:00"_s << u"Tue Jun 3 · 5:00 PM"_s;
    QTest::newRow("exactly now") << target << u"Tonight"_s << target << false << none
                                 << u"last on the schedule · Tonight"_s;
    QTest::newRow("past, without a label") << target << QString() << target.addDays(400) << false << none
                                           << u"last on the schedule · Tue Jun 3 · 5:00 PM"_s;
    QTest::newRow("no broadcast scheduled") << QDateTime() << u"Tonight"_s << target << false << none << QString();
}

void BroadcastTextsTest::countdownShowsTimeAndDetail()
{
    QFETCH(QDateTime, target);
    QFETCH(QString, label);
    QFETCH(QDateTime, now);
    QFETCH(bool, counting);
    QFETCH(QString, headline);
    QFETCH(QString, detail);
    const auto scheduled = target.isValid() ? std::make_optional(target) : std::nullopt;
    const CountdownReading reading = countdownReading(scheduled, label, now);
    QCOMPARE(reading.counting, counting);
    QCOMPARE(reading.headline, headline);
    QCOMPARE(reading.detail, detail);
}

void BroadcastTextsTest::tickerTextJoinsLines()
{
    QCOMPARE(tickerText({u"One"_s}, u"hub.example.org"_s), u"One"_s);
    QCOMPARE(tickerText({u"One"_s, QString(), u"Three"_s}, u"hub.example.org"_s), u"One   ·      ·   Three"_s);
    QCOMPARE(tickerText({QString()}, u"hub.example.org"_s), QString());
}

void BroadcastTextsTest::emptyTickerShowsStationText()
{
    QCOMPARE(tickerText({}, u"hub.example.org"_s),
             u"THIS IS THE 5 O'CLOCK NEWS · QUILLMERE TELEVISION · HUB.EXAMPLE.ORG"_s);
}

void BroadcastTextsTest::tickerPeriodDependsOnLength_data()
{
    QTest::addColumn<int>("characters");
    QTest::addColumn<double>("period");
    QTest::newRow("empty") << 0 << 24.0;
    QTest::newRow("short") << 100 << 24.0;
    QTest::newRow("longest text with the least period") << 264 << 24.0;
    QTest::newRow("shortest text with a longer period") << 265 << 265 / 11.0;
    QTest::newRow("long") << 330 << 30.0;
    QTest::newRow("very long") << 20'000 << 20'000 / 11.0;
}

void BroadcastTextsTest::tickerPeriodDependsOnLength()
{
    QFETCH(int, characters);
    QFETCH(double, period);
    QCOMPARE(tickerPeriod(characters), period);
}

void BroadcastTextsTest::tickerOffsetDependsOnTime_data()
{
    QTest::addColumn<double>("period");
    QTest::addColumn<QDateTime>("now");
    QTest::addColumn<double>("offset");
    const QDateTime start = utc(2001, 1, 1);
    QTest::newRow("at the reference date") << 24.0 << start << 1920.0;
    QTest::newRow("after a quarter of the period") << 24.0 << start.addSecs(6) << 960.0;
    QTest::newRow("after half of the period") << 24.0 << start.addSecs(12) << 0.0;
    QTest::newRow("in the last millisecond of the period") << 24.0 << start.addMSecs(23'999) << -1920 + 3840 / 24'000.0;
    QTest::newRow("in the next period") << 24.0 << start.addSecs(24) << 1920.0;
    QTest::newRow("one millisecond later") << 24.0 << start.addMSecs(12'001) << -3840 / 24'000.0;
    QTest::newRow("this century") << 24.0 << start.addSecs(24 * 32'000'000LL + 18) << -960.0;
    QTest::newRow("in another time zone") << 24.0 << start.addSecs(6).toOffsetFromUtc(3 * 3600) << 960.0;
    QTest::newRow("a longer text") << 30.0 << start.addSecs(30 * 1000 + 15) << 0.0;
    QTest::newRow("a very long text") << 2000.0 << start.addSecs(500) << 960.0;
    QTest::newRow("before the reference date") << 24.0 << start.addSecs(-6) << -960.0;
}

void BroadcastTextsTest::tickerOffsetDependsOnTime()
{
    QFETCH(double, period);
    QFETCH(QDateTime, now);
    QFETCH(double, offset);
    const double position = tickerOffset(1920, period, now);
    QVERIFY2(qAbs(position - offset) < 1e-3, qPrintable(QString::number(position, 'f', 6)));
}

void BroadcastTextsTest::tickerMovesSameDistanceEachMillisecond()
{
    const QDateTime begin = QDateTime::fromSecsSinceEpoch(referenceDate + 24 * 32'000'000LL, QTimeZone::utc());
    double before = tickerOffset(1920, 24, begin);
    for (int millisecond = 1; millisecond < 24'000; ++millisecond) {
        const double now = tickerOffset(1920, 24, begin.addMSecs(millisecond));
        QVERIFY2(qAbs(before - now - 0.16) < 1e-3, qPrintable(QString::number(millisecond)));
        before = now;
    }
}

QUILLMERE_TEST(BroadcastTextsTest, QCoreApplication)

} // namespace quillmere

#include "BroadcastTextsTest.moc"
