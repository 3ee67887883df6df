#include "RewinderyController.h"
#include "ShelvesOfTapes.h"
#include "StoreFixture.h"
#include "TestMain.h"

#include <QSignalSpy>

namespace quillmere {

/** Tests the shop's controller without a window, with a store whose hub is scripted. */
class RewinderyControllerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void newControllerLoadsNothing();
    void panelIsShownWithoutShelves();
    void panelShowsReason_data();
    void panelShowsReason();
    void messageFollowsStore();
    void laterErrorKeepsShelves();
    void shelvesReplacePanelDuringLoad();
    void everyRetryLoadsAgain();
    void stockLineFollowsStore();
    void pickedMarketIsSetInStore();
    void shelvesOfAnotherMarketStartAtFirstCassette();
    void shelvesOfSameMarketKeepCurrentRows_data();
    void shelvesOfSameMarketKeepCurrentRows();
    void shopOpenedWhileMarketLoadsResetsRowsOfNewShelves();
    void marketWithoutTapesIsResetOnLeaving();
    void marketWithTapesIsKeptOnLeaving();
    void marketThatFailedToLoadIsKeptOnLeaving();
    void openAndBackChangePath();
    void invalidRowDoesNotOpen();
    void chosenTapeOfTwoWithSameIdOpens();
    void openTapeStaysWhenShelvesChange();
    void searchingChangeIsNotifiedOnce();

private:
    void setMarkets(qint64 total, const QList<TapeMarket>& markets);

    std::unique_ptr<StoreFixture> m_fixture;
    std::unique_ptr<RewinderyController> m_shop;
};

void RewinderyControllerTest::init()
{
    m_fixture = std::make_unique<StoreFixture>();
    m_shop = std::make_unique<RewinderyController>();
    m_shop->setStore(m_fixture->store.get());
}

void RewinderyControllerTest::cleanup()
{
    m_shop.reset();
    m_fixture.reset();
}

void RewinderyControllerTest::setMarkets(qint64 total, const QList<TapeMarket>& markets)
{
    TVStatus status = m_fixture->store->status();
    status.rewindery.tapes = total;
    status.rewindery.markets = markets;
    m_fixture->store->setStatus(status);
}

void RewinderyControllerTest::newControllerLoadsNothing()
{
    QCOMPARE(m_fixture->http.count(), 0);
    QCOMPARE(m_shop->path()->depth(), 0);
    QVERIFY(!m_shop->isSearching());
    QVERIFY(!m_shop->showsShelves());
}

void RewinderyControllerTest::panelIsShownWithoutShelves()
{
    QSignalSpy changed(m_shop.get(), &RewinderyController::shelvesChanged);
    m_fixture->store->setShelves({shelfOf(u"A"_s, {1})});
    QVERIFY(m_shop->showsShelves());
    QCOMPARE(m_shop->shelves()->rowCount(), 1);
    m_fixture->store->setShelves({});
    QVERIFY(!m_shop->showsShelves());
    QCOMPARE(m_shop->shelves()->rowCount(), 0);
    QCOMPARE(changed.count(), 2);
}

void RewinderyControllerTest::panelShowsReason_data()
{
    QTest::addColumn<std::optional<QString>>("lastError");
    QTest::addColumn<QString>("message");
    QTest::newRow("no error") << std::optional<QString>() << u"No tapes on the shelf for this view."_s;
    QTest::newRow("an error") << std::optional(u"X"_s) << u"X"_s;
    QTest::newRow("an empty error") << std::optional(QString()) << QString();
    QTest::newRow("an error longer than a screen")
        << std::optional(QString(5000, u'e')) << QString(1000, u'e') + u"…"_s;
}

void RewinderyControllerTest::panelShowsReason()
{
    QFETCH(std::optional<QString>, lastError);
    m_fixture->store->setLastError(lastError);
    QTEST(m_shop->message(), "message");
}

void RewinderyControllerTest::messageFollowsStore()
{
    QSignalSpy changed(m_shop.get(), &RewinderyController::messageChanged);
    m_fixture->store->setLastError(u"X"_s);
    m_fixture->store->setLastError(std::nullopt);
    QCOMPARE(changed.count(), 2);
}

void RewinderyControllerTest::laterErrorKeepsShelves()
{
    m_fixture->store->setShelves({shelfOf(u"A"_s, {1})});
    m_fixture->store->setLastError(u"X"_s);
    QVERIFY(m_shop->showsShelves());
}

void RewinderyControllerTest::shelvesReplacePanelDuringLoad()
{
    const auto task = m_fixture->store->refresh();
    QVERIFY(m_shop->isLoading());
    QVERIFY(!m_shop->showsShelves());
    const auto other = m_fixture->store->loadTapes();
    m_fixture->answerTapes({u"Zoning"_s});
    QTRY_VERIFY(m_shop->showsShelves());
    QVERIFY(m_shop->isLoading());
}

void RewinderyControllerTest::everyRetryLoadsAgain()
{
    QSignalSpy loading(m_shop.get(), &RewinderyController::isLoadingChanged);
    m_shop->retry();
    QCOMPARE(m_fixture->http.count(), 1);
    QVERIFY(m_shop->isLoading());
    m_shop->retry();
    QCOMPARE(m_fixture->http.count(), 2);
    for (int load = 0; load < 2; ++load) {
        m_fixture->answerStatus();
        m_fixture->answerTapes({u"Zoning"_s});
        QTRY_VERIFY(m_shop->showsShelves());
        m_fixture->waitForDecoding();
    }
    QVERIFY(!m_shop->isLoading());
    QCOMPARE(loading.count(), 4);
}

void RewinderyControllerTest::stockLineFollowsStore()
{
    QSignalSpy changed(m_shop.get(), &RewinderyController::stockLineChanged);
    QVERIFY(m_shop->stockLine().startsWith(u"0 tapes in stock — "_s));
    setMarkets(12, {{u"a"_s, u"A"_s, {}, 5}, {u"b"_s, u"B"_s, {}, 7}});
    QCOMPARE(changed.count(), 1);
    QVERIFY(m_shop->stockLine().startsWith(u"12 tapes in stock — "_s));
    m_fixture->store->setMarket(u"a"_s);
    QCOMPARE(changed.count(), 2);
    QVERIFY(m_shop->stockLine().startsWith(u"5 tapes in stock — "_s));
    setMarkets(1, {});
    QVERIFY(m_shop->stockLine().startsWith(u"0 tapes in stock — "_s));
    // The tapes of a market that is not in the status are counted.
    const int before = int(changed.count());
    m_fixture->store->setTapes({tapeOf(1)});
    QCOMPARE(changed.count(), before + 1);
    QVERIFY(m_shop->stockLine().startsWith(u"1 tapes in stock — "_s));
}

void RewinderyControllerTest::pickedMarketIsSetInStore()
{
    setMarkets(12, {{u"a"_s, u"A"_s, {}, 5}, {u"b"_s, u"B"_s, {}, 7}});
    m_fixture->store->setShelves({shelfOf(u"A"_s, {1})});
    m_shop->markets()->pick(2);
    QCOMPARE(m_fixture->store->market(), u"b"_s);
    QCOMPARE(m_fixture->http.count(), 1);
    QVERIFY(m_shop->markets()->index(2).data(MarketList::SelectedRole).toBool());
    QVERIFY(m_shop->showsShelves());
    m_shop->markets()->pick(2);
    QCOMPARE(m_fixture->http.count(), 1);
    m_shop->markets()->pick(0);
    QCOMPARE(m_fixture->store->market(), QString());
}

void RewinderyControllerTest::shelvesOfAnotherMarketStartAtFirstCassette()
{
    const QList<Shelf> shelves = shelvesOf(u"A: 1 2 3; B: 4"_s);
    m_fixture->store->setShelves(shelves);
    m_shop->shelves()->row(0)->setCurrentRow(2);
    m_fixture->store->setMarket(u"a"_s);
    QCOMPARE(m_shop->shelves()->row(0)->currentRow(), 2);
    m_fixture->store->setShelves(shelves);
    QCOMPARE(m_shop->shelves()->row(0)->currentRow(), -1);
    m_shop->shelves()->row(0)->setCurrentRow(1);
    m_fixture->store->setMarket({});
    m_fixture->store->setShelves(shelves);
    QCOMPARE(m_shop->shelves()->row(0)->currentRow(), -1);
}

void RewinderyControllerTest::shelvesOfSameMarketKeepCurrentRows_data()
{
    QTest::addColumn<QStringList>("markets");
    QTest::newRow("a refresh") << QStringList();
    QTest::newRow("a market chosen and reset before it loaded") << QStringList{u"b"_s, u"a"_s};
}

void RewinderyControllerTest::shelvesOfSameMarketKeepCurrentRows()
{
    QFETCH(QStringList, markets);
    const QList<Shelf> shelves = shelvesOf(u"A: 1 2 3; B: 4"_s);
    m_fixture->store->setMarket(u"a"_s);
    m_fixture->store->setShelves(shelves);
    m_shop->shelves()->row(0)->setCurrentRow(2);
    for (const QString& market : markets)
        m_fixture->store->setMarket(market);
    m_fixture->store->setShelves(shelves);
    QCOMPARE(m_shop->shelves()->row(0)->currentRow(), 2);
}

void RewinderyControllerTest::shopOpenedWhileMarketLoadsResetsRowsOfNewShelves()
{
    const QList<Shelf> shelves = shelvesOf(u"A: 1 2 3; B: 4"_s);
    m_fixture->store->setShelves(shelves);
    m_fixture->store->setMarket(u"a"_s);
    m_shop = std::make_unique<RewinderyController>();
    m_shop->setStore(m_fixture->store.get());
    m_shop->shelves()->row(0)->setCurrentRow(2);
    m_fixture->store->setShelves(shelves);
    QCOMPARE(m_shop->shelves()->row(0)->currentRow(), -1);
}

void RewinderyControllerTest::marketWithoutTapesIsResetOnLeaving()
{
    m_fixture->store->setMarket(u"a"_s);
    m_shop->disappear();
    QCOMPARE(m_fixture->store->market(), QString());
    QCOMPARE(m_fixture->http.count(), 2);
    m_shop->disappear();
    QCOMPARE(m_fixture->http.count(), 2);
}

void RewinderyControllerTest::marketWithTapesIsKeptOnLeaving()
{
    m_fixture->store->setMarket(u"a"_s);
    m_fixture->store->setShelves({shelfOf(u"A"_s, {1})});
    m_shop->disappear();
    QCOMPARE(m_fixture->store->market(), u"a"_s);
}

void RewinderyControllerTest::marketThatFailedToLoadIsKeptOnLeaving()
{
    m_fixture->store->setMarket(u"a"_s);
    m_fixture->fail(u"/api/tv/tapes"_s, u"The line is down."_s);
    QTRY_VERIFY(m_fixture->store->lastError());
    m_shop->disappear();
    QCOMPARE(m_fixture->store->market(), u"a"_s);
}

void RewinderyControllerTest::openAndBackChangePath()
{
    m_fixture->store->setShelves({shelfOf(u"A"_s, {1, 2}), shelfOf(u"B"_s, {3})});
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

void RewinderyControllerTest::invalidRowDoesNotOpen()
{
    m_fixture->store->setShelves({shelfOf(u"A"_s, {1, 2})});
    CassetteRow* const shelf = m_shop->shelves()->row(0);
    m_shop->path()->open(shelf, -1);
    m_shop->path()->open(shelf, 2);
    m_shop->path()->open(m_shop->shelves()->row(1), 0);
    QCOMPARE(m_shop->path()->depth(), 0);
}

void RewinderyControllerTest::chosenTapeOfTwoWithSameIdOpens()
{
    Shelf shelf = shelfOf(u"A"_s, {7});
    Shelf other = shelfOf(u"B"_s, {7});
    other.tapesByID[7].title = u"Another"_s;
    m_fixture->store->setShelves({shelf, other});
    m_shop->path()->open(m_shop->shelves()->row(0), 0);
    m_shop->path()->open(m_shop->shelves()->row(1), 0);
    QCOMPARE(m_shop->path()->tapeAt(0).title, u"Tape 7"_s);
    QCOMPARE(m_shop->path()->tapeAt(1).title, u"Another"_s);
}

void RewinderyControllerTest::openTapeStaysWhenShelvesChange()
{
    m_fixture->store->setShelves({shelfOf(u"A"_s, {1, 2})});
    m_shop->path()->open(m_shop->shelves()->row(0), 1);
    m_fixture->store->setShelves({});
    QCOMPARE(m_shop->path()->depth(), 1);
    QCOMPARE(m_shop->path()->tapeAt(0).title, u"Tape 2"_s);
}

void RewinderyControllerTest::searchingChangeIsNotifiedOnce()
{
    QSignalSpy changed(m_shop.get(), &RewinderyController::searchingChanged);
    m_shop->setSearching(true);
    m_shop->setSearching(true);
    QVERIFY(m_shop->isSearching());
    m_shop->setSearching(false);
    QCOMPARE(changed.count(), 2);
}

QUILLMERE_TEST(RewinderyControllerTest, QGuiApplication)

} // namespace quillmere

#include "RewinderyControllerTest.moc"
