#include "Rows.h"
#include "ShopFixture.h"
#include "TestMain.h"

#include <QAccessible>

namespace quillmere {

/** Layout and accessible names of the shop. */
class RewinderyLayoutTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_fixture = std::make_unique<ShopFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void allTextsOfShopAreShown()
    {
        m_fixture->show(u"Staff Picks: 1 2 3"_s);
        m_fixture->showMarkets({u"a"_s, u"b"_s});
        const QString stock = u"99 tapes in stock — pull one off the shelf and push it into the set. "
                              "Every tape here plays on this television."_s;
        const QString credits = u"Rewindery Home Video — A Captain Lowe of the Waterways Production. "
                                "Be Kind, Please Rewind."_s;
        for (const QString& text :
             {u"Rewindery"_s, u"HOME VIDEO"_s, u"OPEN 24 HRS"_s, stock, u"Search the stacks"_s, u"All markets"_s,
              u"99"_s, u"A"_s, u"1"_s, u"B"_s, u"2"_s, u"Staff Picks"_s, u"3"_s, u"City Council · 2024"_s, credits,
              u"Captain Lowe and his crew are this shop's own invention."_s})
            QVERIFY2(m_fixture->text(text), qPrintable(text));
        QVERIFY(!m_fixture->text(u"Try again"_s));
        m_fixture->showMarkets({u"a"_s});
        QVERIFY(!m_fixture->text(u"All markets"_s) && !m_fixture->text(u"A"_s));
    }

    void partsHaveDesignedGeometry()
    {
        m_fixture->show(u"Staff Picks: 1 2 4; Procedurals: 3"_s);
        m_fixture->showMarkets({u"a"_s, u"b"_s});
        const QRectF sign = m_fixture->areaOf(u"Rewindery"_s);
        QCOMPARE(sign.topLeft(), QPointF(70, 50));
        QCOMPARE(m_fixture->areaOf(u"HOME VIDEO"_s).left(), sign.right() + 24);
        QCOMPARE(m_fixture->areaOf(u"OPEN 24 HRS"_s).left(), m_fixture->areaOf(u"HOME VIDEO"_s).right() + 24);

        const QRectF search = m_fixture->areaOfFocusable(u"Search the stacks"_s);
        const QRectF all = m_fixture->areaOfFocusable(u"All markets 99"_s);
        QCOMPARE(search.left(), 70.0);
        QCOMPARE(all.left(), search.right() + 20);
        QCOMPARE(all.center().y(), search.center().y());
        QCOMPARE(m_fixture->areaOfFocusable(u"A 1"_s).left(), all.right() + 14);
        QCOMPARE(m_fixture->areaOf(u"All markets"_s).left(), all.left() + 22);
        QCOMPARE(m_fixture->areaOf(u"99"_s).right(), all.right() - 22);

        const QRectF picks = m_fixture->areaOf(u"Staff Picks"_s);
        const QRectF first = m_fixture->areaOfFocusable(u"Tape 1"_s);
        QCOMPARE(picks.left(), 70.0);
        QVERIFY(qAbs(picks.top() - search.bottom() - 6 - 54) < 1);
        QCOMPARE(m_fixture->areaOf(u"3"_s).left(), picks.right() + 16 + 12);
        QCOMPARE(m_fixture->areaOf(u"City Council · 2024"_s).left(), m_fixture->areaOf(u"3"_s).right() + 12 + 16);
        QCOMPARE(first.size(), QSizeF(250, 250 * 1.5625));
        QCOMPARE(first.left(), 70.0 + 6);
        QCOMPARE(first.top(), picks.top() + 48 + 18 + 34);
        QCOMPARE(m_fixture->areaOfFocusable(u"Tape 2"_s).topLeft(), first.topRight() + QPointF(40, 0));
        QVERIFY(qAbs(m_fixture->areaOf(u"Procedurals"_s).top() - (first.bottom() + 34) - 54) < 1);
    }

    void textsOfOneLineShareBaseline()
    {
        m_fixture->show(u"Staff Picks: 1 2; 港口委員會: 3"_s);
        const auto baseline = [this](const QString& text) {
            const QQuickItem* item = m_fixture->text(text);
            return item ? item->mapToItem(m_fixture->canvas, QPointF(0, item->baselineOffset())).y() : -1;
        };
        for (const QString& text : {u"HOME VIDEO"_s, u"OPEN 24 HRS"_s})
            QVERIFY2(qAbs(baseline(text) - baseline(u"Rewindery"_s)) < 0.5, qPrintable(text));
        for (const QString& text : {u"2"_s, u"City Council · 2024"_s})
            QVERIFY2(qAbs(baseline(text) - baseline(u"Staff Picks"_s)) < 0.5, qPrintable(text));
        QVERIFY(qAbs(baseline(u"1"_s) - baseline(u"港口委員會"_s)) < 0.5);
        QVERIFY(qAbs(baseline(u"港口委員會"_s) - baseline(u"Staff Picks"_s) - 525 - 54) < 0.5);
    }

    void cassetteHasAccessibleNameAndRole()
    {
        m_fixture->show(u"Staff Picks: 1 2"_s);
        m_fixture->press({Qt::Key_Down, Qt::Key_Right});
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(m_fixture->focused());
        QVERIFY(accessible);
        QCOMPARE(accessible->text(QAccessible::Name), u"Tape 2"_s);
        QCOMPARE(accessible->role(), QAccessible::Button);
        QVERIFY(accessible->state().focused);
    }

    void longNamesDoNotOverlap()
    {
        Shelf shelf = shelfOf(QString(400, u'W'), {1, 2});
        shelf.covers.first().bodyName = QString(400, u'M');
        m_fixture->store->setShelves({shelf});
        TVStatus status = m_fixture->store->status();
        status.rewindery.markets = {{u"a"_s, QString(100, u'N'), {}, 9007199254740993}, {u"b"_s, u"B"_s, {}, 1}};
        m_fixture->store->setStatus(status);
        m_fixture->waitUntilIdle();
        const QRectF name = m_fixture->areaOf(QString(400, u'W'));
        const QRectF count = m_fixture->areaOf(u"2"_s);
        const QRectF caption = m_fixture->areaOf(QString(400, u'M') + u" · City Council · 2024"_s);
        QVERIFY(name.width() > 500);
        QVERIFY(name.right() < count.left() && count.right() < caption.left());
        QVERIFY(caption.width() > 200 && caption.right() <= 1850);
        const QRectF market = m_fixture->areaOf(QString(100, u'N'));
        const QRectF tapes = m_fixture->areaOf(u"9007199254740993"_s);
        QVERIFY(market.width() > 300 && market.right() < tapes.left());
        QVERIFY(tapes.right() < m_fixture->areaOf(u"B"_s).left());
    }

    void counterIsVisibleWithFirstShelfAndFooterWithLast()
    {
        m_fixture->show(u"A: 1; B: 2; C: 3"_s);
        m_fixture->pressAndWait(Qt::Key_Down);
        QCOMPARE(m_fixture->areaOf(u"Rewindery"_s).top(), 50.0);
        m_fixture->pressAndWait(Qt::Key_Down);
        QVERIFY(!m_fixture->isOnScreen(m_fixture->areaOf(u"A"_s)));
        QVERIFY(m_fixture->isOnScreen(m_fixture->areaOf(u"C"_s)));
        QVERIFY(m_fixture->isFocusOnScreen());
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Down, 2), u"Tape 3"_s);
        m_fixture->waitUntilIdle();
        const QRectF footer = m_fixture->areaOf(u"Captain Lowe and his crew are this shop's own invention."_s);
        QVERIFY(!footer.isEmpty() && footer.bottom() <= 1080 - 49);
        QVERIFY(m_fixture->isFocusOnScreen());
    }

    void liftedCassetteIsCompleteAtBothEnds_data()
    {
        rows<QSize>({"size"}, {{"720p", {1280, 720}}, {"1080p", {1920, 1080}}, {"4:3", {1024, 768}}});
    }

    void liftedCassetteIsCompleteAtBothEnds()
    {
        QFETCH(QSize, size);
        m_fixture = std::make_unique<ShopFixture>(QString(), size);
        m_fixture->show(u"A: 1 2 3 4 5 6 7 8 9 10 11 12 13; B: 21"_s);
        const auto isWhole = [this] {
            m_fixture->waitUntilIdle();
            for (const QQuickItem* item = m_fixture->focused(); item; item = item->parentItem()) {
                if (item->clip())
                    return false;
            }
            // The shadow extends beyond the lifted card.
            const auto parts = TestScreen::all(m_fixture->focused(), "QQuickItem");
            const auto isShown = [this](auto* part) { return m_fixture->isOnScreen(m_fixture->areaOnCanvas(part)); };
            const auto isLifted = [](auto* part) { return part->scale() > 1.05; };
            return std::all_of(parts.cbegin(), parts.cend(), isShown) &&
                   std::any_of(parts.cbegin(), parts.cend(), isLifted);
        };
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Down), u"Tape 1"_s);
        QVERIFY(isWhole());
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Right, 12), u"Tape 13"_s);
        QVERIFY(isWhole());
    }

private:
    std::unique_ptr<ShopFixture> m_fixture;
};

QUILLMERE_TEST(RewinderyLayoutTest, QGuiApplication)

} // namespace quillmere

#include "RewinderyLayoutTest.moc"
