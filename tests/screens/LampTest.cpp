#include "DrawnArea.h"
#include "FrontFixture.h"
#include "PaintedItem.h"
#include "StationMotion.h"
#include "TestMain.h"

namespace quillmere {

namespace {

/** A lamp on black whose glow the test sets. */
struct Lamp : TestScreen
{
    QQuickItem* root;
    QQuickItem* lamp;

    explicit Lamp(QSize size = {400, 120}, double scale = 1) : TestScreen(size)
    {
        root = load(
            u"Item { scale: %1; transformOrigin: Item.TopLeft; OnAirLamp { x: 48; y: 48; live: false } }"_s.arg(scale));
        lamp = first(root, "OnAirLamp");
        lamp->setProperty("live", true);
        pulse()->setProperty("paused", true);
    }

    QObject* pulse() const
    {
        const auto objects = lamp->findChildren<QObject*>();
        const auto found = std::find_if(objects.cbegin(), objects.cend(), [](const QObject* object) {
            return object->inherits("QQuickSequentialAnimation");
        });
        return found == objects.cend() ? nullptr : *found;
    }

    QImage at(double glow)
    {
        lamp->setProperty("glow", glow);
        waitForFrame();
        return window().grabWindow();
    }
};

/** The lowest pixel row in which letters with straight ends have ink; round letters reach slightly lower. */
int lowestInk(const QImage& picture, const QRectF& area)
{
    int lowest = -1;
    int most = 0;
    const QRect pixels = area.toAlignedRect();
    const auto inked = [&](int y) {
        int count = 0;
        for (int x = pixels.left() + 1; x < pixels.right(); ++x) {
            const QColor below = picture.pixelColor(x, pixels.bottom());
            count += std::abs(picture.pixelColor(x, y).lightness() - below.lightness()) > 20;
        }
        return count;
    };
    for (int y = pixels.top(); y < pixels.bottom(); ++y)
        most = std::max(most, inked(y));
    for (int y = pixels.top(); y < pixels.bottom(); ++y) {
        if (2 * inked(y) > most)
            lowest = y;
    }
    return lowest;
}

} // namespace

/** The on-air lamp: its glow, and what it repaints. */
class LampTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pulseUsesConstantsAndCurveOfDesign()
    {
        QCOMPARE(StationMotion::glowTime(), 1100);
        QCOMPARE(StationMotion::faintGlowRadius, 6.0);
        QCOMPARE(StationMotion::faintGlowOpacity, 0.3);
        QCOMPARE(StationMotion::fullGlowRadius, 18.0);
        QCOMPARE(StationMotion::fullGlowOpacity, 0.9);

        const Lamp lamp;
        QCOMPARE(TestScreen::animationTimes(lamp.root), (QList<int>{1100, 1100}));
        const QEasingCurve curve = StationMotion::easeInOut();
        QCOMPARE(TestScreen::animationCurves(lamp.root), (QList<QEasingCurve>{curve, curve}));
    }

    void glowGrowsInRadiusAndOpacity_data()
    {
        QTest::addColumn<double>("scale");
        QTest::addColumn<double>("glow");
        for (const double scale : {2.0 / 3, 1.0, 2.0}) {
            for (const double glow : {0.0, 0.1, 0.25, 0.4, 0.5, 0.75, 1.0})
                QTest::addRow("%.2f at scale %.2f", glow, scale) << scale << glow;
        }
    }

    void glowGrowsInRadiusAndOpacity()
    {
        QFETCH(const double, scale);
        QFETCH(const double, glow);
        Lamp lamp({int(400 * scale), int(120 * scale)}, scale);
        const QImage picture = lamp.at(glow);
        const double radius = 6 + (18 - 6) * glow;
        const double opacity = 0.3 + (0.9 - 0.3) * glow;
        const QRectF disc = TestScreen::area(TestScreen::first(lamp.root, "LampDisc"));
        const int y = int(disc.center().y());
        for (int x = int(std::floor(disc.left())) - 1; x >= 0; --x) {
            // Distance, in points, of the pixel's centre from the edge of the disc.
            const double distance = std::hypot(disc.center().x() - x - 0.5, disc.center().y() - y - 0.5) / scale - 13;
            // The integral of a bell curve: half of the opacity at the edge, a thirteenth of it one radius outside.
            const double wanted = 217 * opacity * 0.5 * std::erfc(distance / radius);
            const int seen = picture.pixelColor(x, y).red();
            QVERIFY2(std::abs(seen - wanted) <= 3,
                     qPrintable(u"%1 at %2 instead of %3"_s.arg(seen).arg(x).arg(wanted)));
        }
    }

    void pulsePaintsEachStepOnce()
    {
        Lamp lamp;
        const auto* glow = qobject_cast<PaintedItem*>(TestScreen::first(lamp.root, "SoftShadow"));
        QSet<SharedPictures::Picture> pictures;
        for (int round = 0; round < 2; ++round) {
            for (int percent = 0; percent <= 100; ++percent) {
                lamp.lamp->setProperty("glow", percent / 100.0);
                lamp.waitForFrame();
                pictures.insert(glow->picture());
            }
        }
        QCOMPARE(pictures.size(), StationMotion::glowSteps + 1);
    }

    void lampTextsHaveSameBaseline_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<bool>("live");
        for (const QSize size :
             {QSize(1280, 720), QSize(1366, 768), QSize(1920, 1080), QSize(2560, 1080), QSize(3840, 2160)}) {
            for (const bool live : {false, true})
                QTest::addRow("%s at %d by %d", live ? "lit" : "dark", size.width(), size.height()) << size << live;
        }
    }

    void lampTextsHaveSameBaseline()
    {
        QFETCH(const QSize, size);
        QFETCH(const bool, live);
        FrontFixture fixture(size);
        fixture.setNews(live, u"Harbour Council"_s);
        // Neither text has a letter with a descender, so their lowest pixels are on the baseline.
        const QQuickItem* words = TestScreen::texts(TestScreen::first(fixture.newsDoor(), "OnAirLamp")).constFirst();
        const QQuickItem* caption = TestScreen::texts(fixture.newsDoor()).constLast();
        QCOMPARE(words->property("text").toString(), live ? u"ON AIR"_s : u"OFF AIR"_s);
        QCOMPARE(caption->property("text").toString(), live ? u"ON AIR"_s : u"STANDBY"_s);
        fixture.waitForFrame();
        const QImage picture = fixture.window().grabWindow();
        QCOMPARE(lowestInk(picture, TestScreen::area(words)), lowestInk(picture, TestScreen::area(caption)));
    }

    void frontScreenWithoutBroadcastDrawsNoFrame()
    {
        FrontFixture fixture;
        QCOMPARE(fixture.framesAtRest(3000), 0);
    }

    void litLampRepaintsOnlyItself()
    {
        FrontFixture fixture;
        fixture.setNews(true, u"Harbour Council"_s);
        const QQuickItem* lamp = TestScreen::first(fixture.newsDoor(), "OnAirLamp");
        const auto glow = [&] { return lamp->property("glow").toDouble(); };
        QTRY_VERIFY(glow() > 0.9);
        QTRY_VERIFY(glow() < 0.1);

        // What is drawn on the display during a whole pulse, even if no pixel changes.
        DrawnArea drawn(XConnection::open());
        QTRY_VERIFY(glow() > 0.9);
        QTRY_VERIFY(glow() < 0.1);
        const QRectF area = drawn.take();
        const QRectF disc = TestScreen::area(TestScreen::first(fixture.newsDoor(), "LampDisc"));
        const auto around = [&](double margin) { return disc.marginsAdded({margin, margin, margin, margin}); };
        const double reach = StationMotion::glowSpread(1) * StationMotion::liftScale();
        QVERIFY2(area.contains(around(reach / 2)), "the glow is not drawn");
        QVERIFY2(around(reach + 3).contains(area),
                 qPrintable(u"%1 x %2 pixels"_s.arg(area.width()).arg(area.height())));
    }
};

QUILLMERE_TEST(LampTest, QGuiApplication)

} // namespace quillmere

#include "LampTest.moc"
