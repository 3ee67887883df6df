#include "ScrollArea.h"
#include "Stage.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/** A tall content of the length `extent` in a room of 600 points, and the bar beside it. */
struct Reading
{
    Stage stage{{800, 600}};
    ScrollArea* area = nullptr;
    QQuickItem* indicator = nullptr;

    explicit Reading(int extent)
    {
        QQuickItem* root = stage.put(u"Item { width: 800; height: 600; ScrollArea { id: area; anchors.fill: parent; "
                                     "contentExtent: %1 } ScrollIndicator { id: bar; area: area; height: 600; "
                                     "anchors.right: parent.right } }"_s.arg(extent));
        area = qobject_cast<ScrollArea*>(Stage::first(root, "ScrollArea"));
        indicator = Stage::first(root, "ScrollIndicator");
    }

    QRectF bar() const { return Stage::area(Stage::first(indicator, "CardPlate")); }
};

} // namespace

/** The bar that says how far a text is scrolled. */
class ScrollIndicatorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theBarIsAsLongInProportionAsWhatIsShown();
    void theBarGoesFromEndToEnd();
    void theBarOfAVeryLongTextCanStillBeSeen();
    void aTextThatFitsHasNoBar_data();
    void aTextThatFitsHasNoBar();
};

void ScrollIndicatorTest::theBarIsAsLongInProportionAsWhatIsShown()
{
    const Reading reading(1800);
    QVERIFY(reading.indicator->isVisible());
    QCOMPARE(reading.bar().height(), 200.0);
    QCOMPARE(reading.bar().right(), 800.0);
}

void ScrollIndicatorTest::theBarGoesFromEndToEnd()
{
    const Reading reading(1800);
    QCOMPARE(reading.bar().top(), 0.0);
    reading.area->reveal(900, 900, true);
    const double middle = reading.bar().top();
    QVERIFY(middle > 50 && middle < 350);
    reading.area->reveal(1790, 1800, true);
    QCOMPARE(reading.bar().bottom(), 600.0);
}

void ScrollIndicatorTest::theBarOfAVeryLongTextCanStillBeSeen()
{
    const Reading reading(1'000'000);
    QCOMPARE(reading.bar().height(), 40.0);
    reading.area->reveal(999'999, 1'000'000, true);
    QCOMPARE(reading.bar().bottom(), 600.0);
}

void ScrollIndicatorTest::aTextThatFitsHasNoBar_data()
{
    QTest::addColumn<int>("extent");
    QTest::newRow("nothing") << 0;
    QTest::newRow("short") << 300;
    QTest::newRow("as long as the room") << 600;
}

void ScrollIndicatorTest::aTextThatFitsHasNoBar()
{
    QFETCH(int, extent);
    const Reading reading(extent);
    QVERIFY(!reading.indicator->isVisible());
}

QTEST_MAIN(ScrollIndicatorTest)
#include "ScrollIndicatorTest.moc"
