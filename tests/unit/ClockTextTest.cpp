#include "ClockText.h"

#include <QTest>

#include <cmath>
#include <limits>
#include <locale.h>

using namespace Qt::StringLiterals;

class ClockTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aPositionReadsAsAClock_data();
    void aPositionReadsAsAClock();
};

void ClockTextTest::initTestCase()
{
    // No number may follow the machine's locale; where the machine has no such locale the test has less to catch.
    setlocale(LC_ALL, "de_DE.UTF-8");
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
}

void ClockTextTest::aPositionReadsAsAClock_data()
{
    QTest::addColumn<double>("seconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("the top") << 0.0 << u"0:00"_s;
    QTest::newRow("below a second") << 0.999 << u"0:00"_s;
    QTest::newRow("seconds in two digits") << 9.0 << u"0:09"_s;
    QTest::newRow("below a minute") << 59.0 << u"0:59"_s;
    QTest::newRow("a fraction is dropped") << 59.4 << u"0:59"_s;
    QTest::newRow("nearly a minute") << 59.999 << u"0:59"_s;
    QTest::newRow("a minute") << 60.0 << u"1:00"_s;
    QTest::newRow("minutes in one digit") << 125.0 << u"2:05"_s;
    QTest::newRow("nearly an hour") << 3599.9 << u"59:59"_s;
    QTest::newRow("an hour") << 3600.0 << u"1:00:00"_s;
    QTest::newRow("hours") << 3725.0 << u"1:02:05"_s;
    QTest::newRow("more than a day") << 100000.0 << u"27:46:40"_s;
    QTest::newRow("the longest kept") << 1e9 << u"277777:46:40"_s;
    QTest::newRow("before the top") << -5.0 << u"0:00"_s;
    QTest::newRow("no number") << std::nan("") << u"0:00"_s;
    QTest::newRow("without end") << std::numeric_limits<double>::infinity() << u"2562047788015215:30:07"_s;
}

void ClockTextTest::aPositionReadsAsAClock()
{
    QFETCH(const double, seconds);
    QTEST(clockText(seconds), "text");
}

QTEST_GUILESS_MAIN(ClockTextTest)
#include "ClockTextTest.moc"
