#include "StoreOnScript.h"

#include <limits>

namespace {

const QString keyOfSeven = u"resume.tape.7"_s;
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

} // namespace

class StoreResumeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTapeStoppedInItsFirstMinuteForgetsItsPosition_data()
    {
        QTest::addColumn<double>("seconds");
        QTest::newRow("at the start") << 0.0;
        QTest::newRow("just below a minute") << 59.9;
        QTest::newRow("before the start") << -1.0;
        QTest::newRow("infinitely before") << -infinity;
    }

    void aTapeStoppedInItsFirstMinuteForgetsItsPosition()
    {
        QFETCH(double, seconds);
        StoreOnScript stage;
        stage.defaults.setNumber(keyOfSeven, 500);
        stage->saveResume(7, seconds);
        QVERIFY(!stage.defaults.contains(keyOfSeven));
        QCOMPARE(stage->resumePosition(7), 0.0);
    }

    void aTapeStoppedLaterKeepsItsPosition_data()
    {
        QTest::addColumn<double>("seconds");
        QTest::newRow("a minute") << 60.0;
        QTest::newRow("a fraction") << 1234.5678;
        QTest::newRow("the longest") << 1e9;
    }

    void aTapeStoppedLaterKeepsItsPosition()
    {
        QFETCH(double, seconds);
        StoreOnScript stage;
        stage.defaults.setNumber(keyOfSeven, 500);
        stage->saveResume(7, seconds);
        QCOMPARE(stage.defaults.number(keyOfSeven), seconds);
        QCOMPARE(stage->resumePosition(7), seconds);
    }

    void whatIsNoPositionIsNotKept_data()
    {
        QTest::addColumn<double>("seconds");
        QTest::newRow("not a number") << notANumber;
        QTest::newRow("without end") << infinity;
        QTest::newRow("beyond the longest") << 1e9 + 1;
    }

    void whatIsNoPositionIsNotKept()
    {
        QFETCH(double, seconds);
        StoreOnScript stage;
        stage.defaults.setNumber(keyOfSeven, 500);
        stage->saveResume(7, seconds);
        QCOMPARE(stage->resumePosition(7), 500.0);
    }

    void aDamagedPositionReadsAsNone_data()
    {
        QTest::addColumn<double>("stored");
        QTest::addColumn<double>("read");
        QTest::newRow("not a number") << notANumber << 0.0;
        QTest::newRow("without end") << infinity << 0.0;
        QTest::newRow("negative") << -0.5 << 0.0;
        QTest::newRow("too long") << 1e9 + 1 << 0.0;
        QTest::newRow("nought") << 0.0 << 0.0;
        QTest::newRow("below a minute, from elsewhere") << 30.0 << 30.0;
        QTest::newRow("the longest") << 1e9 << 1e9;
    }

    void aDamagedPositionReadsAsNone()
    {
        QFETCH(double, stored);
        StoreOnScript stage;
        stage.defaults.setNumber(keyOfSeven, stored);
        QTEST(stage->resumePosition(7), "read");
    }

    void aTapeThatWasNeverPlayedHasNoPosition()
    {
        const StoreOnScript stage;
        QCOMPARE(stage->resumePosition(7), 0.0);
    }

    void aTapePlayedToItsEndIsForgotten()
    {
        StoreOnScript stage;
        stage->saveResume(7, 90);
        stage->saveResume(8, 91);
        stage->removeResume(7);
        QCOMPARE(stage->resumePosition(7), 0.0);
        QCOMPARE(stage->resumePosition(8), 91.0);
    }

    void thePositionStandsUnderTheIdInDecimal()
    {
        StoreOnScript stage;
        stage->saveResume(std::numeric_limits<qint64>::min(), 61);
        stage->saveResume(9007199254740993, 62);
        QCOMPARE(stage.defaults.number(u"resume.tape.-9223372036854775808"_s), 61.0);
        QCOMPARE(stage.defaults.number(u"resume.tape.9007199254740993"_s), 62.0);
    }

    void savingAnnouncesNothing()
    {
        StoreOnScript stage;
        const Announcements announcements(*stage.store);
        stage->saveResume(7, 90);
        stage->saveResume(7, 1);
        QVERIFY(announcements.heard.isEmpty());
    }
};

QTEST_GUILESS_MAIN(StoreResumeTest)
#include "StoreResumeTest.moc"
