#include "ShopFixture.h"
#include "TestMain.h"
#include "VeneerBackground.h"

#include <QRegularExpression>

namespace quillmere {

/** The shop: focus movement, and opening of tapes and of the search. */
class RewinderyViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_fixture.reset(); }

    void initialFocusIsOnSearch();
    void arrowsMoveFocusAlongShelf();
    void shelfIsEnteredAtItsLastFocusedCassette();
    void upFromShelfReturnsFocusToLastControlOfCounter();
    void longShelfCreatesFewCassettes();
    void everyMarketChipIsReachable();
    void selectedCassetteOpensItsTapeAndBackReturns();
    void pageOfTapeSharesVeneerPictureOfShop();
    void backClosesShop();
    void searchFlagIsSetWhenSearchHasNoScreen();
    void searchScreenCoversShopUntilBackIsPressed();

private:
    std::unique_ptr<ShopFixture> m_fixture;
};

void RewinderyViewTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_fixture = std::make_unique<ShopFixture>();
}

void RewinderyViewTest::initialFocusIsOnSearch()
{
    m_fixture->show(u"Staff Picks: 1 2"_s);
    QCOMPARE(m_fixture->focusedName(), u"Search the stacks"_s);
}

void RewinderyViewTest::arrowsMoveFocusAlongShelf()
{
    m_fixture->show(u"A: 1 2 3; B: 4"_s);
    QStringList names;
    for (const int key : {Qt::Key_Down, Qt::Key_Left, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Left}) {
        m_fixture->press(key);
        names.append(m_fixture->focusedName());
    }
    QCOMPARE(names, (QStringList{u"Tape 1"_s, u"Tape 1"_s, u"Tape 2"_s, u"Tape 3"_s, u"Tape 3"_s, u"Tape 2"_s}));
    m_fixture->waitUntilIdle();
    QVERIFY(m_fixture->isFocusOnScreen());
}

void RewinderyViewTest::shelfIsEnteredAtItsLastFocusedCassette()
{
    m_fixture->show(u"A: 1 2 3 4 5 6 7 8 9; B: 11 12; C: 21 22; D: 31; E: 41; F: 51"_s);
    m_fixture->press({Qt::Key_Down, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right});
    QCOMPARE(m_fixture->focusedName(), u"Tape 5"_s);
    m_fixture->press({Qt::Key_Down, Qt::Key_Left, Qt::Key_Up});
    QCOMPARE(m_fixture->focusedName(), u"Tape 5"_s);
    // The same after the row's items were destroyed and created again.
    for (int step = 0; step < 5; ++step) {
        m_fixture->press(Qt::Key_Down);
        m_fixture->waitUntilIdle();
    }
    QCOMPARE(m_fixture->focusedName(), u"Tape 51"_s);
    QVERIFY(!m_fixture->focusable(u"Tape 5"_s));
    for (int step = 0; step < 5; ++step) {
        m_fixture->press(Qt::Key_Up);
        m_fixture->waitUntilIdle();
    }
    QCOMPARE(m_fixture->focusedName(), u"Tape 5"_s);
    QVERIFY(m_fixture->isFocusOnScreen());
}

void RewinderyViewTest::upFromShelfReturnsFocusToLastControlOfCounter()
{
    m_fixture->show(u"A: 1 2 3 4 5 6 7 8 9"_s);
    m_fixture->showMarkets({u"a"_s, u"b"_s});
    m_fixture->press({Qt::Key_Right, Qt::Key_Right, Qt::Key_Left});
    QCOMPARE(m_fixture->focusedName(), u"All markets 99"_s);
    m_fixture->press(Qt::Key_Down);
    for (int step = 0; step < 8; ++step)
        m_fixture->press(Qt::Key_Right);
    m_fixture->press(Qt::Key_Up);
    QCOMPARE(m_fixture->focusedName(), u"All markets 99"_s);
    m_fixture->press({Qt::Key_Left, Qt::Key_Down, Qt::Key_Up});
    QCOMPARE(m_fixture->focusedName(), u"Search the stacks"_s);
    m_fixture->waitUntilIdle();
    QCOMPARE(m_fixture->areaOf(u"Rewindery"_s).top(), 50.0);
    // A change of the chips does not redirect the focus to them.
    m_fixture->press(Qt::Key_Down);
    m_fixture->showMarkets({u"a"_s, u"b"_s, u"c"_s});
    m_fixture->press(Qt::Key_Up);
    QCOMPARE(m_fixture->focusedName(), u"Search the stacks"_s);
}

void RewinderyViewTest::longShelfCreatesFewCassettes()
{
    QStringList ids;
    for (int id = 1; id <= 200; ++id)
        ids.append(QString::number(id));
    m_fixture->show(u"A: "_s + ids.join(u' '));
    m_fixture->press(Qt::Key_Down);
    const auto cassettes = [this] {
        const auto all = TestScreen::all(m_fixture->shop(), "CardButton");
        return int(std::count_if(all.begin(), all.end(), [](QQuickItem* item) { return item->isVisible(); }));
    };
    int most = 0;
    for (int tape = 2; tape <= 200; ++tape) {
        m_fixture->press(Qt::Key_Right);
        QCOMPARE(m_fixture->focusedName(), u"Tape %1"_s.arg(tape));
        if (tape % 20 == 0)
            m_fixture->waitUntilIdle();
        most = std::max(most, cassettes());
    }
    m_fixture->waitUntilIdle();
    QVERIFY(m_fixture->isFocusOnScreen());
    QVERIFY2(most < 50, qPrintable(QString::number(most)));
    QVERIFY2(cassettes() < 20, qPrintable(QString::number(cassettes())));
}

void RewinderyViewTest::everyMarketChipIsReachable()
{
    m_fixture->show(u"A: 1"_s);
    QStringList slugs;
    for (int market = 0; market < 40; ++market)
        slugs.append(u"market number %1"_s.arg(market));
    m_fixture->showMarkets(slugs);
    QStringList names;
    for (int step = 0; step < 42; ++step) {
        m_fixture->press(Qt::Key_Right);
        names.append(m_fixture->focusedName());
        if (step % 7 == 0) {
            m_fixture->waitUntilIdle();
            QVERIFY2(m_fixture->isFocusOnScreen(), qPrintable(m_fixture->focusedName()));
            QVERIFY(m_fixture->areaOnCanvas(m_fixture->focused()).left() >=
                    m_fixture->areaOfFocusable(u"Search the stacks"_s).right());
        }
    }
    QCOMPARE(names.first(), u"All markets 99"_s);
    QCOMPARE(names.at(40), u"MARKET NUMBER 39 40"_s);
    QCOMPARE(names.at(41), u"MARKET NUMBER 39 40"_s);
    QStringList back;
    for (int step = 0; step < 41; ++step) {
        m_fixture->press(Qt::Key_Left);
        back.prepend(m_fixture->focusedName());
    }
    QCOMPARE(back.mid(1), names.first(40));
    QCOMPARE(back.first(), u"Search the stacks"_s);
}

void RewinderyViewTest::selectedCassetteOpensItsTapeAndBackReturns()
{
    m_fixture->show(u"A: 1 2 3; B: 4"_s);
    m_fixture->press({Qt::Key_Down, Qt::Key_Right, Qt::Key_Select});
    QCOMPARE(m_fixture->shop()->depth(), 1);
    QVERIFY(m_fixture->front() != m_fixture->shop());
    m_fixture->waitUntilIdle();
    QVERIFY(m_fixture->text(u"Tape 2"_s));
    QVERIFY(m_fixture->front()->isAncestorOf(m_fixture->focused()));
    // The shelves change while the tape is open.
    m_fixture->store->setShelves(shelvesOf(u"B: 4; A: 9 2"_s));
    QCOMPARE(m_fixture->shop()->depth(), 1);
    QVERIFY(m_fixture->front()->isAncestorOf(m_fixture->focused()));
    m_fixture->press(Qt::Key_Back);
    QCOMPARE(m_fixture->shop()->depth(), 0);
    QVERIFY(m_fixture->isOpen());
    QCOMPARE(m_fixture->focusedName(), u"Tape 2"_s);
    m_fixture->waitUntilIdle();
    QVERIFY(m_fixture->isFocusOnScreen());
}

void RewinderyViewTest::pageOfTapeSharesVeneerPictureOfShop()
{
    m_fixture->show(u"A: 1 2 3; B: 4"_s);
    m_fixture->press({Qt::Key_Down, Qt::Key_Select});
    m_fixture->waitUntilIdle();
    const auto veneers = TestScreen::all(m_fixture->canvas, "VeneerBackground");
    QCOMPARE(veneers.size(), 2);
    const auto picture = [](QQuickItem* veneer) { return qobject_cast<VeneerBackground*>(veneer)->picture(); };
    QVERIFY(picture(veneers.first()));
    // Painting a second picture would take longer than several frames.
    QCOMPARE(picture(veneers.last()), picture(veneers.first()));
}

void RewinderyViewTest::backClosesShop()
{
    m_fixture->show(u"A: 1 2 3"_s);
    m_fixture->press(Qt::Key_Down);
    m_fixture->press(Qt::Key_Back);
    QVERIFY(!m_fixture->isOpen());
    m_fixture->waitUntilIdle();
    QVERIFY(!TestScreen::first(m_fixture->canvas, "RewinderyView"));
    QCOMPARE(m_fixture->store->shelves().size(), 1);
}

void RewinderyViewTest::searchFlagIsSetWhenSearchHasNoScreen()
{
    m_fixture->show(u"A: 1 2 3"_s);
    m_fixture->press(Qt::Key_Select);
    QVERIFY(m_fixture->shop()->property("searching").toBool());
    QCOMPARE(m_fixture->focusedName(), u"Search the stacks"_s);
}

void RewinderyViewTest::searchScreenCoversShopUntilBackIsPressed()
{
    m_fixture = std::make_unique<ShopFixture>(u"searchScreen: Component { FocusScreen { "
                                              "Focusable { property string name: \"query\"; "
                                              "width: 100; height: 100 } } }"_s);
    m_fixture->show(u"A: 1 2 3"_s);
    m_fixture->press(Qt::Key_Select);
    QCOMPARE(m_fixture->focusedName(), u"query"_s);
    m_fixture->press(Qt::Key_Back);
    QVERIFY(!m_fixture->shop()->property("searching").toBool());
    QVERIFY(m_fixture->isOpen());
    QCOMPARE(m_fixture->focusedName(), u"Search the stacks"_s);
}

QUILLMERE_TEST(RewinderyViewTest, QGuiApplication)

} // namespace quillmere

#include "RewinderyViewTest.moc"
