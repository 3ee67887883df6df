#include "EdgeFade.h"
#include "ScrollArea.h"
#include "ShopHouse.h"

#include <QRegularExpression>

#include <cmath>

/** The market picker with more markets than it has room for. */
class MarketPickerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_house.reset(); }

    void theShopOpensWithTheChosenChipInView_data();
    void theShopOpensWithTheChosenChipInView();
    void theChosenChipIsInViewWhenTheShopIsEnteredAgain();
    void theChosenChipStaysInViewThoughTheMarketsChange_data();
    void theChosenChipStaysInViewThoughTheMarketsChange();
    void aRefreshUnderTheFocusLeavesItWhereItIs();
    void theWayFromTheSearchLeadsToTheFirstChipInView();
    void upFromTheShelvesLeadsToTheChipThatWasLeft();
    void chipsFadeWhereMoreOfThemAreHidden();
    void fewChipsDoNotFade();
    void theFocusedChipIsNeverUnderAFade();
    void aHalfHiddenChipEndsInTheVeneer_data();
    void aHalfHiddenChipEndsInTheVeneer();
    void theRingIsWholeAtBothEnds_data();
    void theRingIsWholeAtBothEnds();

private:
    static QStringList markets(int count, const QString& name = u"market number %1"_s);
    static QString nameOf(int market) { return u"MARKET NUMBER %1 %2"_s.arg(market).arg(market + 1); }

    QQuickItem* picker() const { return Stage::first(m_house->shop(), "MarketPicker"); }
    ScrollArea* row() const { return static_cast<ScrollArea*>(Stage::first(picker(), "ScrollArea")); }
    QList<EdgeFade*> fades() const;
    /** Whether a chip is shown whole, with the ring that may be around it, and nothing fades it. */
    bool isPlain(const QString& chip) const;

    std::unique_ptr<ShopHouse> m_house;
};

namespace {

constexpr qreal ring = 8; // around a chip, points

} // namespace

void MarketPickerTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_house = std::make_unique<ShopHouse>();
    m_house->show(u"A: 1 2 3 4 5 6 7 8 9 10 11 12 13"_s);
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
    for (QQuickItem* item : Stage::all(picker(), "EdgeFade")) {
        if (item->isVisible())
            shown.append(static_cast<EdgeFade*>(item));
    }
    return shown;
}

bool MarketPickerTest::isPlain(const QString& chip) const
{
    const QRectF area = m_house->areaOfThing(chip).adjusted(-ring, -ring, ring, ring);
    const auto lies = [&](const QQuickItem* fade) { return m_house->area(fade).intersects(area); };
    const auto shown = fades();
    return m_house->thing(chip) && m_house->area(row()).contains(area) &&
           std::none_of(shown.cbegin(), shown.cend(), lies);
}

void MarketPickerTest::theShopOpensWithTheChosenChipInView_data()
{
    QTest::addColumn<QString>("market");
    QTest::addColumn<QString>("chip");
    QTest::newRow("all") << QString() << u"All markets 99"_s;
    QTest::newRow("the first") << u"market number 0"_s << nameOf(0);
    QTest::newRow("in the midst") << u"market number 20"_s << nameOf(20);
    QTest::newRow("the last") << u"market number 39"_s << nameOf(39);
    QTest::newRow("one that is not there, the beginning") << u"x"_s << u"All markets 99"_s;
}

void MarketPickerTest::theShopOpensWithTheChosenChipInView()
{
    QFETCH(QString, market);
    QFETCH(QString, chip);
    m_house->store.setMarket(market);
    m_house->showMarkets(markets(40));
    m_house->stage.press(Qt::Key_Back);
    m_house->stage.settle();
    m_house->open();
    // Before the first frame, and so without a scroll.
    QVERIFY(isPlain(chip));
    const qreal position = row()->position();
    m_house->stage.settle();
    QCOMPARE(row()->position(), position);
    QVERIFY(isPlain(chip));
    QCOMPARE(m_house->heard(), u"Search the stacks"_s);
}

void MarketPickerTest::theChosenChipIsInViewWhenTheShopIsEnteredAgain()
{
    m_house->showMarkets(markets(40));
    for (int step = 0; step < 31; ++step)
        m_house->stage.press(Qt::Key_Right);
    m_house->press({Qt::Key_Select, Qt::Key_Back});
    m_house->stage.settle();
    QCOMPARE(m_house->store.market(), u"market number 29"_s);
    m_house->open();
    m_house->stage.settle();
    QVERIFY(isPlain(nameOf(29)));
}

void MarketPickerTest::theChosenChipStaysInViewThoughTheMarketsChange_data()
{
    QTest::addColumn<int>("walked"); // to a chip that is not chosen, before the shelves have the focus
    QTest::newRow("nobody was there") << 0;
    QTest::newRow("the viewer was elsewhere in the row") << 35;
}

void MarketPickerTest::theChosenChipStaysInViewThoughTheMarketsChange()
{
    QFETCH(int, walked);
    m_house->store.setMarket(u"market number 20"_s);
    m_house->showMarkets(markets(40));
    for (int step = 0; step < walked; ++step)
        m_house->stage.press(Qt::Key_Right);
    m_house->stage.press(Qt::Key_Down);
    m_house->stage.settle();
    m_house->showMarkets(markets(12, u"another market %1"_s) + markets(40));
    QVERIFY(isPlain(u"MARKET NUMBER 20 33"_s));
    m_house->showMarkets(markets(40).mid(15));
    QVERIFY(isPlain(u"MARKET NUMBER 20 6"_s));
    const qreal position = row()->position();
    m_house->stage.press(Qt::Key_Up);
    // To where the viewer was in the counter, and so without a scroll.
    QCOMPARE(m_house->heard(), walked > 0 ? u"MARKET NUMBER 20 6"_s : u"Search the stacks"_s);
    QCOMPARE(row()->aim(), position);
}

void MarketPickerTest::aRefreshUnderTheFocusLeavesItWhereItIs()
{
    m_house->showMarkets(markets(40));
    for (int step = 0; step < 32; ++step)
        m_house->stage.press(Qt::Key_Right);
    QCOMPARE(m_house->heard(), nameOf(30));
    m_house->stage.settle();
    m_house->showMarkets(markets(12, u"another market %1"_s) + markets(40));
    QCOMPARE(m_house->heard(), u"MARKET NUMBER 30 43"_s);
    QVERIFY(isPlain(u"MARKET NUMBER 30 43"_s));
}

void MarketPickerTest::theWayFromTheSearchLeadsToTheFirstChipInView()
{
    m_house->store.setMarket(u"market number 20"_s);
    m_house->showMarkets(markets(40));
    const QRectF search = m_house->areaOfThing(u"Search the stacks"_s);
    m_house->stage.press(Qt::Key_Right);
    const QRectF chip = m_house->area(m_house->focused());
    QVERIFY(chip.left() >= search.right() && chip.left() < m_house->areaOfThing(nameOf(20)).left());
    m_house->stage.settle();
    QVERIFY(isPlain(m_house->heard()));
    QVERIFY(isPlain(nameOf(20)));
}

void MarketPickerTest::upFromTheShelvesLeadsToTheChipThatWasLeft()
{
    m_house->showMarkets(markets(40));
    for (int step = 0; step < 25; ++step)
        m_house->stage.press(Qt::Key_Right);
    const QString left = m_house->heard();
    m_house->press({Qt::Key_Down, Qt::Key_Right, Qt::Key_Up});
    QCOMPARE(m_house->heard(), left);
}

void MarketPickerTest::chipsFadeWhereMoreOfThemAreHidden()
{
    m_house->showMarkets(markets(40));
    const auto edges = [this] {
        QList<Qt::Edge> all;
        for (const EdgeFade* fade : fades())
            all.append(fade->edge());
        return all;
    };
    QCOMPARE(edges(), QList<Qt::Edge>{Qt::RightEdge});
    QCOMPARE(m_house->area(fades().constFirst()).right(), m_house->area(row()).right());
    for (int step = 0; step < 20; ++step)
        m_house->stage.press(Qt::Key_Right);
    m_house->stage.settle();
    QCOMPARE(edges(), (QList<Qt::Edge>{Qt::LeftEdge, Qt::RightEdge}));
    QCOMPARE(m_house->area(fades().constFirst()).left(), m_house->area(row()).left());
    for (int step = 0; step < 25; ++step)
        m_house->stage.press(Qt::Key_Right);
    m_house->stage.settle();
    QCOMPARE(edges(), QList<Qt::Edge>{Qt::LeftEdge});
}

void MarketPickerTest::fewChipsDoNotFade()
{
    m_house->showMarkets(markets(3));
    QVERIFY(fades().isEmpty());
    QVERIFY(!row()->parentItem()->clip());
}

void MarketPickerTest::theFocusedChipIsNeverUnderAFade()
{
    QStringList slugs = markets(20);
    for (int market = 0; market < 20; market += 2)
        slugs[market] = QString(QChar(u'a' + market)).repeated(200);
    m_house->showMarkets(slugs);
    m_house->stage.press(Qt::Key_Right);
    for (const int key : {Qt::Key_Right, Qt::Key_Left}) {
        for (int step = 0; step < 20; ++step) {
            m_house->stage.press(key);
            m_house->stage.settle();
            QVERIFY2(isPlain(m_house->heard()), qPrintable(m_house->heard()));
        }
    }
}

void MarketPickerTest::aHalfHiddenChipEndsInTheVeneer_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("720p") << QSize(1280, 720);
    QTest::newRow("1080p") << QSize(1920, 1080);
    QTest::newRow("2160p") << QSize(3840, 2160);
}

void MarketPickerTest::aHalfHiddenChipEndsInTheVeneer()
{
    QFETCH(QSize, size);
    m_house = std::make_unique<ShopHouse>(QString(), size);
    m_house->show(u"A: 1; B: 2"_s);
    m_house->store.setMarket(u"market number 20"_s);
    m_house->showMarkets(markets(40));
    const QImage chips = m_house->stage.picture();
    const QRectF area = Stage::area(picker());
    picker()->setVisible(false);
    const QImage veneer = m_house->stage.picture();
    // What is left of the chips in a column of pixels, 0 to 1.
    const auto rest = [&](int x) {
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
    QVERIFY2(rest(left) < 0.01 && rest(right) < 0.01, qPrintable(u"%1 %2"_s.arg(rest(left)).arg(rest(right))));
    // And nothing of them lies beyond.
    QCOMPARE(rest(left - 1), 0.0);
    QCOMPARE(rest(right + 1), 0.0);
    QVERIFY(rest(qRound(area.center().x())) > 0.03);
}

void MarketPickerTest::theRingIsWholeAtBothEnds_data()
{
    aHalfHiddenChipEndsInTheVeneer_data();
}

void MarketPickerTest::theRingIsWholeAtBothEnds()
{
    QFETCH(QSize, size);
    m_house = std::make_unique<ShopHouse>(QString(), size);
    m_house->show(u"A: 1; B: 2"_s);
    m_house->showMarkets(markets(40));
    const auto isRinged = [&] {
        const QImage picture = m_house->stage.picture();
        const QRectF chip = m_house->focused()->mapRectToScene(QRectF(QPointF(), m_house->focused()->size()));
        const qreal away = 6.0 * size.width() / 1920; // the middle of the ring's line
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
    m_house->press({Qt::Key_Right, Qt::Key_Right, Qt::Key_Left});
    QCOMPARE(m_house->heard(), u"All markets 99"_s);
    QVERIFY(isRinged());
    for (int step = 0; step < 40; ++step)
        m_house->stage.press(Qt::Key_Right);
    QCOMPARE(m_house->heard(), nameOf(39));
    QVERIFY(isRinged());
}

QTEST_MAIN(MarketPickerTest)
#include "MarketPickerTest.moc"
