#include "CassettePrint.h"
#include "CoverArt.h"
#include "SampleCover.h"
#include "StationPalette.h"

#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr int hues[] = {4, 20, 36, 145, 168, 200, 210, 262, 291, 330};

using Form = CassettePrint::Form;

bool isClose(QColor seen, QColor wanted, int tolerance = 3)
{
    return std::abs(seen.red() - wanted.red()) <= tolerance && std::abs(seen.green() - wanted.green()) <= tolerance &&
           std::abs(seen.blue() - wanted.blue()) <= tolerance;
}

/** A box or card of `width` points on a display of `scale` pixels a point, and the colours at places on its grid. */
struct Box
{
    explicit Box(const VHSCover& cover, double width = 320, double scale = 2, Form form = Form::BoxFront)
        : unit(width * scale / 320),
          painted(CassettePrint{form, cover, width,
                                QSize(int(std::lround(width * scale)), int(std::lround(width * scale * 1.5625)))}
                      .paint()),
          picture(painted.image.copy(painted.box))
    {}

    QColor at(double x, double y) const { return picture.pixelColor(int(x * unit), int(y * unit)); }

    /** At a pixel counted from the box's corner, which may lie beside the box. */
    QColor around(int x, int y) const { return painted.image.pixelColor(painted.box.topLeft() + QPoint(x, y)); }

    double unit; ///< pixels
    CassettePicture painted;
    QImage picture; ///< of the box itself
};

/** The least rectangle around all that differs, in pixels. */
QRect difference(const QImage& one, const QImage& other)
{
    QRect area;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            if (one.pixel(x, y) != other.pixel(x, y))
                area |= QRect(x, y, 1, 1);
        }
    }
    return area;
}

} // namespace

#define COMPARE_COLOR(seen, wanted)                                                                                    \
    QVERIFY2(isClose(seen, wanted), qPrintable(QColor(seen).name() + u" instead of "_s + QColor(wanted).name()))

/** The cassettes as they are painted, measured. */
class CassetteArtTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aBoxIs320By500UnitsWithRoundCorners();
    void theOutlineIsThreeUnitsOfInkNavyAcrossTheEdge();
    void theOutlineIsWholeAtEverySize_data();
    void theOutlineIsWholeAtEverySize();
    void theBandsStandOnTheGrid_data();
    void theBandsStandOnTheGrid();
    void theSkyDarkensDownwardInItsHue_data();
    void theSkyDarkensDownwardInItsHue();
    void theSceneIsAsItIsDescribed();
    void theFogIsThickestAtTheBottom();
    void theBadgeStandsWhereItShould_data();
    void theBadgeStandsWhereItShould();
    void theBadgesStrokeIsCentredOnItsEdge();
    void onlyATapeWithATranscriptHasABadge();
    void twoDrawingsAreIdentical();
};

void CassetteArtTest::aBoxIs320By500UnitsWithRoundCorners()
{
    const Box box(sampleCover());
    QCOMPARE(box.picture.size(), QSize(640, 1000));
    for (const QPoint corner : {QPoint(0, 0), QPoint(639, 0), QPoint(0, 999), QPoint(639, 999), QPoint(2, 2)})
        QCOMPARE(box.picture.pixelColor(corner).alpha(), 0);
    for (const QPoint edge : {QPoint(0, 500), QPoint(639, 500), QPoint(320, 0), QPoint(320, 999), QPoint(20, 0)})
        QCOMPARE(box.picture.pixelColor(edge), StationPalette::inkNavy());
}

void CassetteArtTest::theOutlineIsThreeUnitsOfInkNavyAcrossTheEdge()
{
    const Box box(sampleCover(), 320, 4);
    for (int inward = -6; inward < 40; ++inward) {
        const QColor wanted = inward < 6 ? StationPalette::inkNavy() : StationPalette::cream();
        QCOMPARE(box.around(inward, 1880), wanted);
        QCOMPARE(box.around(1279 - inward, 1300), wanted);
        QCOMPARE(box.around(640, inward), wanted);
        QCOMPARE(box.around(640, 1999 - inward), wanted);
    }
    QCOMPARE(box.painted.box.topLeft(), QPoint(6, 6));
    QCOMPARE(box.painted.image.height(), 2000 + 2 * 6);
}

void CassetteArtTest::theOutlineIsWholeAtEverySize_data()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<double>("scale");
    for (const double width : {230.0, 250.0, 420.0}) {
        for (const double scale : {2.0 / 3, 1.0, 1.08, 2.0, 2.16})
            QTest::addRow("%g at %g", width, scale) << width << scale;
    }
}

void CassetteArtTest::theOutlineIsWholeAtEverySize()
{
    QFETCH(double, width);
    QFETCH(double, scale);
    const Box box(sampleCover(), width, scale);
    const QImage& image = box.painted.image;
    // Along a row and a column through the middle, its ink outside the box adds up to half its width.
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

void CassetteArtTest::theBandsStandOnTheGrid_data()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<double>("scale");
    QTest::newRow("on the grid") << 320.0 << 4.0;
    QTest::newRow("shelf") << 250.0 << 1.0;
    QTest::newRow("shelf, 720p") << 250.0 << 2.0 / 3;
    QTest::newRow("shelf, 2160p") << 250.0 << 2.0;
    QTest::newRow("search") << 230.0 << 1.0;
    QTest::newRow("detail") << 420.0 << 1.0;
}

void CassetteArtTest::theBandsStandOnTheGrid()
{
    QFETCH(double, width);
    QFETCH(double, scale);
    VHSCover cover = sampleCover();
    cover.genre.clear();
    cover.year.clear();
    const Box box(cover, width, scale);
    struct Band
    {
        double top;
        double bottom;
        QColor color;
    };
    const Band bands[] = {{10, 44, StationPalette::inkNavy()},   {44, 50, StationPalette::cream()},
                          {50, 51, CoverArt::skyTop(cover.hue)}, {300, 306, StationPalette::cream()},
                          {306, 330, StationPalette::teal()},    {330, 336, StationPalette::cream()}};
    const double unitDown = box.picture.height() / 500.0;
    for (const Band& band : bands) {
        const int top = int(std::lround(band.top * unitDown));
        const int bottom = int(std::lround(band.bottom * unitDown)) - 1;
        for (const int x : {int(11.5 * box.unit), int(308.5 * box.unit)}) {
            COMPARE_COLOR(box.picture.pixelColor(x, top), band.color);
            COMPARE_COLOR(box.picture.pixelColor(x, std::max(top, bottom)), band.color);
        }
    }
    COMPARE_COLOR(box.at(8, 200), StationPalette::cream());
    COMPARE_COLOR(box.at(312, 200), StationPalette::cream());
}

void CassetteArtTest::theSkyDarkensDownwardInItsHue_data()
{
    QTest::addColumn<int>("hue");
    for (const int hue : hues)
        QTest::addRow("%d", hue) << hue;
}

void CassetteArtTest::theSkyDarkensDownwardInItsHue()
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

void CassetteArtTest::theSceneIsAsItIsDescribed()
{
    const Box box(sampleCover(), 320, 4);
    const auto scene = [&](double x, double y) { return box.at(10 + x, 50 + y); };
    // The disc: teal at 0.9 over the sky.
    const QColor disc = scene(300 - 52, 48);
    QVERIFY(isClose(disc, StationPalette::teal(), 12));
    QVERIFY(isClose(scene(300 - 52 + 25, 48), disc, 8));
    QVERIFY(!isClose(scene(300 - 52 + 27, 48), disc, 8));
    QVERIFY(!isClose(scene(300 - 52, 48 + 27), disc, 8));
    // The boat: 210 wide, 84 / 132 of that tall, around (141, 150).
    const double s = 210.0 / 132;
    const auto boat = [&](double x, double y) { return scene(141 - 105 + x * s, 150 - 210.0 * 7 / 22 + y * s); };
    COMPARE_COLOR(boat(24, 34), StationPalette::inkNavy()); // cabin
    COMPARE_COLOR(boat(39, 24), StationPalette::inkNavy()); // smokestack
    COMPARE_COLOR(boat(39.5, 9.5), StationPalette::teal()); // smoke
    COMPARE_COLOR(boat(32, 42), StationPalette::cream());   // windows
    COMPARE_COLOR(boat(77, 42), StationPalette::cream());
    COMPARE_COLOR(boat(54, 42), StationPalette::inkNavy());    // between two windows
    COMPARE_COLOR(boat(94.5, 53), StationPalette::cream());    // the wheel's rim
    COMPARE_COLOR(boat(111, 40), StationPalette::cream());     // its upright spoke
    COMPARE_COLOR(boat(120, 53), StationPalette::cream());     // its level spoke
    QVERIFY(boat(60, 20).red() > boat(60, 20).blue());         // the glow
    QVERIFY(!isClose(boat(104, 46), StationPalette::cream())); // between the spokes
    COMPARE_COLOR(boat(20, 56), StationPalette::inkNavy());    // hull
}

void CassetteArtTest::theFogIsThickestAtTheBottom()
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
        QVERIFY(isClose(
            seen, {mix(water.red(), cream.red()), mix(water.green(), cream.green()), mix(water.blue(), cream.blue())},
            4));
    }
}

void CassetteArtTest::theBadgeStandsWhereItShould_data()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<double>("scale");
    for (const double width : {230.0, 250.0, 420.0}) {
        for (const double scale : {2.0 / 3, 1.0, 2.0})
            QTest::addRow("%g at %g", width, scale) << width << scale;
    }
}

void CassetteArtTest::theBadgeStandsWhereItShould()
{
    QFETCH(double, width);
    QFETCH(double, scale);
    VHSCover cover = sampleCover();
    const Box with(cover, width, scale, Form::ShelfCard);
    cover.hasTranscript = false;
    const Box without(cover, width, scale, Form::ShelfCard);
    const QRectF badge = difference(with.picture, without.picture);
    const double half = 0.75 * scale; // of the stroke stands outside the badge
    QVERIFY(std::abs(badge.right() - (1 - 0.055) * width * scale - half) <= 0.51);
    QVERIFY(std::abs(badge.top() - 0.165 * width * scale + half) <= 0.51);
    // The text's line is 1.21 of its size, "CC" about one and a half of it.
    QVERIFY(std::abs(badge.height() - (0.05 * 1.21 + 2 * 0.01) * width * scale - 2 * half) <= 1);
    QVERIFY(badge.width() > (0.05 * 1.3 + 2 * 0.028) * width * scale + 2 * half);
    QVERIFY(badge.width() < (0.05 * 1.7 + 2 * 0.028) * width * scale + 2 * half);
    const QPoint inside = (badge.topLeft() + QPointF(0.015, 0.04) * width * scale).toPoint();
    COMPARE_COLOR(with.picture.pixelColor(inside), StationPalette::amber());
    QVERIFY(isClose(with.picture.pixelColor(badge.topLeft().toPoint()), StationPalette::inkNavy(), 6));
}

void CassetteArtTest::theBadgesStrokeIsCentredOnItsEdge()
{
    VHSCover cover = sampleCover();
    const Box with(cover, 320, 8, Form::ShelfCard);
    cover.hasTranscript = false;
    const Box without(cover, 320, 8, Form::ShelfCard);
    // The badge's top edge, 0.165 of the width down; the stroke is 12 pixels wide, 6 on either side.
    const int edge = int(0.165 * 320 * 8);
    const int middle = int((1 - 0.055) * 320 * 8) - 100;
    for (int down = -6; down < 6; ++down)
        COMPARE_COLOR(with.picture.pixelColor(middle, edge + down), StationPalette::inkNavy());
    QCOMPARE(with.picture.pixel(middle, edge - 7), without.picture.pixel(middle, edge - 7));
    COMPARE_COLOR(with.picture.pixelColor(middle, edge + 6), StationPalette::amber());
}

void CassetteArtTest::onlyATapeWithATranscriptHasABadge()
{
    VHSCover cover = sampleCover();
    QVERIFY(Box(cover, 250, 1, Form::ShelfCard).picture != Box(cover, 250, 1).picture);
    cover.hasTranscript = false;
    QCOMPARE(Box(cover, 250, 1, Form::ShelfCard).picture, Box(cover, 250, 1).picture);
}

void CassetteArtTest::twoDrawingsAreIdentical()
{
    QCOMPARE(Box(sampleCover(), 250, 1).picture, Box(sampleCover(), 250, 1).picture);
}

QTEST_MAIN(CassetteArtTest)
#include "CassetteArtTest.moc"
