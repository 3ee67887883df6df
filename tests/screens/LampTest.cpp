#include "DrawnArea.h"
#include "FrontHouse.h"
#include "StationMotion.h"

#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;

/** The on-air lamp: how it glows, and what its glowing costs. */
class LampTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theGlowIsAsPublished();
    void theGlowFallsOffOverItsRadius_data();
    void theGlowFallsOffOverItsRadius();
    void theGlowsFadeIntoEachOther();
    void aDarkFrontScreenDrawsNoFrame();
    void aLitLampRepaintsOnlyItself();
};

void LampTest::theGlowIsAsPublished()
{
    QCOMPARE(StationMotion::glowTime(), 1100);
    QCOMPARE(StationMotion::faintGlowRadius, 6.0);
    QCOMPARE(StationMotion::faintGlowOpacity, 0.3);
    QCOMPARE(StationMotion::fullGlowRadius, 18.0);
    QCOMPARE(StationMotion::fullGlowOpacity, 0.9);

    Stage stage({400, 120});
    QQuickItem* root = stage.put(u"Item { OnAirLamp { x: 50; y: 50; live: false } }"_s);
    QCOMPARE(Stage::animationTimes(root), (QList<int>{1100, 1100}));
    const auto glows = Stage::all(root, "SoftShadow");
    QCOMPARE(glows.size(), 2);
    QCOMPARE(glows[0]->property("spread").toDouble(), 12.0);
    QCOMPARE(glows[0]->property("color").value<QColor>(), StationPalette::faded(StationPalette::onAirRed(), 0.3));
    QCOMPARE(glows[1]->property("spread").toDouble(), 36.0);
    QCOMPARE(glows[1]->property("color").value<QColor>(), StationPalette::faded(StationPalette::onAirRed(), 0.9));
}

void LampTest::theGlowFallsOffOverItsRadius_data()
{
    QTest::addColumn<QString>("glow");
    QTest::addColumn<double>("radius");
    QTest::addColumn<double>("opacity");
    QTest::newRow("faint") << u"faint"_s << StationMotion::faintGlowRadius << StationMotion::faintGlowOpacity;
    QTest::newRow("full") << u"full"_s << StationMotion::fullGlowRadius << StationMotion::fullGlowOpacity;
}

void LampTest::theGlowFallsOffOverItsRadius()
{
    QFETCH(QString, glow);
    QFETCH(double, radius);
    QFETCH(double, opacity);
    Stage stage({200, 100});
    stage.put(u"Item { SoftShadow { x: 87; y: 37; width: 26; height: 26; radius: 13; "
              "spread: StationMotion.%1GlowSpread; color: StationMotion.%1Glow } }"_s.arg(glow));
    const QImage picture = stage.picture();
    const int edge = 113; // the disc's rightmost point
    for (int x = edge; x < 200; ++x) {
        // A bell curve's integral: half of the opacity at the edge, a thirteenth of it one radius outside.
        const double wanted = 217 * opacity * 0.5 * std::erfc((x + 0.5 - edge) / radius);
        const int seen = picture.pixelColor(x, 50).red();
        QVERIFY2(std::abs(seen - wanted) <= 3, qPrintable(u"%1 at %2 instead of %3"_s.arg(seen).arg(x).arg(wanted)));
    }
    QCOMPARE(picture.pixelColor(edge + int(2 * radius) + 1, 50), QColor(Qt::black));
}

void LampTest::theGlowsFadeIntoEachOther()
{
    Stage stage({400, 120});
    QQuickItem* root = stage.put(u"Item { OnAirLamp { x: 50; y: 50; live: false } }"_s);
    QQuickItem* lamp = Stage::first(root, "OnAirLamp");
    lamp->setProperty("live", true);
    const auto glows = Stage::all(root, "SoftShadow");
    for (const double least : {0.1, 0.5, 0.9}) {
        QTRY_VERIFY(lamp->property("glow").toDouble() > least);
        const double glow = lamp->property("glow").toDouble();
        QCOMPARE(glows[0]->opacity(), 1 - glow);
        QCOMPARE(glows[1]->opacity(), glow);
    }
}

void LampTest::aDarkFrontScreenDrawsNoFrame()
{
    FrontHouse house;
    house.stage.settle();
    const int framesAtRest = house.stage.frames();
    QTest::qWait(3000);
    QCOMPARE(house.stage.frames(), framesAtRest);
}

void LampTest::aLitLampRepaintsOnlyItself()
{
    FrontHouse house;
    house.setNews(true, u"Harbour Council"_s);
    const QQuickItem* lamp = Stage::first(house.newsDoor(), "OnAirLamp");
    const auto glow = [&] { return lamp->property("glow").toDouble(); };
    QTRY_VERIFY(glow() > 0.9);
    QTRY_VERIFY(glow() < 0.1);

    // What reaches the display, changed or not, during a whole pulse.
    DrawnArea drawn(XConnection::open());
    QTRY_VERIFY(glow() > 0.9);
    QTRY_VERIFY(glow() < 0.1);
    const QRectF area = drawn.take();
    const QRectF disc = Stage::area(Stage::first(house.newsDoor(), "LampDisc"));
    const auto around = [&](double margin) { return disc.marginsAdded({margin, margin, margin, margin}); };
    const double reach = StationMotion::fullGlowSpread() * StationMotion::liftScale();
    QVERIFY2(area.contains(around(reach / 2)), "the glow is not drawn");
    QVERIFY2(around(reach + 3).contains(area), qPrintable(u"%1 x %2 pixels"_s.arg(area.width()).arg(area.height())));
}

QTEST_MAIN(LampTest)
#include "LampTest.moc"
