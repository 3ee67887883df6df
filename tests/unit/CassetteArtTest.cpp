#include "CassetteRenderer.h"
#include "CoverArt.h"
#include "PixelBounds.h"
#include "Rows.h"
#include "SampleCover.h"
#include "StationPalette.h"
#include "TestMain.h"

#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

using Form = CassetteRenderer::Form;

bool isClose(QColor seen, QColor expected, int tolerance = 3)
{
    return std::abs(seen.red() - expected.red()) <= tolerance &&
           std::abs(seen.green() - expected.green()) <= tolerance &&
           std::abs(seen.blue() - expected.blue()) <= tolerance;
}

/** A painted box or card, `width` points wide, with `scale` pixels per point. Reads colours by position. */
struct Box
{
    explicit Box(const VHSCover& cover, double width = 320, double scale = 2, Form form = Form::BoxFront)
        : unit(width * scale / 320),
          painted(CassetteRenderer{form, cover, width, (QSizeF(1, 1.5625) * (width * scale)).toSize()}.paint()),
          picture(painted.image.copy(painted.box))
    {}

    QColor at(double x, double y) const { return picture.pixelColor(int(x * unit), int(y * unit)); }

    /** The colour at a pixel relative to the box's top left corner; the pixel may be outside the box. */
    QColor pixelAt(int x, int y) const { return painted.image.pixelColor(painted.box.topLeft() + QPoint(x, y)); }

    double unit; ///< pixels per unit of the grid
    CassettePicture painted;
    QImage picture; ///< the box without its surroundings
};

VHSCover coverWithoutTranscript()
{
    VHSCover cover = sampleCover();
    cover.hasTranscript = false;
    return cover;
}

void rowsOfWidths(std::initializer_list<double> scales)
{
    QTest::addColumn<double>("width");
    QTest::addColumn<double>("scale");
    for (const double width : {230.0, 250.0, 420.0}) {
        for (const double scale : scales)
            QTest::addRow("%g at %g", width, scale) << width << scale;
    }
}

} // namespace

#define COMPARE_COLOR(seen, expected)                                                                                  \
    QVERIFY2(isClose(seen, expected), qPrintable(QColor(seen).name() + u" instead of "_s + QColor(expected).name()))

/** Tests the painted cassettes pixel by pixel. */
class CassetteArtTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void boxIs320By500UnitsWithRoundCorners()
    {
        const Box box(sampleCover());
        QCOMPARE(box.picture.size(), QSize(640, 1000));
        for (const QPoint corner : {QPoint(0, 0), QPoint(639, 0), QPoint(0, 999), QPoint(639, 999), QPoint(2, 2)})
            QCOMPARE(box.picture.pixelColor(corner).alpha(), 0);
        for (const QPoint edge : {QPoint(0, 500), QPoint(639, 500), QPoint(320, 0), QPoint(320, 999), QPoint(20, 0)})
            QCOMPARE(box.picture.pixelColor(edge), StationPalette::inkNavy());
    }

    void outlineIsThreeUnitsWideAndCentredOnEdge()
    {
        const Box box(sampleCover(), 320, 4);
        for (int inward = -6; inward < 40; ++inward) {
            const QColor expected = inward < 6 ? StationPalette::inkNavy() : StationPalette::cream();
            QCOMPARE(box.pixelAt(inward, 1880), expected);
            QCOMPARE(box.pixelAt(1279 - inward, 1300), expected);
            QCOMPARE(box.pixelAt(640, inward), expected);
            QCOMPARE(box.pixelAt(640, 1999 - inward), expected);
        }
        QCOMPARE(box.painted.box.topLeft(), QPoint(6, 6));
        QCOMPARE(box.painted.image.height(), 2000 + 2 * 6);
    }

    void outlineIsNotCutAtAnySize_data() { rowsOfWidths({2.0 / 3, 1.0, 1.08, 2.0, 2.16}); }

    void outlineIsNotCutAtAnySize()
    {
        QFETCH(double, width);
        QFETCH(double, scale);
        const Box box(sampleCover(), width, scale);
        const QImage& image = box.painted.image;
        // In the middle row and the middle column, the outline's ink outside the box is half of the outline's width.
        const auto ink = [&](int x, int y, QPoint step) {
            double pixels = 0;
            for (QPoint at(x, y); image.rect().contains(at) && !box.painted.box.contains(at); at += step)
                pixels += image.pixelColor(at).alphaF();
            return pixels;
        };
        const double half = 1.5 * box.unit;
        QVERIFY(std::abs(ink(0, image.height() / 2, {1, 0}) - half) < 0.1);
        QVERIFY(std::abs(ink(image.width() - 1, image.height() / 2, {-1, 0}) - half) < 0.1);
        QVERIFY(std::abs(ink(image.width() / 2, 0, {0, 1}) - half) < 0.1);
        QVERIFY(std::abs(ink(image.width() / 2, image.height() - 1, {0, -1}) - half) < 0.1);
    }

    void bandsAreAtGridPositions_data()
    {
        rows<double, double>({"width", "scale"}, {{"on the grid", 320.0, 4.0},
                                                  {"shelf", 250.0, 1.0},
                                                  {"shelf, 720p", 250.0, 2.0 / 3},
                                                  {"shelf, 2160p", 250.0, 2.0},
                                                  {"search", 230.0, 1.0},
                                                  {"detail", 420.0, 1.0}});
    }

    void bandsAreAtGridPositions()
    {
        QFETCH(double, width);
        QFETCH(double, scale);
        VHSCover cover = sampleCover();
        cover.genre.clear();
        cover.year.clear();
        const Box box(cover, width, scale);
        const std::tuple<double, double, QColor> bands[] = {
            {10, 44, StationPalette::inkNavy()},   {44, 50, StationPalette::cream()},
            {50, 51, CoverArt::skyTop(cover.hue)}, {300, 306, StationPalette::cream()},
            {306, 330, StationPalette::teal()},    {330, 336, StationPalette::cream()}};
        const double unitDown = box.picture.height() / 500.0;
        for (const auto& [from, to, color] : bands) {
            const int top = int(std::lround(from * unitDown));
            const int bottom = int(std::lround(to * unitDown)) - 1;
            for (const int x : {int(11.5 * box.unit), int(308.5 * box.unit)}) {
                COMPARE_COLOR(box.picture.pixelColor(x, top), color);
                COMPARE_COLOR(box.picture.pixelColor(x, std::max(top, bottom)), color);
            }
        }
        COMPARE_COLOR(box.at(8, 200), StationPalette::cream());
        COMPARE_COLOR(box.at(312, 200), StationPalette::cream());
    }

    void skyKeepsHueAndDarkensDownward_data()
    {
        QTest::addColumn<int>("hue");
        for (const int hue : {4, 20, 36, 145, 168, 200, 210, 262, 291, 330})
            QTest::addRow("%d", hue) << hue;
    }

    void skyKeepsHueAndDarkensDownward()
    {
        QFETCH(int, hue);
        const Box box(sampleCover(hue));
        COMPARE_COLOR(box.at(15, 50), QColor::fromHsvF(float(hue) / 360, 0.55F, 0.42F));
        double before = 1;
        for (int percent = 2; percent < 70; percent += 4) {
            const double share = percent / 100.0;
            const QColor sky = box.at(15, 50 + 250 * share);
            QVERIFY2(sky.valueF() < before, qPrintable(QString::number(share)));
            QVERIFY(std::abs(sky.valueF() - (0.42 - 0.2 * share)) < 0.015);
            const int apart = std::abs(sky.hsvHue() - hue);
            QVERIFY2(std::min(apart, 360 - apart) <= 4, qPrintable(QString::number(sky.hsvHue())));
            before = sky.valueF();
        }
    }

    void sceneHasColoursAtDesignPositions()
    {
        const Box box(sampleCover(), 320, 4);
        const auto scene = [&](double x, double y) { return box.at(10 + x, 50 + y); };
        // The disc: teal with opacity 0.9 over the sky.
        const QColor disc = scene(300 - 52, 48);
        QVERIFY(isClose(disc, StationPalette::teal(), 12));
        QVERIFY(isClose(scene(300 - 52 + 25, 48), disc, 8));
        QVERIFY(!isClose(scene(300 - 52 + 27, 48), disc, 8));
        QVERIFY(!isClose(scene(300 - 52, 48 + 27), disc, 8));
        // The boat: 210 units wide, 210 * 84 / 132 tall, centred at (141, 150).
        const double s = 210.0 / 132;
        const auto boat = [&](double x, double y) { return scene(141 - 105 + x * s, 150 - 210.0 * 7 / 22 + y * s); };
        COMPARE_COLOR(boat(24, 34), StationPalette::inkNavy()); // cabin
        COMPARE_COLOR(boat(39, 24), StationPalette::inkNavy()); // smokestack
        COMPARE_COLOR(boat(39.5, 9.5), StationPalette::teal()); // smoke
        COMPARE_COLOR(boat(32, 42), StationPalette::cream());   // windows
        COMPARE_COLOR(boat(77, 42), StationPalette::cream());
        COMPARE_COLOR(boat(54, 42), StationPalette::inkNavy());    // between two windows
        COMPARE_COLOR(boat(94.5, 53), StationPalette::cream());    // rim of the wheel
        COMPARE_COLOR(boat(111, 40), StationPalette::cream());     // vertical spoke of the wheel
        COMPARE_COLOR(boat(120, 53), StationPalette::cream());     // horizontal spoke of the wheel
        QVERIFY(boat(60, 20).red() > boat(60, 20).blue());         // glow
        QVERIFY(!isClose(boat(104, 46), StationPalette::cream())); // between the spokes
        COMPARE_COLOR(boat(20, 56), StationPalette::inkNavy());    // hull
    }

    void fogIsMostOpaqueAtBottom()
    {
        const Box box(sampleCover(), 320, 4);
        const QColor water = QColor::fromHsvF(291.0F / 360, 0.45F, 0.30F);
        double before = 0;
        for (int y = 240; y < 300; y += 6) {
            const double opacity = 0.8 * (y + 0.5 - 225) / 75;
            const auto mix = [opacity](int below, int above) {
                return int(std::lround(below + (above - below) * opacity));
            };
            const QColor cream = StationPalette::cream();
            const QColor seen = box.at(15, y);
            QVERIFY(seen.valueF() > before);
            before = seen.valueF();
            const QColor expected(mix(water.red(), cream.red()), mix(water.green(), cream.green()),
                                  mix(water.blue(), cream.blue()));
            QVERIFY(isClose(seen, expected, 4));
        }
    }

    void badgeHasDesignPositionAndSize_data() { rowsOfWidths({2.0 / 3, 1.0, 2.0}); }

    void badgeHasDesignPositionAndSize()
    {
        QFETCH(double, width);
        QFETCH(double, scale);
        const Box with(sampleCover(), width, scale, Form::ShelfCard);
        const Box without(coverWithoutTranscript(), width, scale, Form::ShelfCard);
        const QRectF badge = boundsOfPixels(
            with.picture.rect(), [&](QPoint at) { return with.picture.pixel(at) != without.picture.pixel(at); });
        const double half = 0.75 * scale; // half of the stroke is outside the badge
        QVERIFY(std::abs(badge.right() - (1 - 0.055) * width * scale - half) <= 0.51);
        QVERIFY(std::abs(badge.top() - 0.165 * width * scale + half) <= 0.51);
        // The text's line is 1.21 times as tall as its size; "CC" is about 1.5 times as wide as its size.
        QVERIFY(std::abs(badge.height() - (0.05 * 1.21 + 2 * 0.01) * width * scale - 2 * half) <= 1);
        QVERIFY(badge.width() > (0.05 * 1.3 + 2 * 0.028) * width * scale + 2 * half);
        QVERIFY(badge.width() < (0.05 * 1.7 + 2 * 0.028) * width * scale + 2 * half);
        const QPoint inside = (badge.topLeft() + QPointF(0.015, 0.04) * width * scale).toPoint();
        COMPARE_COLOR(with.picture.pixelColor(inside), StationPalette::amber());
        QVERIFY(isClose(with.picture.pixelColor(badge.topLeft().toPoint()), StationPalette::inkNavy(), 6));
    }

    void badgeStrokeIsCentredOnEdge()
    {
        const Box with(sampleCover(), 320, 8, Form::ShelfCard);
        const Box without(coverWithoutTranscript(), 320, 8, Form::ShelfCard);
        // The badge's top edge is at 0.165 of the width. The stroke is 12 pixels wide, 6 on either side of the edge.
        const int edge = int(0.165 * 320 * 8);
        const int middle = int((1 - 0.055) * 320 * 8) - 100;
        for (int down = -6; down < 6; ++down)
            COMPARE_COLOR(with.picture.pixelColor(middle, edge + down), StationPalette::inkNavy());
        QCOMPARE(with.picture.pixel(middle, edge - 7), without.picture.pixel(middle, edge - 7));
        COMPARE_COLOR(with.picture.pixelColor(middle, edge + 6), StationPalette::amber());
    }

    void badgeIsDrawnOnlyForTapeWithTranscript()
    {
        QVERIFY(Box(sampleCover(), 250, 1, Form::ShelfCard).picture != Box(sampleCover(), 250, 1).picture);
        QCOMPARE(Box(coverWithoutTranscript(), 250, 1, Form::ShelfCard).picture,
                 Box(coverWithoutTranscript(), 250, 1).picture);
    }

    void samePictureIsDrawnEachTime()
    {
        QCOMPARE(Box(sampleCover(), 250, 1).picture, Box(sampleCover(), 250, 1).picture);
    }
};

QUILLMERE_TEST(CassetteArtTest, QGuiApplication)

} // namespace quillmere

#include "CassetteArtTest.moc"
