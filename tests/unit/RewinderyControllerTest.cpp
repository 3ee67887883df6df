#include "RewinderyController.h"
#include "ShelvesOfTapes.h"
#include "StoreOnScript.h"

#include <QSignalSpy>

/** The shop's screen without a window, on a store whose hub answers when and what the test says. */
class RewinderyControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void showingTheScreenLoadsNothing();
    void thePanelStandsInForShelvesThatAreNotThere();
    void thePanelSaysWhy_data();
    void thePanelSaysWhy();
    void theMessageFollowsTheStore();
    void aLaterErrorLeavesTheShelvesThere();
    void shelvesReplaceThePanelThoughALoadIsUnderWay();
    void tryingAgainLoadsAndEachTimeAnew();
    void theStockLineFollowsTheStore();
    void pickingAMarketIsTheStoresBusiness();
    void shelvesOfAnotherMarketBeginAtTheirFirstCassette();
    void shelvesOfTheSameMarketKeepTheirPlaces_data();
    void shelvesOfTheSameMarketKeepTheirPlaces();
    void aShopEnteredWhileAMarketLoadsKnowsItsShelves();
    void aMarketWithoutTapesIsGivenUpOnLeaving();
    void aMarketWithTapesIsKept();
    void aMarketThatCouldNotBeLoadedIsKept();
    void openingAndGoingBackIsThePath();
    void whatIsNotOnAShelfDoesNotOpen();
    void ofTwoTapesWithOneIdTheChosenOneOpens();
    void anOpenTapeStaysThoughTheShelvesChange();
    void searchingIsToldOnce();

private:
    void setMarkets(qint64 total, const QList<TapeMarket>& markets);

    std::unique_ptr<StoreOnScript> m_house;
    std::unique_ptr<RewinderyController> m_shop;
};

void RewinderyControllerTest::init()
{
    m_house = std::make_unique<StoreOnScript>();
    m_shop = std::make_unique<RewinderyController>();
    m_shop->setStore(m_house->store.get());
}

void RewinderyControllerTest::cleanup()
{
    m_shop.reset();
    m_house.reset();
}

void RewinderyControllerTest::setMarkets(qint64 total, const QList<TapeMarket>& markets)
{
    TVStatus status = m_house->store->status();
    status.rewindery.tapes = total;
    status.rewindery.markets = markets;
    m_house->store->setStatus(status);
}

void RewinderyControllerTest::showingTheScreenLoadsNothing()
{
    QCOMPARE(m_house->http.count(), 0);
    QCOMPARE(m_shop->path()->depth(), 0);
    QVERIFY(!m_shop->isSearching());
    QVERIFY(!m_shop->showsShelves());
}

void RewinderyControllerTest::thePanelStandsInForShelvesThatAreNotThere()
{
    QSignalSpy changed(m_shop.get(), &RewinderyController::shelvesChanged);
    m_house->store->setShelves({shelfOf(u"A"_s, {1})});
    QVERIFY(m_shop->showsShelves());
    QCOMPARE(m_shop->shelves()->rowCount(), 1);
    m_house->store->setShelves({});
    QVERIFY(!m_shop->showsShelves());
    QCOMPARE(m_shop->shelves()->rowCount(), 0);
    QCOMPARE(changed.count(), 2);
}

void RewinderyControllerTest::thePanelSaysWhy_data()
{
    QTest::addColumn<std::optional<QString>>("lastError");
    QTest::addColumn<QString>("message");
    QTest::newRow("no error") << std::optional<QString>() << u"No tapes on the shelf for this view."_s;
    QTest::newRow("an error") << std::optional(u"X"_s) << u"X"_s;
    QTest::newRow("an error without words") << std::optional(QString()) << QString();
    QTest::newRow("an error longer than a screen")
        << std::optional(QString(5000, u'e')) << QString(1000, u'e') + u"…"_s;
}

void RewinderyControllerTest::thePanelSaysWhy()
{
    QFETCH(std::optional<QString>, lastError);
    m_house->store->setLastError(lastError);
    QTEST(m_shop->message(), "message");
}

void RewinderyControllerTest::theMessageFollowsTheStore()
{
    QSignalSpy changed(m_shop.get(), &RewinderyController::messageChanged);
    m_house->store->setLastError(u"X"_s);
    m_house->store->setLastError(std::nullopt);
    QCOMPARE(changed.count(), 2);
}

void RewinderyControllerTest::aLaterErrorLeavesTheShelvesThere()
{
    m_house->store->setShelves({shelfOf(u"A"_s, {1})});
    m_house->store->setLastError(u"X"_s);
    QVERIFY(m_shop->showsShelves());
}

void RewinderyControllerTest::shelvesReplaceThePanelThoughALoadIsUnderWay()
{
    const auto task = m_house->store->refresh();
    QVERIFY(m_shop->isLoading());
    QVERIFY(!m_shop->showsShelves());
    const auto other = m_house->store->loadTapes();
    m_house->answerTapes({u"Zoning"_s});
    QTRY_VERIFY(m_shop->showsShelves());
    QVERIFY(m_shop->isLoading());
}

void RewinderyControllerTest::tryingAgainLoadsAndEachTimeAnew()
{
    QSignalSpy loading(m_shop.get(), &RewinderyController::isLoadingChanged);
    m_shop->retry();
    QCOMPARE(m_house->http.count(), 1);
    QVERIFY(m_shop->isLoading());
    m_shop->retry();
    QCOMPARE(m_house->http.count(), 2);
    for (int load = 0; load < 2; ++load) {
        m_house->answerStatus();
        m_house->answerTapes({u"Zoning"_s});
        QTRY_VERIFY(m_shop->showsShelves());
        m_house->settle();
    }
    QVERIFY(!m_shop->isLoading());
    QCOMPARE(loading.count(), 4);
}

void RewinderyControllerTest::theStockLineFollowsTheStore()
{
    QSignalSpy changed(m_shop.get(), &RewinderyController::stockLineChanged);
    QVERIFY(m_shop->stockLine().startsWith(u"0 tapes in stock — "_s));
    setMarkets(12, {{u"a"_s, u"A"_s, {}, 5}, {u"b"_s, u"B"_s, {}, 7}});
    QCOMPARE(changed.count(), 1);
    QVERIFY(m_shop->stockLine().startsWith(u"12 tapes in stock — "_s));
    m_house->store->setMarket(u"a"_s);
    QCOMPARE(changed.count(), 2);
    QVERIFY(m_shop->stockLine().startsWith(u"5 tapes in stock — "_s));
    setMarkets(1, {});
    QVERIFY(m_shop->stockLine().startsWith(u"0 tapes in stock — "_s));
    // A market that the status does not know is counted by its tapes.
    const int before = int(changed.count());
    m_house->store->setTapes({tapeOf(1)});
    QCOMPARE(changed.count(), before + 1);
    QVERIFY(m_shop->stockLine().startsWith(u"1 tapes in stock — "_s));
}

void RewinderyControllerTest::pickingAMarketIsTheStoresBusiness()
{
    setMarkets(12, {{u"a"_s, u"A"_s, {}, 5}, {u"b"_s, u"B"_s, {}, 7}});
    m_house->store->setShelves({shelfOf(u"A"_s, {1})});
    m_shop->markets()->pick(2);
    QCOMPARE(m_house->store->market(), u"b"_s);
    QCOMPARE(m_house->http.count(), 1);
    QVERIFY(m_shop->markets()->index(2).data(MarketList::SelectedRole).toBool());
    QVERIFY(m_shop->showsShelves());
    m_shop->markets()->pick(2);
    QCOMPARE(m_house->http.count(), 1);
    m_shop->markets()->pick(0);
    QCOMPARE(m_house->store->market(), QString());
}

void RewinderyControllerTest::shelvesOfAnotherMarketBeginAtTheirFirstCassette()
{
    const QList<Shelf> shelves = shelvesOf(u"A: 1 2 3; B: 4"_s);
    m_house->store->setShelves(shelves);
    m_shop->shelves()->row(0)->setPlace(2);
    m_house->store->setMarket(u"a"_s);
    QCOMPARE(m_shop->shelves()->row(0)->place(), 2);
    m_house->store->setShelves(shelves);
    QCOMPARE(m_shop->shelves()->row(0)->place(), -1);
    m_shop->shelves()->row(0)->setPlace(1);
    m_house->store->setMarket({});
    m_house->store->setShelves(shelves);
    QCOMPARE(m_shop->shelves()->row(0)->place(), -1);
}

void RewinderyControllerTest::shelvesOfTheSameMarketKeepTheirPlaces_data()
{
    QTest::addColumn<QStringList>("markets");
    QTest::newRow("a refresh") << QStringList();
    QTest::newRow("a market chosen and given up before it came") << QStringList{u"b"_s, u"a"_s};
}

void RewinderyControllerTest::shelvesOfTheSameMarketKeepTheirPlaces()
{
    QFETCH(QStringList, markets);
    const QList<Shelf> shelves = shelvesOf(u"A: 1 2 3; B: 4"_s);
    m_house->store->setMarket(u"a"_s);
    m_house->store->setShelves(shelves);
    m_shop->shelves()->row(0)->setPlace(2);
    for (const QString& market : markets)
        m_house->store->setMarket(market);
    m_house->store->setShelves(shelves);
    QCOMPARE(m_shop->shelves()->row(0)->place(), 2);
}

void RewinderyControllerTest::aShopEnteredWhileAMarketLoadsKnowsItsShelves()
{
    const QList<Shelf> shelves = shelvesOf(u"A: 1 2 3; B: 4"_s);
    m_house->store->setShelves(shelves);
    m_house->store->setMarket(u"a"_s);
    m_shop = std::make_unique<RewinderyController>();
    m_shop->setStore(m_house->store.get());
    m_shop->shelves()->row(0)->setPlace(2);
    m_house->store->setShelves(shelves);
    QCOMPARE(m_shop->shelves()->row(0)->place(), -1);
}

void RewinderyControllerTest::aMarketWithoutTapesIsGivenUpOnLeaving()
{
    m_house->store->setMarket(u"a"_s);
    m_shop->leave();
    QCOMPARE(m_house->store->market(), QString());
    QCOMPARE(m_house->http.count(), 2);
    m_shop->leave();
    QCOMPARE(m_house->http.count(), 2);
}

void RewinderyControllerTest::aMarketWithTapesIsKept()
{
    m_house->store->setMarket(u"a"_s);
    m_house->store->setShelves({shelfOf(u"A"_s, {1})});
    m_shop->leave();
    QCOMPARE(m_house->store->market(), u"a"_s);
}

void RewinderyControllerTest::aMarketThatCouldNotBeLoadedIsKept()
{
    m_house->store->setMarket(u"a"_s);
    m_house->fail(u"/api/tv/tapes"_s, u"The line is down."_s);
    QTRY_VERIFY(m_house->store->lastError());
    m_shop->leave();
    QCOMPARE(m_house->store->market(), u"a"_s);
}

void RewinderyControllerTest::openingAndGoingBackIsThePath()
{
    m_house->store->setShelves({shelfOf(u"A"_s, {1, 2}), shelfOf(u"B"_s, {3})});
    QSignalSpy changed(m_shop->path(), &TapePath::depthChanged);
    m_shop->path()->open(m_shop->shelves()->row(0), 1);
    QCOMPARE(m_shop->path()->depth(), 1);
    QCOMPARE(m_shop->path()->tapeAt(0).title, u"Tape 2"_s);
    m_shop->path()->open(m_shop->shelves()->row(1), 0);
    QCOMPARE(m_shop->path()->depth(), 2);
    QCOMPARE(m_shop->path()->tapeAt(1).title, u"Tape 3"_s);
    m_shop->path()->pop();
    QCOMPARE(m_shop->path()->depth(), 1);
    m_shop->path()->pop();
    m_shop->path()->pop();
    QCOMPARE(m_shop->path()->depth(), 0);
    QCOMPARE(changed.count(), 4);
}

void RewinderyControllerTest::whatIsNotOnAShelfDoesNotOpen()
{
    m_house->store->setShelves({shelfOf(u"A"_s, {1, 2})});
    CassetteRow* const shelf = m_shop->shelves()->row(0);
    m_shop->path()->open(shelf, -1);
    m_shop->path()->open(shelf, 2);
    m_shop->path()->open(m_shop->shelves()->row(1), 0);
    QCOMPARE(m_shop->path()->depth(), 0);
}

void RewinderyControllerTest::ofTwoTapesWithOneIdTheChosenOneOpens()
{
    Shelf shelf = shelfOf(u"A"_s, {7});
    Shelf other = shelfOf(u"B"_s, {7});
    other.tapesByID[7].title = u"Another"_s;
    m_house->store->setShelves({shelf, other});
    m_shop->path()->open(m_shop->shelves()->row(0), 0);
    m_shop->path()->open(m_shop->shelves()->row(1), 0);
    QCOMPARE(m_shop->path()->tapeAt(0).title, u"Tape 7"_s);
    QCOMPARE(m_shop->path()->tapeAt(1).title, u"Another"_s);
}

void RewinderyControllerTest::anOpenTapeStaysThoughTheShelvesChange()
{
    m_house->store->setShelves({shelfOf(u"A"_s, {1, 2})});
    m_shop->path()->open(m_shop->shelves()->row(0), 1);
    m_house->store->setShelves({});
    QCOMPARE(m_shop->path()->depth(), 1);
    QCOMPARE(m_shop->path()->tapeAt(0).title, u"Tape 2"_s);
}

void RewinderyControllerTest::searchingIsToldOnce()
{
    QSignalSpy changed(m_shop.get(), &RewinderyController::searchingChanged);
    m_shop->setSearching(true);
    m_shop->setSearching(true);
    QVERIFY(m_shop->isSearching());
    m_shop->setSearching(false);
    QCOMPARE(changed.count(), 2);
}

QTEST_MAIN(RewinderyControllerTest)
#include "RewinderyControllerTest.moc"
