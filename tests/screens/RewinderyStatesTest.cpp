#include "CassetteRow.h"
#include "Rows.h"
#include "ScrollArea.h"
#include "ShopFixture.h"
#include "TestMain.h"

#include <QAccessible>

namespace quillmere {

/** The shop when the store changes: refreshes, markets, empty shelves. */
class RewinderyStatesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<ShopFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void refreshKeepsFocusedTape_data()
    {
        // Before: "A: 1 2 3; B: 4 5 6; C: 7 8", with the focus on tape 5.
        rows<QString, QString>(
            {"after", "focusedName"},
            {{"nothing changed", u"A: 1 2 3; B: 4 5 6; C: 7 8"_s, u"Tape 5"_s},
             {"tapes inserted before", u"A: 1 2 3; B: 31 32 33 34 35 36 37 38 4 5 6; C: 7 8"_s, u"Tape 5"_s},
             {"all others removed", u"B: 5"_s, u"Tape 5"_s},
             {"in another order", u"C: 8 7; B: 6 5 4; A: 3"_s, u"Tape 5"_s},
             {"shelves inserted before", u"N: 91; M: 92; L: 93; K: 94; A: 1; B: 4 5"_s, u"Tape 5"_s},
             {"moved to another shelf", u"A: 1 5; B: 4 6; C: 7 8"_s, u"Tape 5"_s},
             {"moved to a distant new shelf", u"A: 1; B: 4; C: 7; D: 21; E: 22; F: 23; G: 24 25 5"_s, u"Tape 5"_s},
             {"removed", u"A: 1 2 3; B: 4 6; C: 7 8"_s, u"Tape 6"_s},
             {"removed from the end", u"A: 1 2 3; B: 4; C: 7 8"_s, u"Tape 4"_s},
             {"removed with its shelf", u"A: 1 2 3; C: 7 8"_s, u"Tape 8"_s},
             {"another market", u"X: 21; Y: 22 23"_s, u"Tape 23"_s},
             {"all shelves removed", QString(), u"Try again"_s}});
    }

    void refreshKeepsFocusedTape()
    {
        QFETCH(QString, after);
        m_fixture->show(u"A: 1 2 3; B: 4 5 6; C: 7 8"_s);
        QCOMPARE(m_fixture->focusedAfter({Qt::Key_Down, Qt::Key_Down, Qt::Key_Right}), u"Tape 5"_s);
        m_fixture->waitUntilIdle();
        m_fixture->show(after);
        QTEST(m_fixture->focusedName(), "focusedName");
        QVERIFY(m_fixture->isFocusOnScreen());
    }

    void refreshKeepsFocusOnCounter()
    {
        m_fixture->show(u"A: 1 2 3; B: 4 5 6"_s);
        QCOMPARE(m_fixture->focusedAfter({Qt::Key_Down, Qt::Key_Right, Qt::Key_Up}), u"Search the stacks"_s);
        m_fixture->show(u"B: 4 6; C: 2"_s);
        QCOMPARE(m_fixture->focusedName(), u"Search the stacks"_s);
    }

    void panelShowsReasonWithoutShelves()
    {
        QVERIFY(m_fixture->text(u"Rewindery"_s));
        QVERIFY(m_fixture->text(u"No tapes on the shelf for this view."_s));
        QVERIFY(!m_fixture->text(u"Checking the shelves…"_s));
        QVERIFY(!m_fixture->text(u"HOME VIDEO"_s));
        QCOMPARE(m_fixture->focusedName(), u"Try again"_s);
        showError(u"X"_s);
        QVERIFY(m_fixture->text(u"X"_s));
        QVERIFY(!m_fixture->text(u"No tapes on the shelf for this view."_s));
        showError(QString(5000, u'\n') + u"Y"_s);
        QVERIFY(m_fixture->isFocusOnScreen());
        QVERIFY(m_fixture->areaOf(u"Rewindery"_s).top() > 0);
        // More lines than fit in the panel's height; no other limit applies.
        const QString reason = u"one line of many\n"_s.repeated(18) + u"the last"_s;
        showError(reason);
        QVERIFY(m_fixture->text(reason));
        QVERIFY(!m_fixture->text(reason)->property("truncated").toBool());
        QVERIFY(m_fixture->isFocusOnScreen());
        QVERIFY(m_fixture->areaOf(u"Rewindery"_s).top() > 0);
    }

    void tryAgainShowsSpinnerUntilShelvesArrive()
    {
        m_fixture->press(Qt::Key_Select);
        QVERIFY(m_fixture->store->isLoading());
        QVERIFY(m_fixture->text(u"Checking the shelves…"_s));
        QVERIFY(!m_fixture->text(u"Try again"_s));
        QQuickItem* spinner = TestScreen::first(m_fixture->shop(), "Spinner");
        QVERIFY(spinner && spinner->isVisible());
        QCOMPARE(m_fixture->areaOnCanvas(spinner).width(), 1.6 * spinner->width());
        QTRY_COMPARE(m_fixture->focused(), m_fixture->front());
        m_fixture->answer(u"/api/tv/status"_s, R"({"rewindery": {"tapes": 1}})");
        m_fixture->answer(u"/api/tv/tapes"_s, R"({"items": [{"id": 1, "title": "Zoning"}]})");
        QTRY_VERIFY(!m_fixture->store->isLoading());
        QVERIFY(m_fixture->focusable(u"Zoning"_s));
        QTRY_COMPARE(m_fixture->focusedName(), u"Search the stacks"_s);
        QVERIFY(!spinner->isVisible());
    }

    void failedTryAgainCanBeRepeated()
    {
        for (int attempt = 0; attempt < 2; ++attempt) {
            m_fixture->press(Qt::Key_Select);
            m_fixture->answer(u"/api/tv/status"_s, {}, 500);
            m_fixture->answer(u"/api/tv/tapes"_s, {}, 503);
            QTRY_VERIFY(!m_fixture->store->isLoading());
            QVERIFY(m_fixture->text(m_fixture->store->lastErrorText()));
            QTRY_COMPARE(m_fixture->focusedName(), u"Try again"_s);
        }
        QCOMPARE(m_fixture->http.count(), 4);
    }

    void newMarketShowsEveryShelfFromItsFirstCassette_data()
    {
        const QString other = shelf(u"B"_s, 301, 20);
        rows<QString>({"after"}, {{"none of its tapes", shelf(u"A"_s, 201, 12) + u"; "_s + other},
                                  {"some of its tapes", shelf(u"A"_s, 9, 12) + u"; "_s + other},
                                  {"only its tapes", shelf(u"A"_s, 1, 20) + u"; "_s + shelf(u"B"_s, 101, 20)},
                                  {"more tapes", shelf(u"A"_s, 201, 40) + u"; "_s + other},
                                  {"a tape or two", shelf(u"A"_s, 12, 2) + u"; B: 301"_s},
                                  {"the shelves in another order", other + u"; "_s + shelf(u"A"_s, 1, 20)}});
    }

    void newMarketShowsEveryShelfFromItsFirstCassette()
    {
        QFETCH(QString, after);
        focusTape13();
        m_fixture->showMarkets({u"a"_s, u"b"_s});
        m_fixture->press(Qt::Key_Down);
        m_fixture->press(Qt::Key_Right, 12);
        QCOMPARE(m_fixture->focusedAfter({Qt::Key_Up, Qt::Key_Up, Qt::Key_Right, Qt::Key_Right}), u"A 1"_s);
        m_fixture->waitUntilIdle();

        chooseMarket(u"a"_s, after);
        for (const QString& name : {u"A"_s, u"B"_s}) {
            QVERIFY(strip(name));
            QCOMPARE(strip(name)->position(), 0.0);
            QCOMPARE(strip(name)->targetPosition(), 0.0);
        }
        // Focus goes to the card nearest to the chip, not to the last position on another market's shelf, so nothing
        // scrolls.
        m_fixture->press(Qt::Key_Down);
        QVERIFY(m_fixture->isFocusOnScreen());
        for (const QString& name : {u"A"_s, u"B"_s})
            QCOMPARE(strip(name)->targetPosition(), 0.0);
    }

    void focusedTapeIsKeptWhenMarketChanges()
    {
        focusTape13();
        m_fixture->waitUntilIdle();
        chooseMarket(u"a"_s, shelf(u"A"_s, 9, 12) + u"; "_s + shelf(u"B"_s, 101, 20));
        QCOMPARE(m_fixture->focusedName(), u"Tape 13"_s);
        QVERIFY(m_fixture->isFocusOnScreen());
        chooseMarket(u"b"_s, shelf(u"A"_s, 201, 20) + u"; "_s + shelf(u"B"_s, 101, 20));
        QCOMPARE(m_fixture->focusedName(), u"Tape 201"_s);
        QCOMPARE(strip(u"A"_s)->position(), 0.0);
    }

    void refreshResetsChangedShelfWithoutFocus()
    {
        focusTape13();
        const QString tape = m_fixture->focusedAfter(Qt::Key_Down);
        m_fixture->waitUntilIdle();
        const qreal scrolled = strip(u"A"_s)->position();
        QVERIFY(scrolled > 0);
        m_fixture->show(shelf(u"A"_s, 1, 20) + u"; "_s + shelf(u"B"_s, 100, 22));
        QCOMPARE(m_fixture->focusedName(), tape);
        QCOMPARE(strip(u"A"_s)->position(), scrolled);
        m_fixture->show(shelf(u"A"_s, 2, 20) + u"; "_s + shelf(u"B"_s, 100, 22));
        QCOMPARE(m_fixture->focusedName(), tape);
        QCOMPARE(strip(u"A"_s)->position(), 0.0);
        m_fixture->pressAndWait(Qt::Key_Up);
        QVERIFY(m_fixture->isFocusOnScreen());
        QCOMPARE(strip(u"A"_s)->position(), 0.0);
    }

    void refreshWhileTapeIsOpenKeepsFocusedTape()
    {
        focusTape13();
        m_fixture->pressAndWait(Qt::Key_Select);
        m_fixture->store->setShelves(shelvesOf(shelf(u"New"_s, 201, 3) + u"; "_s + shelf(u"A"_s, 10, 40)));
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Back), u"Tape 13"_s);
        QVERIFY(m_fixture->isFocusOnScreen());
    }

    void shelvesThatReturnAreShownFromTop()
    {
        const QString shelves = u"A: 1; B: 2; C: 3; D: 4; E: 5"_s;
        m_fixture->show(shelves);
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Down, 4), u"Tape 4"_s);
        m_fixture->waitUntilIdle();
        m_fixture->show({});
        QCOMPARE(m_fixture->focusedName(), u"Try again"_s);
        m_fixture->show(shelves);
        // Without scrolling: the first frame shows it.
        QCOMPARE(m_fixture->focusedName(), u"Search the stacks"_s);
        QCOMPARE(m_fixture->areaOf(u"Rewindery"_s).top(), 50.0);
    }

    void marketIsChosenByItsChip()
    {
        showTwoMarkets();
        QCOMPARE(m_fixture->focusedAfter({Qt::Key_Right, Qt::Key_Right, Qt::Key_Right}), u"B 2"_s);
        const auto isSelected = [this](const QString& name) {
            QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(m_fixture->focusable(name));
            return accessible && accessible->state().checkable && accessible->state().checked;
        };
        QVERIFY(isSelected(u"All markets 99"_s));
        m_fixture->press(Qt::Key_Select);
        QCOMPARE(m_fixture->store->market(), u"b"_s);
        QVERIFY(isSelected(u"B 2"_s) && !isSelected(u"All markets 99"_s) && !isSelected(u"A 1"_s));
        QVERIFY(m_fixture->text(u"2 tapes in stock — pull one off the shelf and push it into the set. "
                                "Every tape here plays on this television."_s));
        m_fixture->answer(u"/api/tv/tapes?page=1&per_page=200&market=b"_s,
                          R"({"items": [{"id": 7, "title": "Harbour"}]})");
        QTRY_VERIFY(m_fixture->focusable(u"Harbour"_s));
        QCOMPARE(m_fixture->focusedName(), u"B 2"_s);
        m_fixture->showMarkets({u"c"_s, u"b"_s, u"a"_s});
        QCOMPARE(m_fixture->focusedName(), u"B 2"_s);
        QCOMPARE(m_fixture->focusedAfter({Qt::Key_Left, Qt::Key_Left, Qt::Key_Select}), u"All markets 99"_s);
        QCOMPARE(m_fixture->store->market(), QString());
        QVERIFY(isSelected(u"All markets 99"_s));
    }

    void focusMovesToSearchWhenPickerDisappears()
    {
        showTwoMarkets();
        m_fixture->press({Qt::Key_Right, Qt::Key_Right});
        m_fixture->showMarkets({u"a"_s});
        QCOMPARE(m_fixture->focusedName(), u"Search the stacks"_s);
        m_fixture->showMarkets({u"a"_s, u"b"_s});
        QCOMPARE(m_fixture->focusedName(), u"Search the stacks"_s);
    }

    void marketWithoutTapesIsResetWhenShopCloses()
    {
        showTwoMarkets();
        m_fixture->press({Qt::Key_Right, Qt::Key_Right, Qt::Key_Select});
        QCOMPARE(m_fixture->store->market(), u"a"_s);
        m_fixture->answer(u"/api/tv/tapes?page=1&per_page=200&market=a"_s, R"({"items": []})");
        QTRY_COMPARE(m_fixture->focusedName(), u"Try again"_s);
        QVERIFY(m_fixture->text(u"No tapes on the shelf for this view."_s));
        m_fixture->press(Qt::Key_Back);
        QVERIFY(!m_fixture->isOpen());
        QCOMPARE(m_fixture->store->market(), QString());
    }

private:
    void showError(const QString& error)
    {
        m_fixture->store->setLastError(error);
        m_fixture->waitUntilIdle();
    }

    void showTwoMarkets()
    {
        m_fixture->show(u"A: 1"_s);
        m_fixture->showMarkets({u"a"_s, u"b"_s});
    }

    /** Shows two shelves that are longer than the screen, and moves the focus along the first one. */
    void focusTape13()
    {
        m_fixture->show(shelf(u"A"_s, 1, 20) + u"; "_s + shelf(u"B"_s, 101, 20));
        m_fixture->press(Qt::Key_Down);
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Right, 12), u"Tape 13"_s);
    }

    /** The scroll area of the visible shelf with this name; null if there is none. */
    ScrollArea* strip(const QString& shelf) const
    {
        for (QQuickItem* row : TestScreen::all(m_fixture->shop(), "ShelfRow")) {
            if (row->isVisible() && row->property("cassettes").value<CassetteRow*>()->name() == shelf)
                return static_cast<ScrollArea*>(TestScreen::first(row, "ScrollArea"));
        }
        return nullptr;
    }

    static QString shelf(const QString& name, int first, int count) { return ShopFixture::shelf(name, first, count); }

    void chooseMarket(const QString& slug, const QString& shelves)
    {
        m_fixture->store->setMarket(slug);
        m_fixture->waitUntilIdle();
        m_fixture->show(shelves);
    }

    std::unique_ptr<ShopFixture> m_fixture;
};

QUILLMERE_TEST(RewinderyStatesTest, QGuiApplication)

} // namespace quillmere

#include "RewinderyStatesTest.moc"
