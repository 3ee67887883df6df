#include "StoreOnScript.h"

namespace {

const QString springfield = u"springfield"_s;
const QString springfieldTapes = u"/api/tv/tapes?page=1&per_page=200&market=springfield"_s;
const QString shelbyville = u"shelbyville"_s;
const QString shelbyvilleTapes = u"/api/tv/tapes?page=1&per_page=200&market=shelbyville"_s;

} // namespace

class StoreMarketTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anotherMarketLoadsItsTapesAndTheOldOnesStayMeanwhile()
    {
        StoreOnScript stage;
        stage.loadOnce({u"Zoning"_s});
        stage->setMarket(springfield);
        QCOMPARE(stage->market(), springfield);
        QCOMPARE(stage.titles(), QStringList{u"Zoning"_s});
        QVERIFY(!stage->isLoading());
        stage.answerTapes({u"Parade"_s}, springfieldTapes);
        QTRY_COMPARE(stage.titles(), QStringList{u"Parade"_s});
        QCOMPARE(stage->shelves().size(), 1);
    }

    void theShelvesBelongToTheMarketThatWasLoadedLast()
    {
        StoreOnScript stage;
        stage.loadOnce({u"Zoning"_s});
        QCOMPARE(stage->shelvesMarket(), QString());
        stage->setMarket(springfield);
        QCOMPARE(stage->shelvesMarket(), QString());
        stage.answerTapes({u"Parade"_s}, springfieldTapes);
        QTRY_COMPARE(stage.titles(), QStringList{u"Parade"_s});
        QCOMPARE(stage->shelvesMarket(), springfield);
        stage->setMarket(shelbyville);
        stage.fail(shelbyvilleTapes, u"cut"_s);
        stage.settle();
        QCOMPARE(stage->shelvesMarket(), springfield);
    }

    void theSameMarketTwiceLoadsOnce()
    {
        StoreOnScript stage;
        const Announcements announcements(*stage.store);
        stage->setMarket(springfield);
        stage->setMarket(springfield);
        QCOMPARE(stage.http.count(), 1);
        QCOMPARE(announcements.heard, (QStringList{u"will"_s, u"market=springfield"_s}));
        QVERIFY(announcements.wasAlwaysBefore);
    }

    void anEmptyMarketMeansAll()
    {
        StoreOnScript stage;
        stage->setMarket({});
        QCOMPARE(stage.http.count(), 0);
        stage->setMarket(springfield);
        stage->setMarket({});
        QVERIFY(stage.http.waitingFor(u"/api/tv/tapes?page=1&per_page=200"_s) >= 0);
    }

    void theAnswerForAMarketLeftBehindIsDropped()
    {
        StoreOnScript stage;
        stage->setMarket(springfield);
        stage->setMarket(shelbyville);
        stage.answerTapes({u"Shelbyville"_s}, shelbyvilleTapes);
        QTRY_COMPARE(stage.titles(), QStringList{u"Shelbyville"_s});
        stage.answerTapes({u"Springfield"_s}, springfieldTapes);
        stage.settle();
        QCOMPARE(stage.titles(), QStringList{u"Shelbyville"_s});
    }

    void theAnswerForAMarketLeftBehindIsDroppedEvenWhenItComesFirst()
    {
        StoreOnScript stage;
        const Announcements announcements(*stage.store);
        stage->setMarket(springfield);
        stage->setMarket(shelbyville);
        stage.answerTapes({u"Springfield"_s}, springfieldTapes);
        stage.settle();
        QVERIFY(stage->tapes().isEmpty());
        QCOMPARE(announcements.heard.size(), 4);
    }

    void theFailureForAMarketLeftBehindIsDropped()
    {
        StoreOnScript stage;
        stage->setMarket(springfield);
        stage->setMarket(shelbyville);
        stage.fail(springfieldTapes, u"cut"_s);
        stage.settle();
        QVERIFY(!stage->hasError());
        stage.fail(shelbyvilleTapes, u"cut too"_s);
        QTRY_COMPARE(stage->lastErrorText(), u"cut too"_s);
    }

    void aMarketChosenAgainTakesTheAnswerOfItsFirstLoad()
    {
        StoreOnScript stage;
        stage->setMarket(springfield);
        stage->setMarket({});
        stage->setMarket(springfield);
        QCOMPARE(stage.http.count(), 3);
        stage.http.answer(0, 200, StoreOnScript::pageOf({u"Springfield"_s}));
        QTRY_COMPARE(stage.titles(), QStringList{u"Springfield"_s});
    }

    void aRefreshDuringWhichTheMarketChangesEndsWithoutItsTapes()
    {
        StoreOnScript stage;
        const auto task = stage->refresh();
        stage.answerStatus();
        QTRY_COMPARE(stage.http.count(), 2);
        stage->setMarket(springfield);
        stage.http.answer(1, 200, StoreOnScript::pageOf({u"All"_s}));
        QTRY_VERIFY(!stage->isLoading());
        QVERIFY(stage->hasLoadedOnce());
        QVERIFY(stage->tapes().isEmpty());
        stage.answerTapes({u"Springfield"_s}, springfieldTapes);
        QTRY_COMPARE(stage.titles(), QStringList{u"Springfield"_s});
    }

    void aRefreshLoadsTheMarketThatIsChosenWhenTheStatusComes()
    {
        StoreOnScript stage;
        const auto task = stage->refresh();
        stage->setMarket(springfield);
        stage.answerTapes({u"Springfield"_s}, springfieldTapes);
        stage.answerStatus();
        stage.answerTapes({u"Springfield again"_s}, springfieldTapes);
        QTRY_VERIFY(!stage->isLoading());
        QCOMPARE(stage.titles(), QStringList{u"Springfield again"_s});
    }

    void aStoreMayGoWhileAMarketLoads()
    {
        StoreOnScript stage;
        stage->setMarket(springfield);
        const Announcements announcements(*stage.store);
        stage.store.reset();
        QVERIFY(stage.http.wasCancelled(0));
        stage.settle();
        QVERIFY(announcements.heard.isEmpty());
    }

    void theStockIsThatOfTheMarket_data()
    {
        QTest::addColumn<QString>("market");
        QTest::addColumn<qint64>("stock");
        QTest::newRow("all markets, the hub's total") << QString() << qint64(7);
        QTest::newRow("the first market of this slug") << springfield << qint64(5);
        QTest::newRow("a market that the hub does not list, what is loaded") << shelbyville << qint64(2);
        QTest::newRow("a slug is compared exactly") << u"Springfield"_s << qint64(2);
    }

    void theStockIsThatOfTheMarket()
    {
        QFETCH(QString, market);
        StoreOnScript stage;
        stage.loadOnce({u"Zoning"_s, u"Parade"_s});
        stage->setMarket(market);
        QTEST(stage->stockCount(), "stock");
    }

    void everyFieldMayBeWrittenFromOutside()
    {
        StoreOnScript stage;
        const Announcements announcements(*stage.store);
        TVStatus status;
        status.rewindery.tapes = 3;
        stage->setStatus(status);
        stage->setTapes({Tape()});
        stage->setTapes({Tape()});
        stage->setShelves({Shelf()});
        stage->setIsLoading(true);
        stage->setHasLoadedOnce(true);
        stage->setLastError(u"No."_s);
        stage->setLastError(QString());
        stage->setLastError(std::nullopt);
        QCOMPARE(announcements.heard,
                 (QStringList{u"will"_s, u"status=3"_s, u"will"_s, u"tapes=1"_s, u"will"_s, u"tapes=1"_s, u"will"_s,
                              u"shelves=1"_s, u"will"_s, u"isLoading=true"_s, u"will"_s, u"hasLoadedOnce=true"_s,
                              u"will"_s, u"lastError=No."_s, u"will"_s, u"lastError="_s, u"will"_s, u"lastError=-"_s}));
        QVERIFY(announcements.wasAlwaysBefore);
    }
};

QTEST_GUILESS_MAIN(StoreMarketTest)
#include "StoreMarketTest.moc"
