#include "Announcements.h"
#include "Rows.h"
#include "StoreFixture.h"
#include "TestMain.h"

namespace quillmere {

namespace {

const QString springfield = u"springfield"_s;
const QString shelbyville = u"shelbyville"_s;
const QString springfieldTapes = u"/api/tv/tapes?page=1&per_page=200&market=springfield"_s;
const QString shelbyvilleTapes = u"/api/tv/tapes?page=1&per_page=200&market=shelbyville"_s;

} // namespace

class StoreMarketTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newMarketLoadsTapesAndKeepsOldOnesMeanwhile()
    {
        StoreFixture fixture;
        fixture.loadOnce({u"Zoning"_s});
        fixture->setMarket(springfield);
        QCOMPARE(fixture->market(), springfield);
        QCOMPARE(fixture->shelvesMarket(), QString());
        QCOMPARE(fixture.titles(), QStringList{u"Zoning"_s});
        QVERIFY(!fixture->isLoading());
        fixture.answerTapes({u"Parade"_s}, springfieldTapes);
        QTRY_COMPARE(fixture.titles(), QStringList{u"Parade"_s});
        QCOMPARE(fixture->shelves().size(), 1);
        QCOMPARE(fixture->shelvesMarket(), springfield);
        // The shelves stay those of the last loaded market.
        fixture->setMarket(shelbyville);
        fixture.fail(shelbyvilleTapes, u"cut"_s);
        fixture.waitForDecoding();
        QCOMPARE(fixture->shelvesMarket(), springfield);
    }

    void sameMarketTwiceLoadsOnce()
    {
        StoreFixture fixture;
        const Announcements announcements(*fixture.store);
        fixture->setMarket(springfield);
        fixture->setMarket(springfield);
        QCOMPARE(fixture.http.count(), 1);
        QCOMPARE(announcements.received, QStringList{u"market=springfield"_s});
    }

    void emptyMarketLoadsAllTapes()
    {
        StoreFixture fixture;
        fixture->setMarket({});
        QCOMPARE(fixture.http.count(), 0);
        fixture->setMarket(springfield);
        fixture->setMarket({});
        QVERIFY(fixture.http.waitingFor(u"/api/tv/tapes?page=1&per_page=200"_s) >= 0);
    }

    void lateAnswerForPreviousMarketIsIgnored()
    {
        StoreFixture fixture;
        fixture->setMarket(springfield);
        fixture->setMarket(shelbyville);
        fixture.answerTapes({u"Shelbyville"_s}, shelbyvilleTapes);
        QTRY_COMPARE(fixture.titles(), QStringList{u"Shelbyville"_s});
        fixture.answerTapes({u"Springfield"_s}, springfieldTapes);
        fixture.waitForDecoding();
        QCOMPARE(fixture.titles(), QStringList{u"Shelbyville"_s});
    }

    void earlyAnswerForPreviousMarketIsIgnored()
    {
        StoreFixture fixture;
        const Announcements announcements(*fixture.store);
        fixture->setMarket(springfield);
        fixture->setMarket(shelbyville);
        fixture.answerTapes({u"Springfield"_s}, springfieldTapes);
        fixture.waitForDecoding();
        QVERIFY(fixture->tapes().isEmpty());
        QCOMPARE(announcements.received, (QStringList{u"market=springfield"_s, u"market=shelbyville"_s}));
    }

    void failureForPreviousMarketIsIgnored()
    {
        StoreFixture fixture;
        fixture->setMarket(springfield);
        fixture->setMarket(shelbyville);
        fixture.fail(springfieldTapes, u"cut"_s);
        fixture.waitForDecoding();
        QVERIFY(!fixture->hasError());
        fixture.fail(shelbyvilleTapes, u"cut too"_s);
        QTRY_COMPARE(fixture->lastErrorText(), u"cut too"_s);
    }

    void marketChosenAgainUsesAnswerOfFirstLoad()
    {
        StoreFixture fixture;
        fixture->setMarket(springfield);
        fixture->setMarket({});
        fixture->setMarket(springfield);
        QCOMPARE(fixture.http.count(), 3);
        fixture.http.answer(0, 200, StoreFixture::pageOf({u"Springfield"_s}));
        QTRY_COMPARE(fixture.titles(), QStringList{u"Springfield"_s});
    }

    void refreshIgnoresTapesIfMarketChanged()
    {
        StoreFixture fixture;
        const auto task = fixture->refresh();
        fixture.answerStatus();
        QTRY_COMPARE(fixture.http.count(), 2);
        fixture->setMarket(springfield);
        fixture.http.answer(1, 200, StoreFixture::pageOf({u"All"_s}));
        QTRY_VERIFY(!fixture->isLoading());
        QVERIFY(fixture->hasLoadedOnce());
        QVERIFY(fixture->tapes().isEmpty());
        fixture.answerTapes({u"Springfield"_s}, springfieldTapes);
        QTRY_COMPARE(fixture.titles(), QStringList{u"Springfield"_s});
    }

    void refreshLoadsMarketChosenWhenStatusArrives()
    {
        StoreFixture fixture;
        const auto task = fixture->refresh();
        fixture->setMarket(springfield);
        fixture.answerTapes({u"Springfield"_s}, springfieldTapes);
        fixture.answerStatus();
        fixture.answerTapes({u"Springfield again"_s}, springfieldTapes);
        QTRY_VERIFY(!fixture->isLoading());
        QCOMPARE(fixture.titles(), QStringList{u"Springfield again"_s});
    }

    void storeMayBeDestroyedWhileMarketLoads()
    {
        StoreFixture fixture;
        fixture->setMarket(springfield);
        const Announcements announcements(*fixture.store);
        fixture.store.reset();
        QVERIFY(fixture.http.wasCancelled(0));
        fixture.waitForDecoding();
        QVERIFY(announcements.received.isEmpty());
    }

    void stockCountIsThatOfMarket_data()
    {
        rows<QString, qint64>({"market", "stock"}, {{"all markets: total of the hub", QString(), 7},
                                                    {"first market with this slug", springfield, 5},
                                                    {"unknown market: loaded tapes", shelbyville, 2},
                                                    {"slug in different case", u"Springfield"_s, 2}});
    }

    void stockCountIsThatOfMarket()
    {
        QFETCH(QString, market);
        StoreFixture fixture;
        fixture.loadOnce({u"Zoning"_s, u"Parade"_s});
        fixture->setMarket(market);
        QTEST(fixture->stockCount(), "stock");
    }

    void everySetterAnnouncesChange()
    {
        StoreFixture fixture;
        const Announcements announcements(*fixture.store);
        TVStatus status;
        status.rewindery.tapes = 3;
        fixture->setStatus(status);
        fixture->setTapes({Tape()});
        fixture->setTapes({Tape()});
        fixture->setShelves({Shelf()});
        fixture->setIsLoading(true);
        fixture->setHasLoadedOnce(true);
        fixture->setLastError(u"No."_s);
        fixture->setLastError(QString());
        fixture->setLastError(std::nullopt);
        QCOMPARE(announcements.received,
                 (QStringList{u"status=3"_s, u"tapes=1"_s, u"tapes=1"_s, u"shelves=1"_s, u"isLoading=true"_s,
                              u"hasLoadedOnce=true"_s, u"lastError=No."_s, u"lastError="_s, u"lastError=-"_s}));
    }
};

QUILLMERE_TEST(StoreMarketTest, QCoreApplication)

} // namespace quillmere

#include "StoreMarketTest.moc"
