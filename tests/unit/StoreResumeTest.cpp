#include "Announcements.h"
#include "StoreFixture.h"
#include "TestMain.h"

#include <limits>

namespace quillmere {

namespace {

const QString keyOfSeven = u"resume.tape.7"_s;
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

} // namespace

class StoreResumeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void positionInFirstMinuteIsRemoved_data()
    {
        QTest::addColumn<double>("seconds");
        QTest::newRow("at the start") << 0.0;
        QTest::newRow("just below a minute") << 59.9;
        QTest::newRow("negative") << -1.0;
        QTest::newRow("negative infinity") << -infinity;
    }

    void positionInFirstMinuteIsRemoved()
    {
        QFETCH(double, seconds);
        StoreFixture fixture;
        fixture.defaults.setNumber(keyOfSeven, 500);
        fixture->saveResume(7, seconds);
        QVERIFY(!fixture.defaults.contains(keyOfSeven));
        QCOMPARE(fixture->resumePosition(7), 0.0);
    }

    void positionAfterFirstMinuteIsSaved_data()
    {
        QTest::addColumn<double>("seconds");
        QTest::newRow("a minute") << 60.0;
        QTest::newRow("a fraction") << 1234.5678;
        QTest::newRow("largest") << 1e9;
    }

    void positionAfterFirstMinuteIsSaved()
    {
        QFETCH(double, seconds);
        StoreFixture fixture;
        fixture.defaults.setNumber(keyOfSeven, 500);
        fixture->saveResume(7, seconds);
        QCOMPARE(fixture.defaults.number(keyOfSeven), seconds);
        QCOMPARE(fixture->resumePosition(7), seconds);
    }

    void invalidPositionIsNotSaved_data()
    {
        QTest::addColumn<double>("seconds");
        QTest::newRow("not a number") << notANumber;
        QTest::newRow("infinite") << infinity;
        QTest::newRow("above the largest") << 1e9 + 1;
    }

    void invalidPositionIsNotSaved()
    {
        QFETCH(double, seconds);
        StoreFixture fixture;
        fixture.defaults.setNumber(keyOfSeven, 500);
        fixture->saveResume(7, seconds);
        QCOMPARE(fixture->resumePosition(7), 500.0);
    }

    void invalidStoredPositionIsReadAsZero_data()
    {
        QTest::addColumn<double>("stored");
        QTest::addColumn<double>("read");
        QTest::newRow("not a number") << notANumber << 0.0;
        QTest::newRow("infinite") << infinity << 0.0;
        QTest::newRow("negative") << -0.5 << 0.0;
        QTest::newRow("too long") << 1e9 + 1 << 0.0;
        QTest::newRow("zero") << 0.0 << 0.0;
        QTest::newRow("below a minute, not written by the store") << 30.0 << 30.0;
        QTest::newRow("largest") << 1e9 << 1e9;
    }

    void invalidStoredPositionIsReadAsZero()
    {
        QFETCH(double, stored);
        StoreFixture fixture;
        fixture.defaults.setNumber(keyOfSeven, stored);
        QTEST(fixture->resumePosition(7), "read");
    }

    void tapeNeverPlayedHasNoPosition()
    {
        const StoreFixture fixture;
        QCOMPARE(fixture->resumePosition(7), 0.0);
    }

    void removedPositionIsZero()
    {
        StoreFixture fixture;
        fixture->saveResume(7, 90);
        fixture->saveResume(8, 91);
        fixture->removeResume(7);
        QCOMPARE(fixture->resumePosition(7), 0.0);
        QCOMPARE(fixture->resumePosition(8), 91.0);
    }

    void positionIsStoredUnderDecimalId()
    {
        StoreFixture fixture;
        fixture->saveResume(std::numeric_limits<qint64>::min(), 61);
        fixture->saveResume(9007199254740993, 62);
        QCOMPARE(fixture.defaults.number(u"resume.tape.-9223372036854775808"_s), 61.0);
        QCOMPARE(fixture.defaults.number(u"resume.tape.9007199254740993"_s), 62.0);
    }

    void savingPositionAnnouncesNothing()
    {
        StoreFixture fixture;
        const Announcements announcements(*fixture.store);
        fixture->saveResume(7, 90);
        fixture->saveResume(7, 1);
        QVERIFY(announcements.received.isEmpty());
    }
};

QUILLMERE_TEST(StoreResumeTest, QCoreApplication)

} // namespace quillmere

#include "StoreResumeTest.moc"
