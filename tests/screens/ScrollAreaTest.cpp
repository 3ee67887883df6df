#include "ScrollArea.h"
#include "TestMain.h"
#include "TestScreen.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

/** A scroll area: it moves its content so that a given range is visible. */
class ScrollAreaTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void revealScrollsNoFurtherThanNeeded_data();
    void revealScrollsNoFurtherThanNeeded();
    void scrollTakesScrollTime();
    void newTargetIsSetDuringScroll();
    void positionKeepsUpWithRepeatedReveals();
    void immediateRevealDoesNotAnimate();
    void noFrameIsDrawnAtRest();
    void positionsAreWholePixels_data();
    void positionsAreWholePixels();
    void positionIsWholePixelsAfterWindowIsResized();
    void positionIsBoundedWhenContentShrinks();
    void revealedRangeStaysVisibleWhenAreaShrinks();
    void revealBeforeContentArrivesIsAppliedLater();
    void scrollByStaysWithinContent();
    void hiddenAreaDoesNotAnimate();
    void childrenAreAddedToContentItem();

private:
    static ScrollArea* put(TestScreen& fixture, const QString& properties)
    {
        return static_cast<ScrollArea*>(fixture.load(u"ScrollArea { width: 1000; height: 400; %1 }"_s.arg(properties)));
    }
};

void ScrollAreaTest::revealScrollsNoFurtherThanNeeded_data()
{
    QTest::addColumn<qreal>("lead");
    QTest::addColumn<QList<qreal>>("reveals"); // first and last coordinates of each reveal
    QTest::addColumn<qreal>("position");
    QTest::newRow("already visible") << 0.0 << QList<qreal>{0, 400} << 0.0;
    QTest::newRow("below") << 0.0 << QList<qreal>{500, 600} << 200.0;
    QTest::newRow("scroll back") << 0.0 << QList<qreal>{500, 600, 100, 150} << 100.0;
    QTest::newRow("still visible after scroll") << 0.0 << QList<qreal>{500, 600, 250, 300} << 200.0;
    QTest::newRow("with lead") << 50.0 << QList<qreal>{500, 600} << 250.0;
    QTest::newRow("with lead, back") << 50.0 << QList<qreal>{900, 1000, 500, 600} << 450.0;
    QTest::newRow("large lead centres") << 300.0 << QList<qreal>{500, 600} << 350.0;
    QTest::newRow("large lead centres when scrolling back") << 300.0 << QList<qreal>{1500, 1600, 500, 600} << 350.0;
    QTest::newRow("at the beginning") << 300.0 << QList<qreal>{1500, 1600, 10, 60} << 0.0;
    QTest::newRow("at the end") << 300.0 << QList<qreal>{1990, 2000} << 1600.0;
    QTest::newRow("as long as the viewport") << 300.0 << QList<qreal>{500, 900} << 500.0;
    QTest::newRow("longer than the viewport") << 300.0 << QList<qreal>{500, 1200} << 500.0;
    QTest::newRow("past the end") << 0.0 << QList<qreal>{5000, 5100} << 1600.0;
}

void ScrollAreaTest::revealScrollsNoFurtherThanNeeded()
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

void ScrollAreaTest::scrollTakesScrollTime()
{
    TestScreen fixture;
    ScrollArea* area = put(fixture, u"contentExtent: 5000"_s);
    QSignalSpy moves(area, &ScrollArea::positionChanged);
    QElapsedTimer time;
    time.start();
    area->reveal(3000, 3100);
    QCOMPARE(area->targetPosition(), 2700.0);
    QCOMPARE(area->position(), 0.0);
    QTRY_COMPARE(area->position(), 2700.0);
    QVERIFY(time.elapsed() >= ScrollArea::scrollDuration - 20);
    QVERIFY(moves.size() > 3);
}

void ScrollAreaTest::newTargetIsSetDuringScroll()
{
    TestScreen fixture;
    ScrollArea* area = put(fixture, u"contentExtent: 5000"_s);
    area->reveal(3000, 3100);
    QTRY_VERIFY(area->position() > 1000);
    const qreal between = area->position();
    QVERIFY(between < 2700);
    QList<qreal> positions;
    connect(area, &ScrollArea::positionChanged, this, [&] { positions.append(area->position()); });
    area->reveal(100, 200);
    QCOMPARE(area->targetPosition(), 100.0);
    QCOMPARE(area->position(), between);
    QTRY_COMPARE(area->position(), 100.0);
    QVERIFY(std::is_sorted(positions.crbegin(), positions.crend()));
    QVERIFY(positions.constFirst() < between);
}

void ScrollAreaTest::positionKeepsUpWithRepeatedReveals()
{
    TestScreen fixture;
    ScrollArea* area = put(fixture, u"contentExtent: 100000"_s);
    // A step of 100 every 50 ms: the visible position must keep up with the revealed one.
    constexpr qreal step = 100;
    for (int i = 0; i < 40; ++i) {
        area->reveal(400 + i * step, 400 + (i + 1) * step);
        QTest::qWait(50);
        QVERIFY2(area->targetPosition() - area->position() < 3 * step, qPrintable(QString::number(area->position())));
    }
    QTRY_COMPARE(area->position(), 40 * step);
}

void ScrollAreaTest::immediateRevealDoesNotAnimate()
{
    TestScreen fixture;
    ScrollArea* area = put(fixture, u"contentExtent: 5000"_s);
    area->reveal(3000, 3100);
    area->reveal(4000, 4100, true);
    QCOMPARE(area->position(), 3700.0);
    fixture.waitUntilIdle();
    QCOMPARE(area->position(), 3700.0);
}

void ScrollAreaTest::noFrameIsDrawnAtRest()
{
    TestScreen fixture;
    ScrollArea* area = put(fixture, u"contentExtent: 5000; Rectangle { width: 100; height: 5000 }"_s);
    area->reveal(3000, 3100);
    QTRY_COMPARE(area->position(), 2700.0);
    fixture.waitUntilIdle();
    const int frames = fixture.frames();
    area->reveal(3000, 3100); // already visible
    QTest::qWait(300);
    QCOMPARE(fixture.frames(), frames);
}

void ScrollAreaTest::positionsAreWholePixels_data()
{
    QTest::addColumn<qreal>("scale");
    QTest::newRow("720p") << 2 / 3.0;
    QTest::newRow("1080p") << 1.0;
    QTest::newRow("width of 1366") << 1366 / 1920.0;
    QTest::newRow("2160p") << 2.0;
}

void ScrollAreaTest::positionsAreWholePixels()
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

void ScrollAreaTest::positionIsWholePixelsAfterWindowIsResized()
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

void ScrollAreaTest::positionIsBoundedWhenContentShrinks()
{
    TestScreen fixture;
    ScrollArea* area = put(fixture, u"contentExtent: 5000"_s);
    area->reveal(4900, 5000, true);
    fixture.waitUntilIdle();
    area->setContentExtent(3000);
    QCOMPARE(area->targetPosition(), 2600.0);
    QTRY_COMPARE(area->position(), 2600.0);
    area->setContentExtent(300);
    QTRY_COMPARE(area->position(), 0.0);
}

void ScrollAreaTest::revealedRangeStaysVisibleWhenAreaShrinks()
{
    TestScreen fixture;
    ScrollArea* area = put(fixture, u"contentExtent: 5000"_s);
    area->reveal(1000, 1100, true);
    QCOMPARE(area->position(), 700.0);
    area->setHeight(200);
    QCOMPARE(area->position(), 900.0);
}

void ScrollAreaTest::revealBeforeContentArrivesIsAppliedLater()
{
    ScrollArea area;
    area.setRevealMargin(1000);
    area.reveal(3000, 3100, true);
    area.setContentExtent(2000);
    area.setSize({1000, 400});
    area.setContentExtent(5000);
    QCOMPARE(area.position(), 2850.0);
}

void ScrollAreaTest::scrollByStaysWithinContent()
{
    TestScreen fixture;
    ScrollArea* area = put(fixture, u"contentExtent: 1000"_s);
    area->reveal(0, 1000, true);
    QVERIFY(area->scrollBy(320));
    QCOMPARE(area->targetPosition(), 320.0);
    QVERIFY(area->scrollBy(320));
    QCOMPARE(area->targetPosition(), 600.0);
    QVERIFY(!area->scrollBy(320));
    QVERIFY(area->scrollBy(-5000));
    QCOMPARE(area->targetPosition(), 0.0);
    QVERIFY(!area->scrollBy(-1));
}

void ScrollAreaTest::hiddenAreaDoesNotAnimate()
{
    TestScreen fixture;
    ScrollArea* area = put(fixture, u"contentExtent: 5000"_s);
    area->reveal(3000, 3100);
    QTRY_VERIFY(area->position() > 0);
    area->setVisible(false);
    QCOMPARE(area->position(), 2700.0);
    area->reveal(100, 200);
    QCOMPARE(area->position(), 100.0);
}

void ScrollAreaTest::childrenAreAddedToContentItem()
{
    TestScreen fixture;
    ScrollArea* area = put(fixture, u"contentExtent: 5000; Item { objectName: 'one'; width: parent.width } "
                                    "QtObject { objectName: 'none' } Repeater { model: 2; Item { } }"_s);
    QCOMPARE(area->contentItem()->childItems().size(), 4);
    const auto* const one = area->findChild<QQuickItem*>(u"one"_s);
    QCOMPARE(one->parentItem(), area->contentItem());
    QCOMPARE(one->width(), 1000.0);
    QCOMPARE(area->contentItem()->height(), 5000.0);
}

QUILLMERE_TEST(ScrollAreaTest, QGuiApplication)

} // namespace quillmere

#include "ScrollAreaTest.moc"
