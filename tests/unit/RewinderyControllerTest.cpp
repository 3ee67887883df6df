#include "RewinderyController.h"
#include "Rows.h"
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
    void init()
    {
        m_fixture = std::make_unique<StoreFixture>();
        open();
    }

    void cleanup()
    {
        m_shop.reset();
        m_fixture.reset();
    }

    void panelIsShownWithoutShelves()
    {
        QSignalSpy changed(m_shop.get(), &RewinderyController::shelvesChanged);
        QVERIFY(!m_shop->showsShelves());
        show(u"A: 1"_s);
        QVERIFY(m_shop->showsShelves());
        QCOMPARE(m_shop->shelves()->rowCount(), 1);
        m_fixture->store->setLastError(u"X"_s);
        QVERIFY(m_shop->showsShelves());
        show({});
        QVERIFY(!m_shop->showsShelves());
        QCOMPARE(m_shop->shelves()->rowCount(), 0);
        QCOMPARE(changed.count(), 2);
    }

    void panelShowsReason_data()
    {
        rows<std::optional<QString>, QString>(
            {"lastError", "message"},
            {{"no error", {}, u"No tapes on the shelf for this view."_s},
             {"an error", u"X"_s, u"X"_s},
             {"an empty error", QString(), {}},
             {"an error longer than a screen", QString(5000, u'e'), QString(1000, u'e') + u"…"_s}});
    }

    void panelShowsReason()
    {
        QFETCH(std::optional<QString>, lastError);
        QSignalSpy changed(m_shop.get(), &RewinderyController::messageChanged);
        m_fixture->store->setLastError(u"an earlier error"_s);
        m_fixture->store->setLastError(lastError);
        QCOMPARE(changed.count(), 2);
        QTEST(m_shop->message(), "message");
    }

    void shelvesReplacePanelDuringLoad()
    {
        const auto task = m_fixture->store->refresh();
        QVERIFY(m_shop->isLoading());
        QVERIFY(!m_shop->showsShelves());
        const auto other = m_fixture->store->loadTapes();
        m_fixture->answerTapes({u"Zoning"_s});
        QTRY_VERIFY(m_shop->showsShelves());
        QVERIFY(m_shop->isLoading());
    }

    void everyRetryLoadsAgain()
    {
        QSignalSpy loading(m_shop.get(), &RewinderyController::isLoadingChanged);
        QCOMPARE(m_fixture->http.count(), 0);
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

    void stockLineFollowsStore()
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

    void pickedMarketIsSetInStore()
    {
        setMarkets(12, {{u"a"_s, u"A"_s, {}, 5}, {u"b"_s, u"B"_s, {}, 7}});
        show(u"A: 1"_s);
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

    void shelvesOfAnotherMarketStartAtFirstCassette()
    {
        show(u"A: 1 2 3; B: 4"_s);
        m_shop->shelves()->row(0)->setCurrentRow(2);
        m_fixture->store->setMarket(u"a"_s);
        QCOMPARE(m_shop->shelves()->row(0)->currentRow(), 2);
        show(u"A: 1 2 3; B: 4"_s);
        QCOMPARE(m_shop->shelves()->row(0)->currentRow(), -1);
        m_shop->shelves()->row(0)->setCurrentRow(1);
        m_fixture->store->setMarket({});
        show(u"A: 1 2 3; B: 4"_s);
        QCOMPARE(m_shop->shelves()->row(0)->currentRow(), -1);
    }

    void shelvesOfSameMarketKeepCurrentRows_data()
    {
        rows<QStringList>({"markets"},
                          {{"a refresh", {}}, {"a market chosen and reset before it loaded", {u"b"_s, u"a"_s}}});
    }

    void shelvesOfSameMarketKeepCurrentRows()
    {
        QFETCH(QStringList, markets);
        m_fixture->store->setMarket(u"a"_s);
        show(u"A: 1 2 3; B: 4"_s);
        m_shop->shelves()->row(0)->setCurrentRow(2);
        for (const QString& market : markets)
            m_fixture->store->setMarket(market);
        show(u"A: 1 2 3; B: 4"_s);
        QCOMPARE(m_shop->shelves()->row(0)->currentRow(), 2);
    }

    void shopOpenedWhileMarketLoadsResetsRowsOfNewShelves()
    {
        show(u"A: 1 2 3; B: 4"_s);
        m_fixture->store->setMarket(u"a"_s);
        open();
        m_shop->shelves()->row(0)->setCurrentRow(2);
        show(u"A: 1 2 3; B: 4"_s);
        QCOMPARE(m_shop->shelves()->row(0)->currentRow(), -1);
    }

    void marketWithoutTapesIsResetOnLeaving()
    {
        m_fixture->store->setMarket(u"a"_s);
        m_shop->disappear();
        QCOMPARE(m_fixture->store->market(), QString());
        QCOMPARE(m_fixture->http.count(), 2);
        m_shop->disappear();
        QCOMPARE(m_fixture->http.count(), 2);
    }

    void marketWithTapesIsKeptOnLeaving()
    {
        m_fixture->store->setMarket(u"a"_s);
        show(u"A: 1"_s);
        m_shop->disappear();
        QCOMPARE(m_fixture->store->market(), u"a"_s);
    }

    void marketThatFailedToLoadIsKeptOnLeaving()
    {
        m_fixture->store->setMarket(u"a"_s);
        m_fixture->fail(u"/api/tv/tapes"_s, u"The line is down."_s);
        QTRY_VERIFY(m_fixture->store->lastError());
        m_shop->disappear();
        QCOMPARE(m_fixture->store->market(), u"a"_s);
    }

    void onlyShownTapeOpensAndStaysUntilBack()
    {
        show(u"A: 1 2; B: 3"_s);
        QSignalSpy changed(m_shop->path(), &TapePath::depthChanged);
        m_shop->path()->open(m_shop->shelves()->row(0), -1);
        m_shop->path()->open(m_shop->shelves()->row(0), 2);
        m_shop->path()->open(m_shop->shelves()->row(2), 0);
        QCOMPARE(m_shop->path()->depth(), 0);
        m_shop->path()->open(m_shop->shelves()->row(0), 1);
        QCOMPARE(m_shop->path()->depth(), 1);
        m_shop->path()->open(m_shop->shelves()->row(1), 0);
        show({});
        QCOMPARE(m_shop->path()->depth(), 2);
        QCOMPARE(m_shop->path()->tapeAt(0).title, u"Tape 2"_s);
        QCOMPARE(m_shop->path()->tapeAt(1).title, u"Tape 3"_s);
        m_shop->path()->pop();
        QCOMPARE(m_shop->path()->depth(), 1);
        m_shop->path()->pop();
        m_shop->path()->pop();
        QCOMPARE(m_shop->path()->depth(), 0);
        QCOMPARE(changed.count(), 4);
    }

    void chosenTapeOfTwoWithSameIdOpens()
    {
        QList<Shelf> shelves = shelvesOf(u"A: 7; B: 7"_s);
        shelves[1].tapesByID[7].title = u"Another"_s;
        m_fixture->store->setShelves(shelves);
        m_shop->path()->open(m_shop->shelves()->row(0), 0);
        m_shop->path()->open(m_shop->shelves()->row(1), 0);
        QCOMPARE(m_shop->path()->tapeAt(0).title, u"Tape 7"_s);
        QCOMPARE(m_shop->path()->tapeAt(1).title, u"Another"_s);
    }

    void searchingChangeIsNotifiedOnce()
    {
        QSignalSpy changed(m_shop.get(), &RewinderyController::searchingChanged);
        QVERIFY(!m_shop->isSearching());
        m_shop->setSearching(true);
        m_shop->setSearching(true);
        QVERIFY(m_shop->isSearching());
        m_shop->setSearching(false);
        QCOMPARE(changed.count(), 2);
    }

private:
    void open()
    {
        m_shop = std::make_unique<RewinderyController>();
        m_shop->setStore(m_fixture->store.get());
    }

    void setMarkets(qint64 total, const QList<TapeMarket>& markets)
    {
        TVStatus status = m_fixture->store->status();
        status.rewindery.tapes = total;
        status.rewindery.markets = markets;
        m_fixture->store->setStatus(status);
    }

    void show(const QString& shelves) { m_fixture->store->setShelves(shelvesOf(shelves)); }

    std::unique_ptr<StoreFixture> m_fixture;
    std::unique_ptr<RewinderyController> m_shop;
};

QUILLMERE_TEST(RewinderyControllerTest, QGuiApplication)

} // namespace quillmere

#include "RewinderyControllerTest.moc"
