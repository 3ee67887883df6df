#include "EdgeFade.h"
#include "Rows.h"
#include "ScrollArea.h"
#include "ShopFixture.h"
#include "TestMain.h"

#include <cmath>

namespace quillmere {

namespace {

constexpr qreal ring = 8; // space for the focus ring around a chip, in points

} // namespace

/** The market picker with more markets than fit. */
class MarketPickerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_fixture = std::make_unique<ShopFixture>();
        m_fixture->show(u"A: 1 2 3 4 5 6 7 8 9 10 11 12 13"_s);
    }

    void cleanup() { m_fixture.reset(); }

    void chosenChipIsVisibleWhenShopOpens_data()
    {
        rows<QString, QString>({"market", "chip"}, {{"all markets", QString(), u"All markets 99"_s},
                                                    {"first", u"market number 0"_s, nameOf(0)},
                                                    {"in the middle", u"market number 20"_s, nameOf(20)},
                                                    {"last", u"market number 39"_s, nameOf(39)},
                                                    {"unknown market", u"x"_s, u"All markets 99"_s}});
    }

    void chosenChipIsVisibleWhenShopOpens()
    {
        QFETCH(QString, market);
        QFETCH(QString, chip);
        m_fixture->store->setMarket(market);
        m_fixture->showMarkets(ShopFixture::slugs(40));
        m_fixture->pressAndWait(Qt::Key_Back);
        m_fixture->open();
        // True before the first frame, so no scroll is visible.
        QVERIFY(isFullyVisible(chip));
        const qreal position = row()->position();
        m_fixture->waitUntilIdle();
        QCOMPARE(row()->position(), position);
        QVERIFY(isFullyVisible(chip));
        QCOMPARE(m_fixture->focusedName(), u"Search the stacks"_s);
    }

    void chosenChipIsVisibleWhenShopOpensAgain()
    {
        m_fixture->showMarkets(ShopFixture::slugs(40));
        m_fixture->press(Qt::Key_Right, 31);
        m_fixture->press(Qt::Key_Select);
        m_fixture->pressAndWait(Qt::Key_Back);
        QCOMPARE(m_fixture->store->market(), u"market number 29"_s);
        m_fixture->open();
        m_fixture->waitUntilIdle();
        QVERIFY(isFullyVisible(nameOf(29)));
    }

    void chosenChipStaysVisibleWhenMarketsChange_data()
    {
        // Steps to a chip other than the chosen one, before the focus moves to the shelves.
        rows<int>({"steps"}, {{"no chip focused before", 0}, {"another chip focused before", 35}});
    }

    void chosenChipStaysVisibleWhenMarketsChange()
    {
        QFETCH(int, steps);
        m_fixture->store->setMarket(u"market number 20"_s);
        m_fixture->showMarkets(ShopFixture::slugs(40));
        m_fixture->press(Qt::Key_Right, steps);
        m_fixture->pressAndWait(Qt::Key_Down);
        m_fixture->showMarkets(ShopFixture::slugs(12, u"another market %1"_s) + ShopFixture::slugs(40));
        QVERIFY(isFullyVisible(u"MARKET NUMBER 20 33"_s));
        m_fixture->showMarkets(ShopFixture::slugs(40).mid(15));
        QVERIFY(isFullyVisible(u"MARKET NUMBER 20 6"_s));
        const qreal position = row()->position();
        // To the last focused control of the counter, so nothing scrolls.
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Up), steps > 0 ? u"MARKET NUMBER 20 6"_s : u"Search the stacks"_s);
        QCOMPARE(row()->targetPosition(), position);
    }

    void focusedChipStaysFocusedAndVisibleOnRefresh()
    {
        m_fixture->showMarkets(ShopFixture::slugs(40));
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Right, 32), nameOf(30));
        m_fixture->waitUntilIdle();
        m_fixture->showMarkets(ShopFixture::slugs(12, u"another market %1"_s) + ShopFixture::slugs(40));
        QCOMPARE(m_fixture->focusedName(), u"MARKET NUMBER 30 43"_s);
        QVERIFY(isFullyVisible(u"MARKET NUMBER 30 43"_s));
    }

    void rightFromSearchMovesFocusToFirstVisibleChip()
    {
        m_fixture->store->setMarket(u"market number 20"_s);
        m_fixture->showMarkets(ShopFixture::slugs(40));
        const QRectF search = m_fixture->areaOfFocusable(u"Search the stacks"_s);
        m_fixture->press(Qt::Key_Right);
        const QRectF chip = m_fixture->areaOnCanvas(m_fixture->focused());
        QVERIFY(chip.left() >= search.right() && chip.left() < m_fixture->areaOfFocusable(nameOf(20)).left());
        m_fixture->waitUntilIdle();
        QVERIFY(isFullyVisible(m_fixture->focusedName()));
        QVERIFY(isFullyVisible(nameOf(20)));
    }

    void upFromShelvesReturnsFocusToLastChip()
    {
        m_fixture->showMarkets(ShopFixture::slugs(40));
        const QString left = m_fixture->focusedAfter(Qt::Key_Right, 25);
        QCOMPARE(m_fixture->focusedAfter({Qt::Key_Down, Qt::Key_Right, Qt::Key_Up}), left);
    }

    void chipsFadeAtEdgesWithHiddenChips()
    {
        m_fixture->showMarkets(ShopFixture::slugs(40));
        const auto edges = [this] {
            QList<Qt::Edge> all;
            for (const EdgeFade* fade : fades())
                all.append(fade->edge());
            return all;
        };
        QCOMPARE(edges(), QList<Qt::Edge>{Qt::RightEdge});
        QCOMPARE(m_fixture->areaOnCanvas(fades().constFirst()).right(), m_fixture->areaOnCanvas(row()).right());
        m_fixture->press(Qt::Key_Right, 20);
        m_fixture->waitUntilIdle();
        QCOMPARE(edges(), (QList<Qt::Edge>{Qt::LeftEdge, Qt::RightEdge}));
        QCOMPARE(m_fixture->areaOnCanvas(fades().constFirst()).left(), m_fixture->areaOnCanvas(row()).left());
        m_fixture->press(Qt::Key_Right, 25);
        m_fixture->waitUntilIdle();
        QCOMPARE(edges(), QList<Qt::Edge>{Qt::LeftEdge});
    }

    void chipsThatFitDoNotFade()
    {
        m_fixture->showMarkets(ShopFixture::slugs(3));
        QVERIFY(fades().isEmpty());
        QVERIFY(!row()->parentItem()->clip());
    }

    void focusedChipIsNeverCoveredByFade()
    {
        QStringList slugs = ShopFixture::slugs(20);
        for (int market = 0; market < 20; market += 2)
            slugs[market] = QString(QChar(u'a' + market)).repeated(200);
        m_fixture->showMarkets(slugs);
        m_fixture->press(Qt::Key_Right);
        for (const int key : {Qt::Key_Right, Qt::Key_Left}) {
            for (int step = 0; step < 20; ++step) {
                m_fixture->pressAndWait(key);
                QVERIFY2(isFullyVisible(m_fixture->focusedName()), qPrintable(m_fixture->focusedName()));
            }
        }
    }

    void partlyHiddenChipFadesIntoVeneer_data() { rowsOfDisplaySizes(); }

    void partlyHiddenChipFadesIntoVeneer()
    {
        QFETCH(QSize, size);
        m_fixture = std::make_unique<ShopFixture>(QString(), size);
        m_fixture->show(u"A: 1; B: 2"_s);
        m_fixture->store->setMarket(u"market number 20"_s);
        m_fixture->showMarkets(ShopFixture::slugs(40));
        const QImage chips = m_fixture->picture();
        const QRectF area = TestScreen::area(picker());
        picker()->setVisible(false);
        const QImage veneer = m_fixture->picture();
        // Visible share, 0 to 1, of the chips in one pixel column.
        const auto visibleShare = [&](int x) {
            qreal sum = 0;
            for (int y = qCeil(area.top()); y < qFloor(area.bottom()); ++y) {
                const QColor a = chips.pixelColor(x, y);
                const QColor b = veneer.pixelColor(x, y);
                sum += std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) + std::abs(a.blue() - b.blue());
            }
            return sum / area.height() / 765;
        };
        const int left = qFloor(area.left());
        const int right = qCeil(area.right()) - 1;
        QVERIFY2(visibleShare(left) < 0.01 && visibleShare(right) < 0.01,
                 qPrintable(u"%1 %2"_s.arg(visibleShare(left)).arg(visibleShare(right))));
        // Nothing of them is visible beyond the edges.
        QCOMPARE(visibleShare(left - 1), 0.0);
        QCOMPARE(visibleShare(right + 1), 0.0);
        QVERIFY(visibleShare(qRound(area.center().x())) > 0.03);
    }

    void focusRingIsCompleteAtBothEnds_data() { rowsOfDisplaySizes(); }

    void focusRingIsCompleteAtBothEnds()
    {
        QFETCH(QSize, size);
        m_fixture = std::make_unique<ShopFixture>(QString(), size);
        m_fixture->show(u"A: 1; B: 2"_s);
        m_fixture->showMarkets(ShopFixture::slugs(40));
        const auto hasFocusRing = [&] {
            const QImage picture = m_fixture->picture();
            const QRectF chip = m_fixture->focused()->mapRectToScene(QRectF(QPointF(), m_fixture->focused()->size()));
            const qreal away = 6.0 * size.width() / 1920; // distance of the middle of the ring's line from the chip
            const QPointF centre = chip.center();
            const QList<QPointF> points{{chip.left() - away, centre.y()},
                                        {chip.right() + away, centre.y()},
                                        {centre.x(), chip.top() - away},
                                        {centre.x(), chip.bottom() + away}};
            return std::all_of(points.cbegin(), points.cend(), [&](const QPointF& point) {
                const QColor colour = picture.pixelColor(qFloor(point.x()), qFloor(point.y()));
                return colour.red() > 240 && std::abs(colour.green() - 203) < 15 && colour.blue() < 70;
            });
        };
        QCOMPARE(m_fixture->focusedAfter({Qt::Key_Right, Qt::Key_Right, Qt::Key_Left}), u"All markets 99"_s);
        QVERIFY(hasFocusRing());
        QCOMPARE(m_fixture->focusedAfter(Qt::Key_Right, 40), nameOf(39));
        QVERIFY(hasFocusRing());
    }

private:
    static QString nameOf(int market) { return u"MARKET NUMBER %1 %2"_s.arg(market).arg(market + 1); }

    QQuickItem* picker() const { return TestScreen::first(m_fixture->shop(), "MarketPicker"); }
    ScrollArea* row() const { return static_cast<ScrollArea*>(TestScreen::first(picker(), "ScrollArea")); }
    QList<EdgeFade*> fades() const
    {
        QList<EdgeFade*> shown;
        for (QQuickItem* item : TestScreen::all(picker(), "EdgeFade")) {
            if (item->isVisible())
                shown.append(static_cast<EdgeFade*>(item));
        }
        return shown;
    }

    /** Whether a chip and the space for its focus ring are completely visible and not covered by a fade. */
    bool isFullyVisible(const QString& chip) const
    {
        const QRectF area = m_fixture->areaOfFocusable(chip).adjusted(-ring, -ring, ring, ring);
        const auto lies = [&](const QQuickItem* fade) { return m_fixture->areaOnCanvas(fade).intersects(area); };
        const auto shown = fades();
        return m_fixture->focusable(chip) && m_fixture->areaOnCanvas(row()).contains(area) &&
               std::none_of(shown.cbegin(), shown.cend(), lies);
    }

    std::unique_ptr<ShopFixture> m_fixture;
};

QUILLMERE_TEST(MarketPickerTest, QGuiApplication)

} // namespace quillmere

#include "MarketPickerTest.moc"
