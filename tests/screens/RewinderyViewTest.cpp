#include "ShopHouse.h"
#include "VeneerBackground.h"

#include <QRegularExpression>

/** The shop as the viewer walks it. */
class RewinderyViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_house.reset(); }

    void theFocusBeginsAtTheSearch();
    void theFocusGoesAlongARowAndBack();
    void aRowIsEnteredWhereItWasLeft();
    void upFromAnyCassetteIsTheCounter();
    void aLongRowHasFewCassettesAtATime();
    void manyChipsAreAllReached();
    void aCassetteOpensItsTapeAndBackReturnsToIt();
    void aTapesPageShowsTheShopsOwnVeneer();
    void backLeavesTheShopOnce();
    void theSearchIsAFlagUntilItHasAScreen();
    void theSearchScreenCoversTheShop();

private:
    std::unique_ptr<ShopHouse> m_house;
};

void RewinderyViewTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_house = std::make_unique<ShopHouse>();
}

void RewinderyViewTest::theFocusBeginsAtTheSearch()
{
    m_house->show(u"Staff Picks: 1 2"_s);
    QCOMPARE(m_house->heard(), u"Search the stacks"_s);
}

void RewinderyViewTest::theFocusGoesAlongARowAndBack()
{
    m_house->show(u"A: 1 2 3; B: 4"_s);
    QStringList heard;
    for (const int key : {Qt::Key_Down, Qt::Key_Left, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Left}) {
        m_house->stage.press(key);
        heard.append(m_house->heard());
    }
    QCOMPARE(heard, (QStringList{u"Tape 1"_s, u"Tape 1"_s, u"Tape 2"_s, u"Tape 3"_s, u"Tape 3"_s, u"Tape 2"_s}));
    m_house->stage.settle();
    QVERIFY(m_house->isFocusInSight());
}

void RewinderyViewTest::aRowIsEnteredWhereItWasLeft()
{
    m_house->show(u"A: 1 2 3 4 5 6 7 8 9; B: 11 12; C: 21 22; D: 31; E: 41; F: 51"_s);
    m_house->press({Qt::Key_Down, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right});
    QCOMPARE(m_house->heard(), u"Tape 5"_s);
    m_house->press({Qt::Key_Down, Qt::Key_Left, Qt::Key_Up});
    QCOMPARE(m_house->heard(), u"Tape 5"_s);
    // Also when the row has not existed meanwhile.
    for (int step = 0; step < 5; ++step) {
        m_house->stage.press(Qt::Key_Down);
        m_house->stage.settle();
    }
    QCOMPARE(m_house->heard(), u"Tape 51"_s);
    QVERIFY(!m_house->thing(u"Tape 5"_s));
    for (int step = 0; step < 5; ++step) {
        m_house->stage.press(Qt::Key_Up);
        m_house->stage.settle();
    }
    QCOMPARE(m_house->heard(), u"Tape 5"_s);
    QVERIFY(m_house->isFocusInSight());
}

void RewinderyViewTest::upFromAnyCassetteIsTheCounter()
{
    m_house->show(u"A: 1 2 3 4 5 6 7 8 9"_s);
    m_house->showMarkets({u"a"_s, u"b"_s});
    m_house->press({Qt::Key_Right, Qt::Key_Right, Qt::Key_Left});
    QCOMPARE(m_house->heard(), u"All markets 99"_s);
    m_house->stage.press(Qt::Key_Down);
    for (int step = 0; step < 8; ++step)
        m_house->stage.press(Qt::Key_Right);
    m_house->stage.press(Qt::Key_Up);
    QCOMPARE(m_house->heard(), u"All markets 99"_s);
    m_house->press({Qt::Key_Left, Qt::Key_Down, Qt::Key_Up});
    QCOMPARE(m_house->heard(), u"Search the stacks"_s);
    m_house->stage.settle();
    QCOMPARE(m_house->areaOf(u"Rewindery"_s).top(), 50.0);
    // A change of the chips does not draw the way there to them.
    m_house->stage.press(Qt::Key_Down);
    m_house->showMarkets({u"a"_s, u"b"_s, u"c"_s});
    m_house->stage.press(Qt::Key_Up);
    QCOMPARE(m_house->heard(), u"Search the stacks"_s);
}

void RewinderyViewTest::aLongRowHasFewCassettesAtATime()
{
    QStringList ids;
    for (int id = 1; id <= 200; ++id)
        ids.append(QString::number(id));
    m_house->show(u"A: "_s + ids.join(u' '));
    m_house->stage.press(Qt::Key_Down);
    const auto cassettes = [this] {
        const auto all = Stage::all(m_house->shop(), "CardButton");
        return int(std::count_if(all.begin(), all.end(), [](QQuickItem* item) { return item->isVisible(); }));
    };
    int most = 0;
    for (int tape = 2; tape <= 200; ++tape) {
        m_house->stage.press(Qt::Key_Right);
        QCOMPARE(m_house->heard(), u"Tape %1"_s.arg(tape));
        if (tape % 20 == 0)
            m_house->stage.settle();
        most = std::max(most, cassettes());
    }
    m_house->stage.settle();
    QVERIFY(m_house->isFocusInSight());
    QVERIFY2(most < 50, qPrintable(QString::number(most)));
    QVERIFY2(cassettes() < 20, qPrintable(QString::number(cassettes())));
}

void RewinderyViewTest::manyChipsAreAllReached()
{
    m_house->show(u"A: 1"_s);
    QStringList slugs;
    for (int market = 0; market < 40; ++market)
        slugs.append(u"market number %1"_s.arg(market));
    m_house->showMarkets(slugs);
    QStringList heard;
    for (int step = 0; step < 42; ++step) {
        m_house->stage.press(Qt::Key_Right);
        heard.append(m_house->heard());
        if (step % 7 == 0) {
            m_house->stage.settle();
            QVERIFY2(m_house->isFocusInSight(), qPrintable(m_house->heard()));
            QVERIFY(m_house->area(m_house->focused()).left() >= m_house->areaOfThing(u"Search the stacks"_s).right());
        }
    }
    QCOMPARE(heard.first(), u"All markets 99"_s);
    QCOMPARE(heard.at(40), u"MARKET NUMBER 39 40"_s);
    QCOMPARE(heard.at(41), u"MARKET NUMBER 39 40"_s);
    QStringList back;
    for (int step = 0; step < 41; ++step) {
        m_house->stage.press(Qt::Key_Left);
        back.prepend(m_house->heard());
    }
    QCOMPARE(back.mid(1), heard.first(40));
    QCOMPARE(back.first(), u"Search the stacks"_s);
}

void RewinderyViewTest::aCassetteOpensItsTapeAndBackReturnsToIt()
{
    m_house->show(u"A: 1 2 3; B: 4"_s);
    m_house->press({Qt::Key_Down, Qt::Key_Right, Qt::Key_Select});
    QCOMPARE(m_house->shop()->depth(), 1);
    QVERIFY(m_house->front() != m_house->shop());
    m_house->stage.settle();
    QVERIFY(m_house->text(u"Tape 2"_s));
    QVERIFY(m_house->front()->isAncestorOf(m_house->focused()));
    // The shelves change meanwhile.
    m_house->store.setShelves(shelvesOf(u"B: 4; A: 9 2"_s));
    QCOMPARE(m_house->shop()->depth(), 1);
    QVERIFY(m_house->front()->isAncestorOf(m_house->focused()));
    m_house->stage.press(Qt::Key_Back);
    QCOMPARE(m_house->shop()->depth(), 0);
    QVERIFY(m_house->isOpen());
    QCOMPARE(m_house->heard(), u"Tape 2"_s);
    m_house->stage.settle();
    QVERIFY(m_house->isFocusInSight());
}

void RewinderyViewTest::aTapesPageShowsTheShopsOwnVeneer()
{
    m_house->show(u"A: 1 2 3; B: 4"_s);
    m_house->press({Qt::Key_Down, Qt::Key_Select});
    m_house->stage.settle();
    const auto veneers = Stage::all(m_house->house, "VeneerBackground");
    QCOMPARE(veneers.size(), 2);
    const auto picture = [](QQuickItem* veneer) { return qobject_cast<VeneerBackground*>(veneer)->picture(); };
    QVERIFY(picture(veneers.first()));
    // To paint another takes longer than several frames.
    QCOMPARE(picture(veneers.last()), picture(veneers.first()));
}

void RewinderyViewTest::backLeavesTheShopOnce()
{
    m_house->show(u"A: 1 2 3"_s);
    m_house->stage.press(Qt::Key_Down);
    m_house->stage.press(Qt::Key_Back);
    QVERIFY(!m_house->isOpen());
    m_house->stage.settle();
    QVERIFY(!Stage::first(m_house->house, "RewinderyView"));
    QCOMPARE(m_house->store.shelves().size(), 1);
}

void RewinderyViewTest::theSearchIsAFlagUntilItHasAScreen()
{
    m_house->show(u"A: 1 2 3"_s);
    m_house->stage.press(Qt::Key_Select);
    QVERIFY(m_house->shop()->property("searching").toBool());
    QCOMPARE(m_house->heard(), u"Search the stacks"_s);
}

void RewinderyViewTest::theSearchScreenCoversTheShop()
{
    m_house = std::make_unique<ShopHouse>(u"searchScreen: Component { FocusScreen { "
                                          "Focusable { property string name: \"query\"; "
                                          "width: 100; height: 100 } } }"_s);
    m_house->show(u"A: 1 2 3"_s);
    m_house->stage.press(Qt::Key_Select);
    QCOMPARE(m_house->heard(), u"query"_s);
    m_house->stage.press(Qt::Key_Back);
    QVERIFY(!m_house->shop()->property("searching").toBool());
    QVERIFY(m_house->isOpen());
    QCOMPARE(m_house->heard(), u"Search the stacks"_s);
}

QTEST_MAIN(RewinderyViewTest)
#include "RewinderyViewTest.moc"
