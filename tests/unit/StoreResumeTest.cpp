#include "Announcements.h"
#include "Rows.h"
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
    void positionIsSavedFromFirstMinuteOn_data()
    {
        rows<double, double>({"seconds", "position"}, {{"at the start", 0, 0},
                                                       {"just below a minute", 59.9, 0},
                                                       {"negative", -1, 0},
                                                       {"negative infinity", -infinity, 0},
                                                       {"a minute", 60, 60},
                                                       {"a fraction", 1234.5678, 1234.5678},
                                                       {"largest", 1e9, 1e9},
                                                       {"not a number: not saved", notANumber, 500},
                                                       {"infinite: not saved", infinity, 500},
                                                       {"above the largest: not saved", 1e9 + 1, 500}});
    }

    void positionIsSavedFromFirstMinuteOn()
    {
        QFETCH(double, seconds);
        QFETCH(double, position);
        StoreFixture fixture;
        fixture.defaults.setNumber(keyOfSeven, 500);
        fixture->saveResume(7, seconds);
        QCOMPARE(fixture.defaults.contains(keyOfSeven), position > 0);
        QCOMPARE(fixture.defaults.number(keyOfSeven), position);
        QCOMPARE(fixture->resumePosition(7), position);
    }

    void invalidStoredPositionIsReadAsZero_data()
    {
        rows<double, double>({"stored", "read"}, {{"not a number", notANumber, 0},
                                                  {"infinite", infinity, 0},
                                                  {"negative", -0.5, 0},
                                                  {"too long", 1e9 + 1, 0},
                                                  {"zero", 0, 0},
                                                  {"below a minute, not written by the store", 30, 30},
                                                  {"largest", 1e9, 1e9}});
    }

    void invalidStoredPositionIsReadAsZero()
    {
        QFETCH(double, stored);
        StoreFixture fixture;
        fixture.defaults.setNumber(keyOfSeven, stored);
        QTEST(fixture->resumePosition(7), "read");
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
