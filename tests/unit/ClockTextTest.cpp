#include "ClockText.h"
#include "TestMain.h"

#include <QTest>

#include <cmath>
#include <limits>
#include <locale.h>

using namespace Qt::StringLiterals;

namespace quillmere {

class ClockTextTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void positionIsFormattedAsClock_data();
    void positionIsFormattedAsClock();
};

void ClockTextTest::initTestCase()
{
    // No number may depend on the system locale. If this locale is not installed, the test detects less.
    setlocale(LC_ALL, "de_DE.UTF-8");
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
}

void ClockTextTest::positionIsFormattedAsClock_data()
{
    QTest::addColumn<double>("seconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("start") << 0.0 << u"0:00"_s;
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
    QTest::newRow("largest resume position") << 1e9 << u"277777:46:40"_s;
    QTest::newRow("negative") << -5.0 << u"0:00"_s;
    QTest::newRow("not a number") << std::nan("") << u"0:00"_s;
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << u"2562047788015215:30:07"_s;
}

void ClockTextTest::positionIsFormattedAsClock()
{
    QFETCH(const double, seconds);
    QTEST(clockText(seconds), "text");
}

QUILLMERE_TEST(ClockTextTest, QCoreApplication)

} // namespace quillmere

#include "ClockTextTest.moc"
