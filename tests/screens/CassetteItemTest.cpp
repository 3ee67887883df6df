#include "CoverArt.h"
#include "Rows.h"
#include "SampleCover.h"
#include "TestMain.h"
#include "TestScreen.h"
#include "VHSBoxFront.h"

#include <QPainter>
#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

using Form = CassetteRenderer::Form;

/** The box of a rendered cassette on a black background, as the display should show it. */
QImage renderedBox(const CassetteRenderer& renderer)
{
    const CassettePicture picture = renderer.paint();
    QImage background(renderer.pixels, QImage::Format_RGB32);
    background.fill(Qt::black);
    QPainter(&background).drawImage(-picture.box.topLeft(), picture.image);
    return background;
}

/** A card at the width that it has on a shelf. */
CassetteRenderer cardOf(QSize pixels, const VHSCover& cover = sampleCover())
{
    return {Form::ShelfCard, cover, 250, pixels};
}

/** The sample cover with a bar code too long for a small box. */
VHSCover overhangingCover()
{
    VHSCover cover = sampleCover();
    cover.barcode = QList<int>(28, 3);
    return cover;
}

/** Cassettes in a window, in an item `root`. */
struct CassetteFixture : TestScreen
{
    explicit CassetteFixture(const QString& contents, QSize size = {500, 700}) : TestScreen(size)
    {
        root = load(u"import Quillmere.Shop\n"_s + contents);
        for (QQuickItem* item : all(root, "CassetteItem"))
            cassettes.append(qobject_cast<CassetteItem*>(item));
        cassette = cassettes.constFirst();
    }

    /** Sets the cover of all cassettes, and waits for their pictures. */
    bool showsPictureOf(const VHSCover& cover)
    {
        for (CassetteItem* item : std::as_const(cassettes))
            item->setCover(cover);
        const auto hasPicture = [](const CassetteItem* item) { return item->hasPicture(); };
        return QTest::qWaitFor([&] { return std::all_of(cassettes.cbegin(), cassettes.cend(), hasPicture); });
    }

    /** The picture of the window right now, before any picture requested in the background can have arrived. */
    QImage grabNow() { return window().grabWindow().convertToFormat(QImage::Format_RGB32); }

    QQuickItem* root;
    QList<CassetteItem*> cassettes;
    CassetteItem* cassette; ///< the first
};

/** A card that counts the updates of its scene graph node. */
class CountedCard : public VHSShelfCard
{
public:
    using VHSShelfCard::VHSShelfCard;
    int updates = 0;

protected:
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override
    {
        ++updates;
        return VHSShelfCard::updatePaintNode(old, data);
    }
};

} // namespace

/** Cassettes in a window: plates, pictures, lifts and moves. */
class CassetteItemTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cassetteHeightFollowsFromItsWidth()
    {
        CassetteFixture fixture(u"Item { VHSShelfCard { width: 250 } }"_s);
        QCOMPARE(fixture.cassette->height(), 390.625);
        fixture.cassette->setWidth(320);
        QCOMPARE(fixture.cassette->height(), 500);
        QCOMPARE(fixture.cassette->radius(), 10.0);
    }

    void cassetteAtRestShowsItsPicturePixelForPixel_data()
    {
        const QString card = u"VHSShelfCard"_s;
        const QString box = u"VHSBoxFront"_s;
        rows<QString, bool, double, double, QSize>({"type", "overhangs", "width", "scale", "pixels"},
                                                   {{"card", card, false, 250.0, 1.0, {250, 391}},
                                                    {"card at 720p", card, false, 250.0, 2.0 / 3, {167, 260}},
                                                    {"search card", card, false, 230.0, 1.0, {230, 359}},
                                                    {"lifted card", card, false, 250.0, 1.08, {270, 422}},
                                                    {"card at 2160p", card, false, 250.0, 2.0, {500, 781}},
                                                    {"box", box, false, 420.0, 1.0, {420, 656}},
                                                    {"bar code", card, true, 250.0, 1.0, {250, 391}},
                                                    {"bar code, search card", card, true, 230.0, 1.0, {230, 359}},
                                                    {"bar code, 720p", card, true, 230.0, 2.0 / 3, {153, 240}},
                                                    {"bar code, 2160p", card, true, 230.0, 2.0, {460, 719}},
                                                    {"bar code, lifted", card, true, 230.0, 1.08, {248, 388}},
                                                    {"bar code, large card", card, true, 420.0, 1.0, {420, 656}}});
    }

    void cassetteAtRestShowsItsPicturePixelForPixel()
    {
        QFETCH(QString, type);
        QFETCH(bool, overhangs);
        QFETCH(double, width);
        QFETCH(double, scale);
        QFETCH(QSize, pixels);
        const int corner = overhangs ? 40 : 20;
        CassetteFixture fixture(u"Item { scale: %1; transformOrigin: Item.TopLeft; %2 { x: %3; y: %3; width: %4 } }"_s
                                    .arg(scale, 0, 'g', 17)
                                    .arg(type)
                                    .arg(corner)
                                    .arg(width),
                                {700, 900});
        const VHSCover cover = overhangs ? overhangingCover() : sampleCover();
        QVERIFY(fixture.showsPictureOf(cover));
        const auto form = type == u"VHSBoxFront"_s ? Form::BoxFront : Form::ShelfCard;
        const CassettePicture picture = CassetteRenderer{form, cover, width, pixels}.paint();
        QImage wanted(700, 900, QImage::Format_RGB32);
        wanted.fill(Qt::black);
        QPainter(&wanted).drawImage((QPointF(corner, corner) * scale).toPoint() - picture.box.topLeft(), picture.image);
        QCOMPARE(fixture.picture(), wanted);
        QCOMPARE(fixture.cassette->size(), QSizeF(width, width * 1.5625));
    }

    void cassetteWithoutPictureShowsPlateInCoverColour()
    {
        CassetteFixture fixture(u"Item { VHSShelfCard { x: 20; y: 20; width: 250 } }"_s);
        fixture.cassette->setCover(sampleCover(145));
        const QImage grabbed = fixture.grabNow();
        QVERIFY(!fixture.cassette->hasPicture());
        const QColor sky = CoverArt::skyTop(145);
        for (const QPoint point :
             {QPoint(145, 200), QPoint(21, 200), QPoint(268, 200), QPoint(145, 21), QPoint(145, 408)})
            QCOMPARE(grabbed.pixel(point), sky.rgb());
        for (const QPoint outside :
             {QPoint(20, 20), QPoint(269, 20), QPoint(20, 410), QPoint(271, 200), QPoint(145, 412)})
            QCOMPARE(grabbed.pixelColor(outside), QColor(Qt::black));
        QTRY_VERIFY(fixture.cassette->hasPicture());
        QVERIFY(fixture.grabNow().pixel(145, 400) != sky.rgb());
    }

    void newCoverNeverShowsOldPicture()
    {
        CassetteFixture fixture(u"Item { VHSShelfCard { x: 20; y: 20; width: 250 } }"_s);
        QVERIFY(fixture.showsPictureOf(sampleCover(145)));
        fixture.cassette->setCover(sampleCover(4));
        QVERIFY(!fixture.cassette->hasPicture());
        QCOMPARE(fixture.grabNow().pixel(145, 300), CoverArt::skyTop(4).rgb());
        QTRY_VERIFY(fixture.cassette->hasPicture());
        QCOMPARE(fixture.picture().copy(20, 20, 250, 391), renderedBox(cardOf({250, 391}, sampleCover(4))));
        // The studio still has this picture.
        fixture.cassette->setCover(sampleCover(145));
        QVERIFY(fixture.cassette->hasPicture());
        QCOMPARE(fixture.grabNow().copy(20, 20, 250, 391), renderedBox(cardOf({250, 391}, sampleCover(145))));
    }

    void pictureIsKeptWhenNewCoverLooksTheSame_data()
    {
        VHSCover full = sampleCover();
        full.id = 7;
        full.spineTitle = full.bodyName = full.shelf = full.dateLabel = full.synopsis = full.rating.full = u"x"_s;
        full.hasAgenda = true;
        VHSCover withoutTranscript = sampleCover();
        withoutTranscript.hasTranscript = false;
        VHSCover renamed = full;
        renamed.title = u"x"_s;
        rows<QString, VHSCover, bool>({"type", "cover", "isKept"},
                                      {{"box, fields that it does not draw", u"VHSBoxFront"_s, full, true},
                                       {"card, fields that it does not draw", u"VHSShelfCard"_s, full, true},
                                       {"box, transcript removed", u"VHSBoxFront"_s, withoutTranscript, true},
                                       {"card, transcript removed", u"VHSShelfCard"_s, withoutTranscript, false},
                                       {"box, another title", u"VHSBoxFront"_s, renamed, false}});
    }

    void pictureIsKeptWhenNewCoverLooksTheSame()
    {
        QFETCH(QString, type);
        QFETCH(VHSCover, cover);
        QFETCH(bool, isKept);
        CassetteFixture fixture(u"Item { %1 { width: 250 } }"_s.arg(type));
        QVERIFY(fixture.showsPictureOf(sampleCover()));
        fixture.cassette->setCover(cover);
        QCOMPARE(fixture.cassette->cover(), cover);
        QCOMPARE(fixture.cassette->hasPicture(), isKept);
    }

    void neighbourCardDoesNotCoverOverhangingBarcode_data() { rowsOfDisplaySizes(); }

    void neighbourCardDoesNotCoverOverhangingBarcode()
    {
        QFETCH(QSize, size);
        const double scale = size.height() / 1080.0;
        CassetteFixture fixture(
            u"Canvas { Rectangle { anchors.fill: parent; color: 'white' } "
            "Row { x: 90; y: 60; spacing: 40; Repeater { model: 3; VHSShelfCard { width: 230 } } } }"_s,
            size);
        QVERIFY(fixture.showsPictureOf(overhangingCover()));
        const QImage grabbed = fixture.picture();
        const int y = int((60 + 455 * 230 / 320.0) * scale);
        for (int i = 0; i < 3; ++i) {
            // The last of the 14 bars is 3 units wide and starts 104 units right of the frame's left edge.
            const double left = (90 + 270 * i + 190 * 230 / 320.0 + 104) * scale;
            QVERIFY(left > (90 + 270 * i + 230 + 1) * scale);
            double ink = 0;
            for (int x = int(left - 0.5 * scale); x < int(left + 3.5 * scale); ++x)
                ink += (255 - grabbed.pixelColor(x, y).red()) / 244.0;
            QVERIFY2(std::abs(ink - 3 * scale) < 0.6 * scale, qPrintable(QString::number(ink)));
        }
    }

    void cardsOfRowHaveEqualPixelSize()
    {
        CassetteFixture fixture(
            u"Canvas { Row { x: 70; y: 101; spacing: 40; Repeater { model: 5; VHSShelfCard { width: 250 } } } }"_s,
            {1280, 720});
        QCOMPARE(fixture.cassettes.size(), 5);
        QVERIFY(fixture.showsPictureOf(sampleCover()));
        const QImage grabbed = fixture.picture();
        const QImage expected = renderedBox(cardOf({167, 260}));
        for (int i = 0; i < 5; ++i) {
            const QPoint corner = (QPointF(70 + 290 * i, 101) * 2 / 3).toPoint();
            QCOMPARE(grabbed.copy(QRect(corner, expected.size())), expected);
        }
    }

    void liftedCardIsRepaintedAtItsSizeAfterAnimation()
    {
        CassetteFixture fixture(u"Item { x: 50; y: 50; width: 250; height: 390.625; "
                                "Behavior on scale { NumberAnimation { duration: 150 } } "
                                "VHSShelfCard { width: 250 } }"_s);
        QVERIFY(fixture.showsPictureOf(sampleCover()));
        fixture.root->setProperty("scale", 1.08);
        QTRY_COMPARE(fixture.root->scale(), 1.08);
        QTRY_COMPARE(fixture.picture().copy(40, 34, 270, 422), renderedBox(cardOf({270, 422})));
    }

    void cardShowsItsFirstPictureAgainWhenNoLongerLifted()
    {
        CassetteFixture fixture(u"Item { x: 50; y: 50; width: 250; height: 390.625; VHSShelfCard { width: 250 } }"_s);
        QVERIFY(fixture.showsPictureOf(sampleCover()));
        const QImage before = fixture.picture();
        const qint64 bytesBefore = CassetteStudio::shared()->cachedBytes();
        fixture.root->setScale(1.08);
        QTRY_VERIFY(fixture.picture() != before);
        const qint64 bytesAfter = bytesBefore + cardOf({270, 422}).paint().image.sizeInBytes();
        QTRY_COMPARE(CassetteStudio::shared()->cachedBytes(), bytesAfter);
        for (int round = 0; round < 3; ++round) {
            fixture.root->setScale(1.08);
            fixture.waitUntilIdle();
            fixture.root->setScale(1);
            QTRY_COMPARE(fixture.picture(), before);
        }
        QCOMPARE(CassetteStudio::shared()->cachedBytes(), bytesAfter);
    }

    void currentPictureIsScaledWhileCardGrows()
    {
        CassetteFixture fixture(u"Item { transformOrigin: Item.TopLeft; VHSShelfCard { width: 250 } }"_s);
        QVERIFY(fixture.showsPictureOf(sampleCover()));
        fixture.root->setScale(1.5);
        const QImage grabbed = fixture.grabNow();
        QVERIFY(fixture.cassette->hasPicture());
        // The strip is at its scaled position, and its edge shows that the picture was scaled, not painted again.
        QCOMPARE(grabbed.pixelColor(367, 470), renderedBox(cardOf({250, 391})).pixelColor(244, 313));
        QVERIFY(grabbed.copy(0, 0, 375, 586) != renderedBox(cardOf({375, 586})));
        QTRY_COMPARE(fixture.picture().copy(0, 0, 375, 586), renderedBox(cardOf({375, 586})));
    }

    void moveByWholePixelsUpdatesNoNode()
    {
        TestScreen fixture({1280, 720});
        QQuickItem* root = fixture.load(u"Canvas { Item { objectName: 'row' } }"_s);
        QQuickItem* row = root->findChild<QQuickItem*>(u"row"_s);
        CountedCard card;
        card.setParentItem(row);
        card.setWidth(250);
        card.setCover(sampleCover());
        QTRY_VERIFY(card.hasPicture());
        fixture.waitUntilIdle();
        const int updates = card.updates;
        const qint64 bytesBefore = CassetteStudio::shared()->cachedBytes();
        for (int pixels = 1; pixels <= 40; ++pixels) {
            row->setPosition(QPointF(pixels, 2 * pixels) * 1.5);
            fixture.waitForFrame();
        }
        QCOMPARE(card.updates, updates);
        QCOMPARE(CassetteStudio::shared()->cachedBytes(), bytesBefore);
        const QImage expected = renderedBox(cardOf({167, 260}));
        QCOMPARE(fixture.picture().copy(QRect(QPoint(40, 80), expected.size())), expected);
    }

    void oldPictureIsShownAfterResizeUntilNewOneIsReady()
    {
        CassetteFixture fixture(u"Item { VHSBoxFront { width: 250 } }"_s);
        QVERIFY(fixture.showsPictureOf(sampleCover()));
        fixture.cassette->setWidth(420);
        fixture.grabNow();
        QVERIFY(fixture.cassette->hasPicture());
        QTRY_COMPARE(fixture.picture().copy(0, 0, 420, 656),
                     renderedBox({Form::BoxFront, sampleCover(), 420, QSize(420, 656)}));
    }

    void hiddenCassetteRequestsNoPicture()
    {
        CassetteFixture fixture(u"Item { visible: false; VHSShelfCard { width: 250 } }"_s);
        fixture.cassette->setCover(sampleCover());
        fixture.waitUntilIdle();
        QVERIFY(!fixture.cassette->hasPicture());
        QCOMPARE(CassetteStudio::shared()->cachedBytes(), 0);
        fixture.root->setVisible(true);
        QTRY_VERIFY(fixture.cassette->hasPicture());
    }

    void cassetteWithoutSizeDrawsNothing()
    {
        CassetteFixture fixture(u"Item { VHSShelfCard { } }"_s);
        fixture.cassette->setCover(sampleCover());
        fixture.waitUntilIdle();
        QVERIFY(!fixture.cassette->hasPicture());
        fixture.cassette->setWidth(250);
        QTRY_VERIFY(fixture.cassette->hasPicture());
        fixture.cassette->setWidth(0);
        QImage black(500, 700, QImage::Format_RGB32);
        black.fill(Qt::black);
        QCOMPARE(fixture.picture(), black);
    }

    void picturesAreFreedWithLastCassette()
    {
        std::weak_ptr<CassetteStudio> studio;
        {
            CassetteFixture fixture(u"Item { VHSShelfCard { width: 250 } }"_s);
            QVERIFY(fixture.showsPictureOf(sampleCover()));
            studio = CassetteStudio::shared();
            QVERIFY(!studio.expired());
        }
        QVERIFY(studio.expired());
    }
};

QUILLMERE_TEST(CassetteItemTest, QGuiApplication)

} // namespace quillmere

#include "CassetteItemTest.moc"
