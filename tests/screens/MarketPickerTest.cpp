#include "EdgeFade.h"
#include "ScrollArea.h"
#include "ShopFixture.h"
#include "TestMain.h"

#include <QRegularExpression>

#include <cmath>

namespace quillmere {

/** The market picker with more markets than fit. */
class MarketPickerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_fixture.reset(); }

    void chosenChipIsVisibleWhenShopOpens_data();
    void chosenChipIsVisibleWhenShopOpens();
    void chosenChipIsVisibleWhenShopOpensAgain();
    void chosenChipStaysVisibleWhenMarketsChange_data();
    void chosenChipStaysVisibleWhenMarketsChange();
    void focusedChipStaysFocusedAndVisibleOnRefresh();
    void rightFromSearchMovesFocusToFirstVisibleChip();
    void upFromShelvesReturnsFocusToLastChip();
    void chipsFadeAtEdgesWithHiddenChips();
    void chipsThatFitDoNotFade();
    void focusedChipIsNeverCoveredByFade();
    void partlyHiddenChipFadesIntoVeneer_data();
    void partlyHiddenChipFadesIntoVeneer();
    void focusRingIsCompleteAtBothEnds_data();
    void focusRingIsCompleteAtBothEnds();

private:
    static QStringList markets(int count, const QString& name = u"market number %1"_s);
    static QString nameOf(int market) { return u"MARKET NUMBER %1 %2"_s.arg(market).arg(market + 1); }

    QQuickItem* picker() const { return TestScreen::first(m_fixture->shop(), "MarketPicker"); }
    ScrollArea* row() const { return static_cast<ScrollArea*>(TestScreen::first(picker(), "ScrollArea")); }
    QList<EdgeFade*> fades() const;
    /** Whether a chip and the space for its focus ring are completely visible and not covered by a fade. */
    bool isFullyVisible(const QString& chip) const;

    std::unique_ptr<ShopFixture> m_fixture;
};

namespace {

constexpr qreal ring = 8; // space for the focus ring around a chip, in points

} // namespace

void MarketPickerTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_fixture = std::make_unique<ShopFixture>();
    m_fixture->show(u"A: 1 2 3 4 5 6 7 8 9 10 11 12 13"_s);
}

QStringList MarketPickerTest::markets(int count, const QString& name)
{
    QStringList slugs;
    for (int market = 0; market < count; ++market)
        slugs.append(name.arg(market));
    return slugs;
}

QList<EdgeFade*> MarketPickerTest::fades() const
{
    QList<EdgeFade*> shown;
    for (QQuickItem* item : TestScreen::all(picker(), "EdgeFade")) {
        if (item->isVisible())
            shown.append(static_cast<EdgeFade*>(item));
    }
    return shown;
}

bool MarketPickerTest::isFullyVisible(const QString& chip) const
{
    const QRectF area = m_fixture->areaOfFocusable(chip).adjusted(-ring, -ring, ring, ring);
    const auto lies = [&](const QQuickItem* fade) { return m_fixture->areaOnCanvas(fade).intersects(area); };
    const auto shown = fades();
    return m_fixture->focusable(chip) && m_fixture->areaOnCanvas(row()).contains(area) &&
           std::none_of(shown.cbegin(), shown.cend(), lies);
}

void MarketPickerTest::chosenChipIsVisibleWhenShopOpens_data()
{
    QTest::addColumn<QString>("market");
    QTest::addColumn<QString>("chip");
    QTest::newRow("all markets") << QString() << u"All markets 99"_s;
    QTest::newRow("first") << u"market number 0"_s << nameOf(0);
    QTest::newRow("in the middle") << u"market number 20"_s << nameOf(20);
    QTest::newRow("last") << u"market number 39"_s << nameOf(39);
    QTest::newRow("unknown market") << u"x"_s << u"All markets 99"_s;
}

void MarketPickerTest::chosenChipIsVisibleWhenShopOpens()
{
    QFETCH(QString, market);
    QFETCH(QString, chip);
    m_fixture->store->setMarket(market);
    m_fixture->showMarkets(markets(40));
    m_fixture->press(Qt::Key_Back);
    m_fixture->waitUntilIdle();
    m_fixture->open();
    // True before the first frame, so no scroll is visible.
    QVERIFY(isFullyVisible(chip));
    const qreal position = row()->position();
    m_fixture->waitUntilIdle();
    QCOMPARE(row()->position(), position);
    QVERIFY(isFullyVisible(chip));
    QCOMPARE(m_fixture->focusedName(), u"Search the stacks"_s);
}

void MarketPickerTest::chosenChipIsVisibleWhenShopOpensAgain()
{
    m_fixture->showMarkets(markets(40));
    for (int step = 0; step < 31; ++step)
        m_fixture->press(Qt::Key_Right);
    m_fixture->press({Qt::Key_Select, Qt::Key_Back});
    m_fixture->waitUntilIdle();
    QCOMPARE(m_fixture->store->market(), u"market number 29"_s);
    m_fixture->open();
    m_fixture->waitUntilIdle();
    QVERIFY(isFullyVisible(nameOf(29)));
}

void MarketPickerTest::chosenChipStaysVisibleWhenMarketsChange_data()
{
    QTest::addColumn<int>("steps"); // steps to a chip other than the chosen one, before the focus moves to the shelves
    QTest::newRow("no chip focused before") << 0;
    QTest::newRow("another chip focused before") << 35;
}

void MarketPickerTest::chosenChipStaysVisibleWhenMarketsChange()
{
    QFETCH(int, steps);
    m_fixture->store->setMarket(u"market number 20"_s);
    m_fixture->showMarkets(markets(40));
    for (int step = 0; step < steps; ++step)
        m_fixture->press(Qt::Key_Right);
    m_fixture->press(Qt::Key_Down);
    m_fixture->waitUntilIdle();
    m_fixture->showMarkets(markets(12, u"another market %1"_s) + markets(40));
    QVERIFY(isFullyVisible(u"MARKET NUMBER 20 33"_s));
    m_fixture->showMarkets(markets(40).mid(15));
    QVERIFY(isFullyVisible(u"MARKET NUMBER 20 6"_s));
    const qreal position = row()->position();
    m_fixture->press(Qt::Key_Up);
    // To the last focused control of the counter, so nothing scrolls.
    QCOMPARE(m_fixture->focusedName(), steps > 0 ? u"MARKET NUMBER 20 6"_s : u"Search the stacks"_s);
    QCOMPARE(row()->targetPosition(), position);
}

void MarketPickerTest::focusedChipStaysFocusedAndVisibleOnRefresh()
{
    m_fixture->showMarkets(markets(40));
    for (int step = 0; step < 32; ++step)
        m_fixture->press(Qt::Key_Right);
    QCOMPARE(m_fixture->focusedName(), nameOf(30));
    m_fixture->waitUntilIdle();
    m_fixture->showMarkets(markets(12, u"another market %1"_s) + markets(40));
    QCOMPARE(m_fixture->focusedName(), u"MARKET NUMBER 30 43"_s);
    QVERIFY(isFullyVisible(u"MARKET NUMBER 30 43"_s));
}

void MarketPickerTest::rightFromSearchMovesFocusToFirstVisibleChip()
{
    m_fixture->store->setMarket(u"market number 20"_s);
    m_fixture->showMarkets(markets(40));
    const QRectF search = m_fixture->areaOfFocusable(u"Search the stacks"_s);
    m_fixture->press(Qt::Key_Right);
    const QRectF chip = m_fixture->areaOnCanvas(m_fixture->focused());
    QVERIFY(chip.left() >= search.right() && chip.left() < m_fixture->areaOfFocusable(nameOf(20)).left());
    m_fixture->waitUntilIdle();
    QVERIFY(isFullyVisible(m_fixture->focusedName()));
    QVERIFY(isFullyVisible(nameOf(20)));
}

void MarketPickerTest::upFromShelvesReturnsFocusToLastChip()
{
    m_fixture->showMarkets(markets(40));
    for (int step = 0; step < 25; ++step)
        m_fixture->press(Qt::Key_Right);
    const QString left = m_fixture->focusedName();
    m_fixture->press({Qt::Key_Down, Qt::Key_Right, Qt::Key_Up});
    QCOMPARE(m_fixture->focusedName(), left);
}

void MarketPickerTest::chipsFadeAtEdgesWithHiddenChips()
{
    m_fixture->showMarkets(markets(40));
    const auto edges = [this] {
        QList<Qt::Edge> all;
        for (const EdgeFade* fade : fades())
            all.append(fade->edge());
        return all;
    };
    QCOMPARE(edges(), QList<Qt::Edge>{Qt::RightEdge});
    QCOMPARE(m_fixture->areaOnCanvas(fades().constFirst()).right(), m_fixture->areaOnCanvas(row()).right());
    for (int step = 0; step < 20; ++step)
        m_fixture->press(Qt::Key_Right);
    m_fixture->waitUntilIdle();
    QCOMPARE(edges(), (QList<Qt::Edge>{Qt::LeftEdge, Qt::RightEdge}));
    QCOMPARE(m_fixture->areaOnCanvas(fades().constFirst()).left(), m_fixture->areaOnCanvas(row()).left());
    for (int step = 0; step < 25; ++step)
        m_fixture->press(Qt::Key_Right);
    m_fixture->waitUntilIdle();
    QCOMPARE(edges(), QList<Qt::Edge>{Qt::LeftEdge});
}

void MarketPickerTest::chipsThatFitDoNotFade()
{
    m_fixture->showMarkets(markets(3));
    QVERIFY(fades().isEmpty());
    QVERIFY(!row()->parentItem()->clip());
}

void MarketPickerTest::focusedChipIsNeverCoveredByFade()
{
    QStringList slugs = markets(20);
    for (int market = 0; market < 20; market += 2)
        slugs[market] = QString(QChar(u'a' + market)).repeated(200);
    m_fixture->showMarkets(slugs);
    m_fixture->press(Qt::Key_Right);
    for (const int key : {Qt::Key_Right, Qt::Key_Left}) {
        for (int step = 0; step < 20; ++step) {
            m_fixture->press(key);
            m_fixture->waitUntilIdle();
            QVERIFY2(isFullyVisible(m_fixture->focusedName()), qPrintable(m_fixture->focusedName()));
        }
    }
}

void MarketPickerTest::partlyHiddenChipFadesIntoVeneer_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("720p") << QSize(1280, 720);
    QTest::newRow("1080p") << QSize(1920, 1080);
    QTest::newRow("2160p") << QSize(3840, 2160);
}

void MarketPickerTest::partlyHiddenChipFadesIntoVeneer()
{
    QFETCH(QSize, size);
    m_fixture = std::make_unique<ShopFixture>(QString(), size);
    m_fixture->show(u"A: 1; B: 2"_s);
    m_fixture->store->setMarket(u"market number 20"_s);
    m_fixture->showMarkets(markets(40));
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

void MarketPickerTest::focusRingIsCompleteAtBothEnds_data()
{
    partlyHiddenChipFadesIntoVeneer_data();
}

void MarketPickerTest::focusRingIsCompleteAtBothEnds()
{
    QFETCH(QSize, size);
    m_fixture = std::make_unique<ShopFixture>(QString(), size);
    m_fixture->show(u"A: 1; B: 2"_s);
    m_fixture->showMarkets(markets(40));
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
    m_fixture->press({Qt::Key_Right, Qt::Key_Right, Qt::Key_Left});
    QCOMPARE(m_fixture->focusedName(), u"All markets 99"_s);
    QVERIFY(hasFocusRing());
    for (int step = 0; step < 40; ++step)
        m_fixture->press(Qt::Key_Right);
    QCOMPARE(m_fixture->focusedName(), nameOf(39));
    QVERIFY(hasFocusRing());
}

QUILLMERE_TEST(MarketPickerTest, QGuiApplication)

} // namespace quillmere

#include "MarketPickerTest.moc"
