#include "ShopFixture.h"
#include "TestMain.h"
#include "VeneerBackground.h"

namespace quillmere {

/** The shop: focus movement, and opening of tapes and of the search. */
class RewinderyViewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<ShopFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void arrowsMoveFocusAlongShelf()
    {
        m_fixture->show(u"A: 1 2 3; B: 4"_s);
        QStringList names;
        for (const int key : {Qt::Key_Down, Qt::Key_Left, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Left})
            names.append(m_fixture->focusedAfter(key));
        QCOMPARE(names, (QStringList{u"Tape 1"_s, u"Tape 1"_s, u"Tape 2"_s, u"Tape 3"_s, u"Tape 3"_s, u"Tape 2"_s}));
        m_fixture->waitUntilIdle();
        QVERIFY(m_fixture->isFocusOnScreen());
    }

    void shelfIsEnteredAtItsLastFocusedCassette()
    {
        m_fixture->show(u"A: 1 2 3 4 5 6 7 8 9; B: 11 12; C: 21 22; D: 31; E: 41; F: 51"_s);
        QCOMPARE(m_fixture->focusedAfter({Qt::Key_Down, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right}),
                 u"Tape 5"_s);
        QCOMPARE(m_fixture->focusedAfter({Qt::Key_Down, Qt::Key_Left, Qt::Key_Up}), u"Tape 5"_s);
        // The same after the row's items were destroyed and created again.
        for (int step = 0; step < 5; ++step)
            m_fixture->pressAndWait(Qt::Key_Down);
        QCOMPARE(m_fixture->focusedName(), u"Tape 51"_s);
        QVERIFY(!m_fixture->focusable(u"Tape 5"_s));
        for (int step = 0; step < 5; ++step)
            m_fixture->pressAndWait(Qt::Key_Up);
        QCOMPARE(m_fixture->focusedName(), u"Tape 5"_s);
        QVERIFY(m_fixture->isFocusOnScreen());
    }

    void upFromShelfReturnsFocusToLastControlOfCounter()
    {
        m_fixture->show(u"A: 1 2 3 4 5 6 7 8 9"_s);
        m_fixture->showMarkets({u"a"_s, u"b"_s});
        QCOMPARE(m_fixture->focusedAfter({Qt::Key_Right, Qt::Key_Right, Qt::Key_Left}), u"All markets 99"_s);
        m_fixture->press(Qt::Key_Down);
        m_fixture->press(Qt::Key_Right, 8);
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Up), u"All markets 99"_s);
        QCOMPARE(m_fixture->focusedAfter({Qt::Key_Left, Qt::Key_Down, Qt::Key_Up}), u"Search the stacks"_s);
        m_fixture->waitUntilIdle();
        QCOMPARE(m_fixture->areaOf(u"Rewindery"_s).top(), 50.0);
        // A change of the chips does not redirect the focus to them.
        m_fixture->press(Qt::Key_Down);
        m_fixture->showMarkets({u"a"_s, u"b"_s, u"c"_s});
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Up), u"Search the stacks"_s);
    }

    void longShelfCreatesFewCassettes()
    {
        m_fixture->show(ShopFixture::shelf(u"A"_s, 1, 200));
        m_fixture->press(Qt::Key_Down);
        const auto cassettes = [this] {
            const auto all = TestScreen::all(m_fixture->shop(), "CardButton");
            return int(std::count_if(all.begin(), all.end(), [](QQuickItem* item) { return item->isVisible(); }));
        };
        int most = 0;
        for (int tape = 2; tape <= 200; ++tape) {
            QCOMPARE(m_fixture->focusedAfter(Qt::Key_Right), u"Tape %1"_s.arg(tape));
            if (tape % 20 == 0)
                m_fixture->waitUntilIdle();
            most = std::max(most, cassettes());
        }
        m_fixture->waitUntilIdle();
        QVERIFY(m_fixture->isFocusOnScreen());
        QVERIFY2(most < 50, qPrintable(QString::number(most)));
        QVERIFY2(cassettes() < 20, qPrintable(QString::number(cassettes())));
    }

    void everyMarketChipIsReachable()
    {
        m_fixture->show(u"A: 1"_s);
        m_fixture->showMarkets(ShopFixture::slugs(40));
        QStringList names;
        for (int step = 0; step < 42; ++step) {
            names.append(m_fixture->focusedAfter(Qt::Key_Right));
            if (step % 7 == 0) {
                m_fixture->waitUntilIdle();
                QVERIFY2(m_fixture->isFocusOnScreen(), qPrintable(m_fixture->focusedName()));
                QVERIFY(m_fixture->areaOnCanvas(m_fixture->focused()).left() >=
                        m_fixture->areaOfFocusable(u"Search the stacks"_s).right());
            }
        }
        QCOMPARE(names.first(), u"All markets 99"_s);
        QCOMPARE(names.last(2), (QStringList{u"MARKET NUMBER 39 40"_s, u"MARKET NUMBER 39 40"_s}));
        QStringList back;
        for (int step = 0; step < 41; ++step)
            back.prepend(m_fixture->focusedAfter(Qt::Key_Left));
        QCOMPARE(back.mid(1), names.first(40));
        QCOMPARE(back.first(), u"Search the stacks"_s);
    }

    void selectedCassetteOpensItsTapeAndBackReturns()
    {
        m_fixture->show(u"A: 1 2 3; B: 4"_s);
        m_fixture->press({Qt::Key_Down, Qt::Key_Right, Qt::Key_Select});
        QCOMPARE(m_fixture->shop()->depth(), 1);
        QVERIFY(m_fixture->front() != m_fixture->shop());
        m_fixture->waitUntilIdle();
        QVERIFY(m_fixture->text(u"Tape 2"_s));
        QVERIFY(m_fixture->front()->isAncestorOf(m_fixture->focused()));
        const auto veneers = TestScreen::all(m_fixture->canvas, "VeneerBackground");
        QCOMPARE(veneers.size(), 2);
        const auto picture = [](QQuickItem* veneer) { return qobject_cast<VeneerBackground*>(veneer)->picture(); };
        QVERIFY(picture(veneers.first()));
        // They share one picture: painting a second one would take longer than several frames.
        QCOMPARE(picture(veneers.last()), picture(veneers.first()));
        // The shelves change while the tape is open.
        m_fixture->store->setShelves(shelvesOf(u"B: 4; A: 9 2"_s));
        QCOMPARE(m_fixture->shop()->depth(), 1);
        QVERIFY(m_fixture->front()->isAncestorOf(m_fixture->focused()));
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Back), u"Tape 2"_s);
        QCOMPARE(m_fixture->shop()->depth(), 0);
        QVERIFY(m_fixture->isOpen());
        m_fixture->waitUntilIdle();
        QVERIFY(m_fixture->isFocusOnScreen());
    }

    void backClosesShop()
    {
        m_fixture->show(u"A: 1 2 3"_s);
        m_fixture->press({Qt::Key_Down, Qt::Key_Back});
        QVERIFY(!m_fixture->isOpen());
        m_fixture->waitUntilIdle();
        QVERIFY(!TestScreen::first(m_fixture->canvas, "RewinderyView"));
        QCOMPARE(m_fixture->store->shelves().size(), 1);
    }

    void searchFlagIsSetWhenSearchHasNoScreen()
    {
        m_fixture->show(u"A: 1 2 3"_s);
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Select), u"Search the stacks"_s);
        QVERIFY(m_fixture->shop()->property("searching").toBool());
    }

    void searchScreenCoversShopUntilBackIsPressed()
    {
        m_fixture = std::make_unique<ShopFixture>(
            u"searchScreen: Component { FocusScreen { Focusable { property string name: 'query'\n"
            "width: 100; height: 100 } } }"_s);
        m_fixture->show(u"A: 1 2 3"_s);
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Select), u"query"_s);
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Back), u"Search the stacks"_s);
        QVERIFY(!m_fixture->shop()->property("searching").toBool());
        QVERIFY(m_fixture->isOpen());
    }

private:
    std::unique_ptr<ShopFixture> m_fixture;
};

QUILLMERE_TEST(RewinderyViewTest, QGuiApplication)

} // namespace quillmere

#include "RewinderyViewTest.moc"
