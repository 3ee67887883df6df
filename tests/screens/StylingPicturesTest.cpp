#include "FrontFixture.h"
#include "PaintedItem.h"
#include "Rows.h"
#include "StationPalette.h"
#include "TestMain.h"
#include "VeneerBackground.h"

namespace quillmere {

namespace {

QColor over(QColor background, QColor color, double opacity)
{
    const auto mix = [opacity](int below, int above) { return int(std::lround(below + (above - below) * opacity)); };
    return {mix(background.red(), color.red()), mix(background.green(), color.green()),
            mix(background.blue(), color.blue())};
}

QImage pictureOf(QSize size, const QString& qml)
{
    TestScreen screen(size);
    screen.load(qml);
    return screen.picture();
}

/** Art that counts how often it is painted. */
class CountingArt : public PaintedItem
{
public:
    mutable int paintings = 0;
    void paint(QPainter&, const QSizeF&) const override { ++paintings; }
};

const QString veneer = u"VeneerBackground { width: 620; height: 620 }"_s;

} // namespace

#define COMPARE_COLOR(seen, wanted)                                                                                    \
    QVERIFY2(isClose(seen, wanted, 1), qPrintable(QColor(seen).name() + u" instead of "_s + QColor(wanted).name()))

/** The parts of the station's styling, compared pixel by pixel. */
class StylingPicturesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void twoVeneersAreIdenticalPixelForPixel()
    {
        QCOMPARE(pictureOf({620, 620}, veneer), pictureOf({620, 620}, veneer));
    }

    void grainDarkensWoodByItsOpacity()
    {
        const QImage picture = pictureOf({620, 620}, veneer);
        const auto grain = VeneerBackground::grain(620);
        // Along the top edge the wood's colour runs from chestnut to halfway towards walnut.
        const auto wood = [](double x) { return over(StationPalette::chestnut(), StationPalette::walnut(), x / 620); };
        for (qsizetype i = 0; i < 12; ++i) {
            const auto& streak = grain.at(i);
            for (int x = int(streak.x); x < int(streak.x + streak.width); ++x)
                COMPARE_COLOR(picture.pixelColor(x, 0), over(wood(x + 0.5), Qt::black, streak.opacity));
            const int bare = int(streak.x + streak.width);
            COMPARE_COLOR(picture.pixelColor(bare, 0), wood(bare + 0.5));
        }
        QVERIFY(isClose(picture.pixelColor(619, 619), QColor(74, 51, 39), 8));
    }

    void nightSkyGradientRunsFromInkNavyToNearBlack()
    {
        const QImage picture = pictureOf({1920, 1080}, u"NightSky { width: 1920; height: 1080 }"_s);
        COMPARE_COLOR(picture.pixelColor(0, 0), QColor(11, 16, 38));
        COMPARE_COLOR(picture.pixelColor(1919, 0), QColor(11, 16, 38));
        COMPARE_COLOR(picture.pixelColor(960, 540), QColor(8, 12, 27));
        COMPARE_COLOR(picture.pixelColor(1919, 1079), QColor(5, 7, 15));
    }

    void nightSkyFillsAreaOutsideCanvas()
    {
        TestScreen fixture({1024, 768});
        QQuickItem* canvas = fixture.load(u"Canvas { FullBleed { NightSky { anchors.fill: parent } } }"_s);
        QCOMPARE(TestScreen::area(canvas), QRectF(0, 96, 1024, 576));
        const QImage picture = fixture.picture();
        COMPARE_COLOR(picture.pixelColor(0, 0), QColor(11, 16, 38));
        COMPARE_COLOR(picture.pixelColor(1023, 767), QColor(5, 7, 15));
    }

    void miniColorBarsAreEqualStripesWithoutGaps_data()
    {
        rows<int>({"width"}, {{"even", 490}, {"uneven", 500}, {"scaled down", 333}});
    }

    void miniColorBarsAreEqualStripesWithoutGaps()
    {
        QFETCH(int, width);
        const QImage picture = pictureOf(
            {width, 100}, u"MiniColorBars { width: %1; height: 100; bars: StationPalette.colorBars }"_s.arg(width));
        const auto& bars = StationPalette::colorBars();
        for (int x = 0; x < width; ++x) {
            const QColor seen = picture.pixelColor(x, 50);
            const qsizetype bar = bars.indexOf(QColor(seen.rgb()));
            QVERIFY2(bar >= 0, qPrintable(u"a gap at %1"_s.arg(x)));
            QVERIFY(std::abs((x + 0.5) / width * 7 - (double(bar) + 0.5)) <= 0.5 + 7.0 / width);
        }
    }

    void lampThatIsOffIsSootDiscWithoutGlow()
    {
        TestScreen fixture({400, 120});
        QQuickItem* root = fixture.load(u"Item { OnAirLamp { x: 50; y: 50; live: false } }"_s);
        const QImage picture = fixture.picture();
        const QRectF disc = TestScreen::area(TestScreen::first(root, "LampDisc"));
        QCOMPARE(disc.size(), QSizeF(26, 26));
        COMPARE_COLOR(picture.pixelColor(disc.center().toPoint()), StationPalette::soot());
        COMPARE_COLOR(picture.pixelColor(int(disc.left()) + 1, int(disc.center().y())),
                      over(StationPalette::soot(), StationPalette::parchment(), 0.35));
        for (int x = 0; x < int(disc.left()); ++x)
            QCOMPARE(picture.pixelColor(x, int(disc.center().y())), QColor(Qt::black));
        const QQuickItem* words = TestScreen::texts(root).constFirst();
        QCOMPARE(words->property("text").toString(), u"OFF AIR"_s);
        QCOMPARE(words->property("color").value<QColor>(), StationPalette::faded(StationPalette::parchment(), 0.4));
        QCOMPARE(fixture.framesAtRest(600), 0);
    }

    void liveLampIsRedAndGlows()
    {
        TestScreen fixture({400, 120});
        QQuickItem* root = fixture.load(u"Item { OnAirLamp { x: 50; y: 50; live: true } }"_s);
        QQuickItem* lamp = TestScreen::first(root, "OnAirLamp");
        QTRY_VERIFY(lamp->property("glow").toDouble() > 0.95);
        const QImage bright = fixture.window().grabWindow();
        QTRY_VERIFY(lamp->property("glow").toDouble() < 0.05);
        const QImage faint = fixture.window().grabWindow();
        const QPoint centre = TestScreen::area(TestScreen::first(root, "LampDisc")).center().toPoint();
        COMPARE_COLOR(bright.pixelColor(centre), StationPalette::onAirRed());
        COMPARE_COLOR(faint.pixelColor(centre), StationPalette::onAirRed());
        const QPoint beside = centre - QPoint(20, 0);
        QVERIFY(bright.pixelColor(beside).red() > 45);
        QVERIFY(faint.pixelColor(beside).red() < 15);
        const QQuickItem* words = TestScreen::texts(root).constFirst();
        QCOMPARE(words->property("text").toString(), u"ON AIR"_s);
        QCOMPARE(words->property("font").value<QFont>().letterSpacing(), 3.0);
    }

    void plateOutlineIsInsideItsEdgeAndRoundedCorners()
    {
        const QImage picture = pictureOf(
            {200, 200}, u"Item { CardPlate { width: 200; height: 200; radius: 24; continuous: true; border: 'lime'; "
                        "borderWidth: 3; background: DiagonalGradient { from: 'red'; to: 'red' } } }"_s);
        for (int depth = 0; depth < 6; ++depth) {
            const QColor wanted = depth < 3 ? QColor(0, 255, 0) : QColor(255, 0, 0);
            COMPARE_COLOR(picture.pixelColor(depth, 100), wanted);
            COMPARE_COLOR(picture.pixelColor(100, 199 - depth), wanted);
        }
        for (const QPoint corner : {QPoint(0, 0), QPoint(199, 0), QPoint(0, 199), QPoint(199, 199), QPoint(4, 4)})
            QCOMPARE(picture.pixelColor(corner), QColor(Qt::black));
        QCOMPARE(picture.pixelColor(13, 13), QColor(255, 0, 0));
    }

    void scaledArtIsPaintedAtItsNewSize()
    {
        TestScreen fixture({300, 300});
        QQuickItem* bars = fixture.load(u"MiniColorBars { x: 50; y: 50; width: 140; height: 100; "
                                        "bars: StationPalette.colorBars; Behavior on scale { NumberAnimation {} } }"_s);
        bars->setProperty("scale", 1.5);
        const QImage picture = fixture.picture();
        // 140 points are scaled to 210 pixels around their centre: each stripe is 30 pixels wide, with sharp edges.
        for (int bar = 0; bar < 7; ++bar) {
            QCOMPARE(picture.pixelColor(15 + 30 * bar, 100), StationPalette::colorBars().at(bar));
            QCOMPARE(picture.pixelColor(15 + 30 * bar + 29, 100), StationPalette::colorBars().at(bar));
        }
    }

    void artIsNotPaintedDuringAnimation()
    {
        TestScreen fixture({300, 300});
        QQuickItem* mover = fixture.load(u"Item { transformOrigin: Item.TopLeft; Behavior on scale { NumberAnimation { "
                                         "duration: 300 } } }"_s);
        CountingArt art;
        art.setSize({100, 100});
        art.setParentItem(mover);
        fixture.waitUntilIdle();
        QCOMPARE(art.paintings, 1);
        for (int round = 0; round < 3; ++round) {
            const int framesBefore = fixture.frames();
            mover->setProperty("scale", 1.5);
            QTRY_COMPARE(mover->scale(), 1.5);
            fixture.waitUntilIdle();
            QVERIFY(fixture.frames() > framesBefore + 3);
            QCOMPARE(art.paintings, 2);
            mover->setProperty("scale", 1);
            QTRY_COMPARE(mover->scale(), 1.0);
            fixture.waitUntilIdle();
            QCOMPARE(art.paintings, 2);
        }
    }

    void artIsAlignedToWholePixels()
    {
        // The canvas has a scale of two thirds: 100.5 points are 67 pixels.
        const QImage picture = pictureOf(
            {1280, 720},
            u"Canvas { MiniColorBars { x: 100.5; y: 30; width: 210; height: 60; bars: StationPalette.colorBars } }"_s);
        QCOMPARE(picture.pixelColor(66, 40), QColor(Qt::black));
        for (int bar = 0; bar < 7; ++bar) {
            QCOMPARE(picture.pixelColor(67 + 20 * bar, 40), StationPalette::colorBars().at(bar));
            QCOMPARE(picture.pixelColor(67 + 20 * bar + 19, 40), StationPalette::colorBars().at(bar));
        }
        QCOMPARE(picture.pixelColor(67 + 140, 40), QColor(Qt::black));
    }
};

QUILLMERE_TEST(StylingPicturesTest, QGuiApplication)

} // namespace quillmere

#include "StylingPicturesTest.moc"
