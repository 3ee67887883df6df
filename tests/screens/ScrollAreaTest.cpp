#include "FocusFixture.h"
#include "Rows.h"
#include "TestMain.h"

#include <QSignalSpy>

namespace quillmere {

namespace {

struct AreaFixture : TestScreen
{
    explicit AreaFixture(int contentExtent, const QString& content = {})
        : area(static_cast<ScrollArea*>(load(
              u"ScrollArea { width: 1000; height: 400; contentExtent: %1; %2 }"_s.arg(contentExtent).arg(content))))
    {}

    ScrollArea* const area;
};

} // namespace

/** A scroll area: it moves its content so that a given range is visible. */
class ScrollAreaTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void revealScrollsNoFurtherThanNeeded_data()
    {
        // "reveals": first and last coordinates of each reveal
        rows<qreal, QList<qreal>, qreal>({"lead", "reveals", "position"},
                                         {{"already visible", 0, {0, 400}, 0},
                                          {"below", 0, {500, 600}, 200},
                                          {"scroll back", 0, {500, 600, 100, 150}, 100},
                                          {"still visible after scroll", 0, {500, 600, 250, 300}, 200},
                                          {"with lead", 50, {500, 600}, 250},
                                          {"with lead, back", 50, {900, 1000, 500, 600}, 450},
                                          {"large lead centres", 300, {500, 600}, 350},
                                          {"large lead centres when scrolling back", 300, {1500, 1600, 500, 600}, 350},
                                          {"at the beginning", 300, {1500, 1600, 10, 60}, 0},
                                          {"at the end", 300, {1990, 2000}, 1600},
                                          {"as long as the viewport", 300, {500, 900}, 500},
                                          {"longer than the viewport", 300, {500, 1200}, 500},
                                          {"past the end", 0, {5000, 5100}, 1600}});
    }

    void revealScrollsNoFurtherThanNeeded()
    {
        QFETCH(qreal, lead);
        QFETCH(QList<qreal>, reveals);
        for (const Qt::Orientation orientation : {Qt::Vertical, Qt::Horizontal}) {
            ScrollArea area;
            area.setSize(orientation == Qt::Vertical ? QSizeF(1000, 400) : QSizeF(400, 1000));
            area.setOrientation(orientation);
            area.setContentExtent(2000);
            area.setRevealMargin(lead);
            for (qsizetype i = 0; i < reveals.size(); i += 2)
                area.reveal(reveals.at(i), reveals.at(i + 1), true);
            QTEST(area.position(), "position");
            QCOMPARE(area.targetPosition(), area.position());
            const QPointF content = area.contentItem()->position();
            QCOMPARE(orientation == Qt::Vertical ? content.y() : content.x(), -area.position());
            QCOMPARE(orientation == Qt::Vertical ? content.x() : content.y(), 0.0);
        }
    }

    void scrollTakesScrollTime()
    {
        AreaFixture fixture(5000);
        QSignalSpy moves(fixture.area, &ScrollArea::positionChanged);
        QElapsedTimer time;
        time.start();
        fixture.area->reveal(3000, 3100);
        QCOMPARE(fixture.area->targetPosition(), 2700.0);
        QCOMPARE(fixture.area->position(), 0.0);
        QTRY_COMPARE(fixture.area->position(), 2700.0);
        QVERIFY(time.elapsed() >= ScrollArea::scrollDuration - 20);
        QVERIFY(moves.size() > 3);
    }

    void newTargetIsSetDuringScroll()
    {
        AreaFixture fixture(5000);
        fixture.area->reveal(3000, 3100);
        QTRY_VERIFY(fixture.area->position() > 1000);
        const qreal between = fixture.area->position();
        QVERIFY(between < 2700);
        QList<qreal> positions;
        connect(fixture.area, &ScrollArea::positionChanged, this, [&] { positions.append(fixture.area->position()); });
        fixture.area->reveal(100, 200);
        QCOMPARE(fixture.area->targetPosition(), 100.0);
        QCOMPARE(fixture.area->position(), between);
        QTRY_COMPARE(fixture.area->position(), 100.0);
        QVERIFY(std::is_sorted(positions.crbegin(), positions.crend()));
        QVERIFY(positions.constFirst() < between);
    }

    void positionKeepsUpWithRepeatedReveals()
    {
        AreaFixture fixture(100000);
        // A step of 100 every 50 ms: the visible position must keep up with the revealed one.
        constexpr qreal step = 100;
        for (int i = 0; i < 40; ++i) {
            fixture.area->reveal(400 + i * step, 400 + (i + 1) * step);
            QTest::qWait(50);
            QVERIFY2(fixture.area->targetPosition() - fixture.area->position() < 3 * step,
                     qPrintable(QString::number(fixture.area->position())));
        }
        QTRY_COMPARE(fixture.area->position(), 40 * step);
    }

    void immediateRevealDoesNotAnimate()
    {
        AreaFixture fixture(5000);
        fixture.area->reveal(3000, 3100);
        fixture.area->reveal(4000, 4100, true);
        QCOMPARE(fixture.area->position(), 3700.0);
        fixture.waitUntilIdle();
        QCOMPARE(fixture.area->position(), 3700.0);
    }

    void noFrameIsDrawnAtRest()
    {
        AreaFixture fixture(5000, u"Rectangle { width: 100; height: 5000 }"_s);
        fixture.area->reveal(3000, 3100);
        QTRY_COMPARE(fixture.area->position(), 2700.0);
        fixture.waitUntilIdle();
        const int frames = fixture.frames();
        fixture.area->reveal(3000, 3100); // already visible
        QTest::qWait(300);
        QCOMPARE(fixture.frames(), frames);
    }

    void positionsAreWholePixels_data()
    {
        rows<qreal>({"scale"}, {{"720p", 2 / 3.0}, {"1080p", 1.0}, {"width of 1366", 1366 / 1920.0}, {"2160p", 2.0}});
    }

    void positionsAreWholePixels()
    {
        QFETCH(qreal, scale);
        TestScreen fixture;
        auto plane = fixture.load(u"Item { transformOrigin: Item.TopLeft; "
                                  "ScrollArea { width: 1000; height: 400; contentExtent: 5001.3 } }"_s,
                                  {{u"scale"_s, scale}});
        auto area = static_cast<ScrollArea*>(TestScreen::first(plane, "ScrollArea"));
        QList<qreal> pixels;
        connect(area, &ScrollArea::positionChanged, this, [&] { pixels.append(area->position() * scale); });
        area->reveal(1234.5, 1300.1);
        const qreal middle = area->targetPosition();
        QTRY_COMPARE(area->position(), middle);
        area->reveal(5001, 5001.3);
        const qreal end = area->targetPosition();
        QTRY_COMPARE(area->position(), end);
        QVERIFY(std::abs(middle - 900.1) <= 0.51 / scale);
        QVERIFY(std::abs(end - 4601.3) <= 0.51 / scale);
        for (const qreal pixel : std::as_const(pixels))
            QVERIFY2(std::abs(pixel - std::round(pixel)) < 1e-6, qPrintable(QString::number(pixel, 'f', 9)));
    }

    void positionIsWholePixelsAfterWindowIsResized()
    {
        TestScreen fixture;
        auto canvas = fixture.load(u"Item { width: 1920; height: 1080; Canvas { "
                                   "ScrollArea { width: 1000; height: 400; contentExtent: 5000 } } }"_s);
        auto area = static_cast<ScrollArea*>(TestScreen::first(canvas, "ScrollArea"));
        area->reveal(1001, 1101, true);
        QCOMPARE(area->position(), 701.0);
        fixture.window().resize(1280, 720);
        canvas->setSize({1280, 720});
        QTRY_VERIFY(area->position() != 701.0);
        QCOMPARE(area->position(), 700.5); // 467 pixels
    }

    void positionIsBoundedWhenContentShrinks()
    {
        AreaFixture fixture(5000);
        fixture.area->reveal(4900, 5000, true);
        fixture.waitUntilIdle();
        fixture.area->setContentExtent(3000);
        QCOMPARE(fixture.area->targetPosition(), 2600.0);
        QTRY_COMPARE(fixture.area->position(), 2600.0);
        fixture.area->setContentExtent(300);
        QTRY_COMPARE(fixture.area->position(), 0.0);
    }

    void revealedRangeStaysVisibleWhenAreaShrinks()
    {
        AreaFixture fixture(5000);
        fixture.area->reveal(1000, 1100, true);
        QCOMPARE(fixture.area->position(), 700.0);
        fixture.area->setHeight(200);
        QCOMPARE(fixture.area->position(), 900.0);
    }

    void revealBeforeContentArrivesIsAppliedLater()
    {
        ScrollArea area;
        area.setRevealMargin(1000);
        area.reveal(3000, 3100, true);
        area.setContentExtent(2000);
        area.setSize({1000, 400});
        area.setContentExtent(5000);
        QCOMPARE(area.position(), 2850.0);
    }

    void scrollByStaysWithinContent()
    {
        AreaFixture fixture(1000);
        fixture.area->reveal(0, 1000, true);
        QVERIFY(fixture.area->scrollBy(320));
        QCOMPARE(fixture.area->targetPosition(), 320.0);
        QVERIFY(fixture.area->scrollBy(320));
        QCOMPARE(fixture.area->targetPosition(), 600.0);
        QVERIFY(!fixture.area->scrollBy(320));
        QVERIFY(fixture.area->scrollBy(-5000));
        QCOMPARE(fixture.area->targetPosition(), 0.0);
        QVERIFY(!fixture.area->scrollBy(-1));
    }

    void hiddenAreaDoesNotAnimate()
    {
        AreaFixture fixture(5000);
        fixture.area->reveal(3000, 3100);
        QTRY_VERIFY(fixture.area->position() > 0);
        fixture.area->setVisible(false);
        QCOMPARE(fixture.area->position(), 2700.0);
        fixture.area->reveal(100, 200);
        QCOMPARE(fixture.area->position(), 100.0);
    }

    void childrenAreAddedToContentItem()
    {
        AreaFixture fixture(5000, u"Item { objectName: 'one'; width: parent.width } "
                                  "QtObject { objectName: 'none' } Repeater { model: 2; Item { } }"_s);
        QCOMPARE(fixture.area->contentItem()->childItems().size(), 4);
        const auto* const one = fixture.area->findChild<QQuickItem*>(u"one"_s);
        QCOMPARE(one->parentItem(), fixture.area->contentItem());
        QCOMPARE(one->width(), 1000.0);
        QCOMPARE(fixture.area->contentItem()->height(), 5000.0);
    }
};

QUILLMERE_TEST(ScrollAreaTest, QGuiApplication)

} // namespace quillmere

#include "ScrollAreaTest.moc"
