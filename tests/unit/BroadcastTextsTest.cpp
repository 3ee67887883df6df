#include "BroadcastTexts.h"
#include "Rows.h"
#include "TestMain.h"

#include <QTest>
#include <QTimeZone>

#include <locale.h>
#include <time.h>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

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
    void initTestCase()
    {
        // No text may depend on the system locale. If this locale is not installed, the test detects less.
        setlocale(LC_ALL, "de_DE.UTF-8");
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        setTimeZone("UTC");
    }

    void nextBroadcastIsParsedWithAndWithoutFraction_data()
    {
        rows<QString, QDateTime>(
            {"text", "moment"},
            {{"whole seconds", u"2025-06-03T17:00:00Z"_s, utc(2025, 6, 3, 17)},
             {"a fraction", u"2025-06-03T17:00:00.250Z"_s, utc(2025, 6, 3, 17, 0, 0, 250)},
             {"a short fraction", u"2025-06-03T17:00:00.2Z"_s, utc(2025, 6, 3, 17, 0, 0, 200)},
             {"a long fraction", u"2025-06-03T17:00:00.123999999999999Z"_s, utc(2025, 6, 3, 17, 0, 0, 123)},
             {"positive offset", u"2025-06-03T01:30:00+02:00"_s, utc(2025, 6, 2, 23, 30)},
             {"negative offset", u"2025-12-31T20:00:59-05:30"_s, utc(2026, 1, 1, 1, 30, 59)},
             {"a fraction and an offset", u"2025-06-03T17:00:00.5-00:30"_s, utc(2025, 6, 3, 17, 30, 0, 500)},
             {"offset of zero", u"2025-06-03T17:00:00-00:00"_s, utc(2025, 6, 3, 17)},
             {"largest offset", u"2025-06-03T17:00:00+23:59"_s, utc(2025, 6, 2, 17, 1)},
             {"a leap day", u"2024-02-29T23:59:59Z"_s, utc(2024, 2, 29, 23, 59, 59)},
             {"first year", u"0001-01-01T00:00:00Z"_s, utc(1, 1, 1)},
             {"last year", u"9999-12-31T23:59:59Z"_s, utc(9999, 12, 31, 23, 59, 59)}});
    }

    void nextBroadcastIsParsedWithAndWithoutFraction()
    {
        QFETCH(QString, text);
        QTEST(broadcastDate(text).value_or(QDateTime()), "moment");
    }

    void otherTextIsNoDate_data()
    {
        QTest::addColumn<QString>("text");
        const QString texts =
            u"|Z|tomorrow|2025-06-03|2025-06-03 17:00|20250603T170000Z|2025-6-3T17:00:00Z|"
            u"2025-06-03T17:00Z|2025-06-03T17:00:00|2025-06-03T17:00:00.250|2025-06-03T17:00:00.Z|"
            u"2025-06-03T17:00:00,250Z|2025-06-03T17:00:00.25+Z|2025-06-03T17:00:00 Z|2025-06-03T17:00:00ZZ|"
            u"2025-06-03 17:00:00Z|2025-06-03T17:00:00z|2025-06-03t17:00:00Z|"
            u" 2025-06-03T17:00:00Z|2025-06-03T17:00:00Z |"
            u"2025-06-03T17:00:00+0200|2025-06-03T17:00:00+02|2025-06-03T17:00:00+02:0|2025-06-03T17:00:00+02:000|"
            u"2025-06-03T17:00:00+24:00|2025-06-03T17:00:00+02:60|2025-06-03T17:00:00\u221202:00|"
            u"2025-02-30T17:00:00Z|2025-02-29T17:00:00Z|2025-13-01T17:00:00Z|2025-00-01T17:00:00Z|"
            u"2025-06-00T17:00:00Z|2025-06-31T17:00:00Z|0000-01-01T00:00:00Z|2025-06-03T24:00:00Z|"
            u"2025-06-03T17:60:00Z|2016-12-31T23:59:60Z|-2025-06-03T17:00:00Z|+2025-06-03T17:00:00Z|"
            u"2025-06-03T17:00:0\u0663Z|２０２５-06-03T17:00:00Z"_s;
        for (const QString& text : texts.split(u'|'))
            QTest::newRow(text.isEmpty() ? "nothing" : qPrintable(text)) << text;
    }

    void otherTextIsNoDate()
    {
        QFETCH(QString, text);
        QVERIFY(!broadcastDate(text));
    }

    void remainingTimeIsFormattedAsClock_data()
    {
        rows<qint64, QString>({"milliseconds", "text"},
                              {{"one millisecond", 1, u"00:00:00"_s},
                               {"a fraction is dropped", 59'999, u"00:00:59"_s},
                               {"a minute", 60'000, u"00:01:00"_s},
                               {"an hour", 3'600'000, u"01:00:00"_s},
                               {"nearly a day", 86'399'000, u"23:59:59"_s},
                               {"nearly a day and a fraction", 86'399'999, u"23:59:59"_s},
                               {"a day", 86'400'000, u"1d 00:00:00"_s},
                               {"a day, an hour, a minute and a second", 90'061'000, u"1d 01:01:01"_s},
                               {"many days", 8'640'000'000'000, u"100000d 00:00:00"_s}});
    }

    void remainingTimeIsFormattedAsClock()
    {
        QFETCH(qint64, milliseconds);
        QTEST(countdownText(std::chrono::milliseconds(milliseconds)), "text");
    }

    void scheduleIsShownInLocalTimeInEnglish_data()
    {
        rows<QByteArray, QDateTime, QString>(
            {"zone", "moment", "text"},
            {{"afternoon", "UTC", utc(2025, 6, 3, 17), u"Tue Jun 3 · 5:00 PM"_s},
             {"midnight", "UTC", utc(2025, 12, 31), u"Wed Dec 31 · 12:00 AM"_s},
             {"after midnight", "UTC", utc(2024, 2, 29, 0, 5), u"Thu Feb 29 · 12:05 AM"_s},
             {"noon", "UTC", utc(2025, 5, 4, 12), u"Sun May 4 · 12:00 PM"_s},
             {"before noon", "UTC", utc(2025, 3, 15, 11, 59, 59), u"Sat Mar 15 · 11:59 AM"_s},
             {"in summer time", "EST5EDT,M3.2.0,M11.1.0", utc(2025, 6, 3, 2), u"Mon Jun 2 · 10:00 PM"_s},
             {"in winter time", "EST5EDT,M3.2.0,M11.1.0", utc(2025, 1, 3, 2), u"Thu Jan 2 · 9:00 PM"_s},
             {"east of UTC", "IST-5:30", utc(2025, 10, 31, 19, 45), u"Sat Nov 1 · 1:15 AM"_s}});
        int month = 1;
        for (const QString& name :
             {u"Wed Jan"_s, u"Sat Feb"_s, u"Sat Mar"_s, u"Tue Apr"_s, u"Thu May"_s, u"Sun Jun"_s, u"Tue Jul"_s,
              u"Fri Aug"_s, u"Mon Sep"_s, u"Wed Oct"_s, u"Sat Nov"_s, u"Mon Dec"_s}) {
            QTest::newRow(qPrintable(name))
                << QByteArray("UTC") << utc(2025, month, 1, 9, 30) << name + u" 1 · 9:30 AM"_s;
            ++month;
        }
    }

    void scheduleIsShownInLocalTimeInEnglish()
    {
        QFETCH(QByteArray, zone);
        QFETCH(QDateTime, moment);
        setTimeZone(zone.constData());
        const QString read = scheduleText(moment);
        setTimeZone("UTC");
        QTEST(read, "text");
    }

    void countdownShowsTimeAndDetail_data()
    {
        const QDateTime target = utc(2025, 6, 3, 17);
        const QString none = u"no broadcast scheduled"_s;
        rows<QDateTime, QString, QDateTime, bool, QString, QString>(
            {"target", "label", "now", "counting", "headline", "detail"},
            {{"in the future", target, u"Tonight"_s, target.addSecs(-90'061), true, u"1d 01:01:01"_s, u"Tonight"_s},
             {"in the future, without a label", target, QString(), target.addMSecs(-1), true, u"00:00:00"_s,
              u"Tue Jun 3 · 5:00 PM"_s},
             {"exactly now", target, u"Tonight"_s, target, false, none, u"last on the schedule · Tonight"_s},
             {"past, without a label", target, QString(), target.addDays(400), false, none,
              u"last on the schedule · Tue Jun 3 · 5:00 PM"_s},
             {"no broadcast scheduled", QDateTime(), u"Tonight"_s, target, false, none, QString()}});
    }

    void countdownShowsTimeAndDetail()
    {
        QFETCH(QDateTime, target);
        QFETCH(QString, label);
        QFETCH(QDateTime, now);
        const auto scheduled = target.isValid() ? std::make_optional(target) : std::nullopt;
        const CountdownReading reading = countdownReading(scheduled, label, now);
        QTEST(reading.counting, "counting");
        QTEST(reading.headline, "headline");
        QTEST(reading.detail, "detail");
    }

    void tickerTextJoinsLinesOrNamesStation()
    {
        const QString hub = u"hub.example.org"_s;
        QCOMPARE(tickerText({u"One"_s}, hub), u"One"_s);
        QCOMPARE(tickerText({u"One"_s, QString(), u"Three"_s}, hub), u"One   ·      ·   Three"_s);
        QCOMPARE(tickerText({QString()}, hub), QString());
        QCOMPARE(tickerText({}, hub), u"THIS IS THE 5 O'CLOCK NEWS · QUILLMERE TELEVISION · HUB.EXAMPLE.ORG"_s);
    }

    void tickerPeriodDependsOnLength()
    {
        for (const int charactersWithLeastPeriod : {0, 100, 264})
            QCOMPARE(tickerPeriod(charactersWithLeastPeriod), 24.0);
        QCOMPARE(tickerPeriod(265), 265 / 11.0);
        QCOMPARE(tickerPeriod(330), 30.0);
        QCOMPARE(tickerPeriod(20'000), 20'000 / 11.0);
    }

    void tickerOffsetDependsOnTime_data()
    {
        const QDateTime start = utc(2001, 1, 1);
        rows<double, QDateTime, double>(
            {"period", "now", "offset"},
            {{"at the reference date", 24.0, start, 1920.0},
             {"after a quarter of the period", 24.0, start.addSecs(6), 960.0},
             {"after half of the period", 24.0, start.addSecs(12), 0.0},
             {"in the last millisecond of the period", 24.0, start.addMSecs(23'999), -1920 + 3840 / 24'000.0},
             {"in the next period", 24.0, start.addSecs(24), 1920.0},
             {"one millisecond later", 24.0, start.addMSecs(12'001), -3840 / 24'000.0},
             {"this century", 24.0, start.addSecs(24 * 32'000'000LL + 18), -960.0},
             {"in another time zone", 24.0, start.addSecs(6).toOffsetFromUtc(3 * 3600), 960.0},
             {"a longer text", 30.0, start.addSecs(30 * 1000 + 15), 0.0},
             {"a very long text", 2000.0, start.addSecs(500), 960.0},
             {"before the reference date", 24.0, start.addSecs(-6), -960.0}});
    }

    void tickerOffsetDependsOnTime()
    {
        QFETCH(double, period);
        QFETCH(QDateTime, now);
        QFETCH(double, offset);
        const double position = tickerOffset(1920, period, now);
        QVERIFY2(qAbs(position - offset) < 1e-3, qPrintable(QString::number(position, 'f', 6)));
    }

    void tickerMovesSameDistanceEachMillisecond()
    {
        const QDateTime begin = utc(2001, 1, 1).addSecs(24 * 32'000'000LL);
        double before = tickerOffset(1920, 24, begin);
        for (int millisecond = 1; millisecond < 24'000; ++millisecond) {
            const double now = tickerOffset(1920, 24, begin.addMSecs(millisecond));
            QVERIFY2(qAbs(before - now - 0.16) < 1e-3, qPrintable(QString::number(millisecond)));
            before = now;
        }
    }
};

QUILLMERE_TEST(BroadcastTextsTest, QCoreApplication)

} // namespace quillmere

#include "BroadcastTextsTest.moc"
