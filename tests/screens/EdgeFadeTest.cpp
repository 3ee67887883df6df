#include "EdgeFade.h"
#include "Rows.h"
#include "TestMain.h"
#include "TestScreen.h"
#include "VeneerBackground.h"

#include <QPainter>
#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

constexpr int tolerance = 2; // of 255; a gradient that starts elsewhere is rounded differently

/** A background that counts how often it is painted. */
class CountingBackground : public PaintedItem
{
public:
    mutable int paintings = 0;

    void paint(QPainter& painter, const QSizeF& size) const override
    {
        ++paintings;
        painter.fillRect(QRectF(QPointF(), size), Qt::gray);
    }
};

/** A white row on the veneer, with a fade at one end. */
struct FadeFixture : TestScreen
{
    explicit FadeFixture(const QString& properties, QSize size = {1920, 1080}) : TestScreen(size)
    {
        canvas =
            load(u"import Quillmere.Shop\n"
                 "Canvas { FullBleed { VeneerBackground { id: veneer; anchors.fill: parent } }\n"
                 "Item { id: row; objectName: 'row'; x: 333; y: 200; width: 900; height: 74\n"
                 "Rectangle { objectName: 'chip'; anchors.fill: parent; color: 'white' }\n"
                 "EdgeFade { objectName: 'fade'; width: 120; height: parent.height; background: veneer; %1 } } }"_s.arg(
                     properties));
        row = canvas->findChild<QQuickItem*>(u"row"_s);
        chip = canvas->findChild<QQuickItem*>(u"chip"_s);
        fade = canvas->findChild<EdgeFade*>(u"fade"_s);
    }

    QQuickItem* canvas;
    QQuickItem* row;
    QQuickItem* chip;
    EdgeFade* fade;
};

int difference(QRgb a, QRgb b)
{
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
}

/** The greatest difference between two pictures in any colour channel, of 255. */
int difference(const QImage& a, const QImage& b)
{
    int most = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x)
            most = std::max(most, difference(a.pixel(x, y), b.pixel(x, y)));
    }
    return most;
}

} // namespace

/** The fade at the end of a row, which shows the background. */
class EdgeFadeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fadeMatchesBackgroundAtEveryPosition_data()
    {
        rows<QSize>({"size"}, {{"720p", {1280, 720}},
                               {"1080p", {1920, 1080}},
                               {"2160p", {3840, 2160}},
                               {"letterboxed", {1600, 1200}},
                               {"pillarboxed", {2560, 1080}},
                               {"odd size", {1366, 768}}});
    }

    void fadeMatchesBackgroundAtEveryPosition()
    {
        QFETCH(QSize, size);
        FadeFixture fixture(u"edge: Qt.LeftEdge; hiddenLength: 1000"_s, size);
        fixture.chip->setVisible(false);
        fixture.fade->setVisible(false);
        const QImage ground = fixture.picture();
        fixture.fade->setVisible(true);
        const double points = 1 / fixture.canvas->scale(); // points per pixel
        for (const QPointF& pixels : {QPointF(222, 150), QPointF(0, 0), QPointF(801, 399), QPointF(90.25, 77.5)}) {
            fixture.row->setPosition(pixels * points);
            const auto most = [&] { return difference(fixture.currentPicture(), ground); };
            // With a render thread, a frame from before the move may still be grabbed.
            if (fixture.window().rendererInterface()->graphicsApi() == QSGRendererInterface::Software)
                QVERIFY(most() <= tolerance);
            else
                QTRY_VERIFY(most() <= tolerance);
        }
    }

    void fadeHidesRowAtEdgeAndNotAtItsInnerEnd_data()
    {
        rows<QString, bool>({"edge", "isLeft"},
                            {{"left", u"Qt.LeftEdge"_s, true}, {"right", u"Qt.RightEdge"_s, false}});
    }

    void fadeHidesRowAtEdgeAndNotAtItsInnerEnd()
    {
        QFETCH(QString, edge);
        QFETCH(bool, isLeft);
        FadeFixture fixture(u"edge: %1; hiddenLength: 120"_s.arg(edge));
        const QImage faded = fixture.picture();
        fixture.row->setVisible(false);
        const QImage ground = fixture.picture();
        const auto at = [&](const QImage& picture, int x) { return picture.pixel(333 + (isLeft ? x : 119 - x), 237); };
        QVERIFY(difference(at(faded, 0), at(ground, 0)) <= 4);
        QVERIFY(difference(at(faded, 119), qRgb(255, 255, 255)) <= 4);
        int before = 0;
        for (int x = 1; x < 120; ++x) {
            const int now =
                difference(at(faded, x), at(ground, x)) * 255 / difference(qRgb(255, 255, 255), at(ground, x));
            QVERIFY2(now >= before - tolerance, qPrintable(QString::number(x)));
            before = now;
        }
    }

    void fadeStrengthFollowsHiddenLength_data()
    {
        rows<qreal, bool, qreal>({"hidden", "isShown", "strength"}, {{"nothing", 0.0, false, 0.0},
                                                                     {"row shorter than viewport", -50.0, false, 0.0},
                                                                     {"a little", 30.0, true, 0.25},
                                                                     {"much", 1000.0, true, 1.0}});
    }

    void fadeStrengthFollowsHiddenLength()
    {
        QFETCH(qreal, hidden);
        FadeFixture fixture(u"edge: Qt.RightEdge; hiddenLength: %1"_s.arg(hidden), {960, 540});
        QTEST(fixture.fade->isVisible(), "isShown");
        QTEST(fixture.fade->opacity(), "strength");
    }

    void fadeMatchesBackgroundAfterMoveWhileHidden()
    {
        FadeFixture fixture(u"edge: Qt.LeftEdge; hiddenLength: 1000"_s);
        fixture.chip->setVisible(false);
        fixture.fade->setHiddenLength(0);
        const QImage ground = fixture.picture();
        fixture.row->setPosition({40, 900});
        fixture.waitUntilIdle();
        fixture.fade->setHiddenLength(1000);
        QVERIFY(difference(fixture.picture(), ground) <= tolerance);
    }

    void fadeOutsideDisplayIsNotPainted()
    {
        TestScreen fixture({400, 300});
        QQuickItem* root = fixture.load(u"Item {}"_s);
        CountingBackground ground;
        ground.setSize({400, 300});
        EdgeFade fade;
        fade.setParentItem(root);
        fade.setBackground(&ground);
        fade.setSize({100, 50});
        fade.setHiddenLength(1000);
        fixture.waitUntilIdle();
        const auto paintings = [&](std::initializer_list<qreal> positions) {
            const int before = ground.paintings;
            for (const qreal y : positions) {
                fade.setY(y);
                fixture.waitForFrame();
                fixture.waitUntilIdle();
            }
            return ground.paintings - before;
        };
        QCOMPARE(paintings({10, 20, 30}), 3);
        QCOMPARE(paintings({-60, -70, -80, 310, 320}), 0);
        QCOMPARE(paintings({-10}), 1);
    }

    void fadeAtRestDrawsNoFrame()
    {
        FadeFixture fixture(u"edge: Qt.LeftEdge; hiddenLength: 1000"_s);
        fixture.waitUntilIdle();
        const int before = fixture.frames();
        QTest::qWait(300);
        QCOMPARE(fixture.frames(), before);
        // Repainting during a frame requests one more frame.
        fixture.row->setY(300);
        fixture.waitUntilIdle();
        QVERIFY(fixture.frames() <= before + 2);
    }
};

QUILLMERE_TEST(EdgeFadeTest, QGuiApplication)

} // namespace quillmere

#include "EdgeFadeTest.moc"
