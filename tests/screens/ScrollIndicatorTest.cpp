#include "Rows.h"
#include "ScrollArea.h"
#include "TestMain.h"
#include "TestScreen.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

/** A viewport of 600 points with content of height `extent`, and the scroll indicator beside it. */
struct ScrollingPage : TestScreen
{
    ScrollArea* area = nullptr;
    QQuickItem* indicator = nullptr;

    explicit ScrollingPage(int extent) : TestScreen({800, 600})
    {
        QQuickItem* root = load(u"Item { width: 800; height: 600; ScrollArea { id: area; anchors.fill: parent; "
                                "contentExtent: %1 } ScrollIndicator { id: bar; area: area; height: 600; "
                                "anchors.right: parent.right } }"_s.arg(extent));
        area = qobject_cast<ScrollArea*>(first(root, "ScrollArea"));
        indicator = first(root, "ScrollIndicator");
    }

    QRectF bar() const { return TestScreen::area(first(indicator, "CardPlate")); }
};

} // namespace

/** The scroll indicator, a bar that shows the scroll position. */
class ScrollIndicatorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void barShowsLengthAndPositionOfVisiblePart()
    {
        const ScrollingPage page(1800);
        QVERIFY(page.indicator->isVisible());
        QCOMPARE(page.bar().height(), 200.0);
        QCOMPARE(page.bar().right(), 800.0);
        QCOMPARE(page.bar().top(), 0.0);
        page.area->reveal(900, 900, true);
        const double middle = page.bar().top();
        QVERIFY(middle > 50 && middle < 350);
        page.area->reveal(1790, 1800, true);
        QCOMPARE(page.bar().bottom(), 600.0);
    }

    void barHasMinimumLength()
    {
        const ScrollingPage page(1'000'000);
        QCOMPARE(page.bar().height(), 40.0);
        page.area->reveal(999'999, 1'000'000, true);
        QCOMPARE(page.bar().bottom(), 600.0);
    }

    void barIsHiddenWhenContentFits_data()
    {
        rows<int>({"extent"}, {{"nothing", 0}, {"short", 300}, {"as long as the viewport", 600}});
    }

    void barIsHiddenWhenContentFits()
    {
        QFETCH(int, extent);
        const ScrollingPage page(extent);
        QVERIFY(!page.indicator->isVisible());
    }
};

QUILLMERE_TEST(ScrollIndicatorTest, QGuiApplication)

} // namespace quillmere

#include "ScrollIndicatorTest.moc"
