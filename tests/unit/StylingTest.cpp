#include "CardPlate.h"
#include "StationMotion.h"
#include "StationPalette.h"
#include "TestMain.h"
#include "Typography.h"
#include "VeneerBackground.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace quillmere {

/** Tests colours, curves and measures of the styling without drawing them. */
class StylingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void paletteHasPublishedColours()
    {
        QCOMPARE(StationPalette::inkNavy(), QColor(11, 16, 38));
        QCOMPARE(StationPalette::nightNavy(), QColor(18, 24, 58));
        QCOMPARE(StationPalette::amber(), QColor(255, 203, 45));
        QCOMPARE(StationPalette::cream(), QColor(247, 244, 236));
        QCOMPARE(StationPalette::teal(), QColor(31, 111, 139));
        QCOMPARE(StationPalette::walnut(), QColor(62, 43, 31));
        QCOMPARE(StationPalette::chestnut(), QColor(92, 64, 51));
        QCOMPARE(StationPalette::olive(), QColor(122, 139, 61));
        QCOMPARE(StationPalette::brick(), QColor(192, 90, 31));
        QCOMPARE(StationPalette::parchment(), QColor(236, 224, 196));
        QCOMPARE(StationPalette::soot(), QColor(38, 36, 31));
        QCOMPARE(StationPalette::onAirRed(), QColor(217, 43, 43));
        const QList<QColor> bars{{192, 192, 192}, {192, 192, 0}, {0, 192, 192}, {0, 192, 0},
                                 {192, 0, 192},   {192, 0, 0},   {0, 0, 192}};
        QCOMPARE(StationPalette::colorBars(), bars);
    }

    void fadingChangesOnlyOpacity()
    {
        const QColor faded = StationPalette::faded(StationPalette::cream(), 0.65);
        QCOMPARE(faded.rgb() & 0xffffff, StationPalette::cream().rgb() & 0xffffff);
        QVERIFY(std::abs(faded.alphaF() - 0.65) < 0.001);
    }

    void easingFollowsCubicBezierCurve()
    {
        followsBezierCurve(StationMotion::easeInOut(), {0.42, 0}, {0.58, 1});
        followsBezierCurve(StationMotion::easeOut(), {0, 0}, {0.58, 1});
    }

    void labelOfSize20HasLetterSpacing3Point6()
    {
        const QFont font = Typography::label(20);
        // Qt stores letter spacing in 64ths of a pixel.
        QVERIFY(std::abs(font.letterSpacing() - 3.6) < 1.0 / 64);
        QCOMPARE(font.letterSpacingType(), QFont::AbsoluteSpacing);
        QCOMPARE(font.pixelSize(), 20);
        QCOMPARE(int(font.weight()), 600);
        QCOMPARE(font.families().constFirst(), u"JetBrains Mono"_s);
    }

    void labelIsInCapitals() { QCOMPARE(Typography::capitals(u"open 24 hrs · straße"_s), u"OPEN 24 HRS · STRASSE"_s); }

    void grainFollowsRecurrence()
    {
        // The expected values are computed independently from the seed 2654435769: the states, then their remainders
        // modulo 3, 5 and 7.
        const auto grain = VeneerBackground::grain(620);
        quint64 state = 2654435769;
        double x = 0;
        for (const auto& streak : grain) {
            state = (state * 1664525 + 1013904223) % 4294967296;
            QCOMPARE(streak.x, x);
            QCOMPARE(streak.width, double(state % 3 + 1));
            QCOMPARE(streak.opacity, double(state % 7) / 100 + 0.03);
            x += double(state % 3 + state % 5 + 3);
        }
        QVERIFY(x >= 620);
        QVERIFY(grain.constLast().x < 620);
    }

    void widerSurfaceContinuesSameGrain()
    {
        const auto narrow = VeneerBackground::grain(620);
        const auto wide = VeneerBackground::grain(1920);
        for (qsizetype i = 0; i < narrow.size(); ++i)
            QCOMPARE(narrow.at(i).x, wide.at(i).x);
        QVERIFY(VeneerBackground::grain(0).isEmpty());
    }

    void continuousCornerStaysInsidePlate()
    {
        const QRectF plate(0, 0, 620, 620);
        const QPainterPath outline = CardPlate::continuousOutline(plate, 24);
        QCOMPARE(outline.boundingRect().toRect(), plate.toRect());
        QVERIFY(outline.contains(QPointF(310, 0.5)));
        QVERIFY(outline.contains(QPointF(0.5, 310)));
        // A circular corner of radius 24 would pass 7.03 points from both edges.
        QVERIFY(!outline.contains(QPointF(6.5, 6.5)));
        QVERIFY(outline.contains(QPointF(7.6, 7.6)));
        QVERIFY(!outline.contains(QPointF(613.5, 613.5)));
        // The curve starts one and a half radii before the corner, a circular one would start one radius before it.
        QVERIFY(!outline.contains(QPointF(26, 0.05)));
        QVERIFY(outline.contains(QPointF(37, 0.05)));
    }

private:
    static void followsBezierCurve(const QEasingCurve& curve, QPointF first, QPointF second)
    {
        for (int step = 0; step <= 100; ++step) {
            const double t = step / 100.0;
            const QPointF point =
                3 * (1 - t) * (1 - t) * t * first + 3 * (1 - t) * t * t * second + t * t * t * QPointF(1, 1);
            const double progress = curve.valueForProgress(point.x());
            QVERIFY2(std::abs(progress - point.y()) < 0.001,
                     qPrintable(u"%1 after %2 instead of %3"_s.arg(progress).arg(point.x()).arg(point.y())));
        }
    }
};

QUILLMERE_TEST(StylingTest, QCoreApplication)

} // namespace quillmere

#include "StylingTest.moc"
