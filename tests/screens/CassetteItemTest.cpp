#include "CoverArt.h"
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

/** The size in memory of a picture of the sample card, in bytes. */
qint64 bytesOf(QSize pixels)
{
    return CassetteRenderer{Form::ShelfCard, sampleCover(), 250, pixels}.paint().image.sizeInBytes();
}

/** The sample cover with a bar code too long for a small box. */
VHSCover overhangingCover()
{
    VHSCover cover = sampleCover();
    cover.barcode = QList<int>(28, 3);
    return cover;
}

CassetteItem* cassetteOf(QQuickItem* root)
{
    return qobject_cast<CassetteItem*>(TestScreen::first(root, "CassetteItem"));
}

/** The picture of the window right now, before any picture requested in the background can have arrived. */
QImage grabNow(TestScreen& fixture)
{
    return fixture.window().grabWindow().convertToFormat(QImage::Format_RGB32);
}

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
    void cassetteHeightFollowsFromItsWidth();
    void cassetteAtRestShowsItsPicturePixelForPixel_data();
    void cassetteAtRestShowsItsPicturePixelForPixel();
    void cassetteWithoutPictureShowsPlateInCoverColour();
    void newCoverNeverShowsOldPicture();
    void pictureIsKeptWhenNewCoverLooksTheSame_data();
    void pictureIsKeptWhenNewCoverLooksTheSame();
    void barcodeBeyondBoxEdgeIsDrawn_data();
    void barcodeBeyondBoxEdgeIsDrawn();
    void neighbourCardDoesNotCoverOverhangingBarcode_data();
    void neighbourCardDoesNotCoverOverhangingBarcode();
    void cardsOfRowHaveEqualPixelSize();
    void liftedCardIsRepaintedAtItsSizeAfterAnimation();
    void cardShowsItsFirstPictureAgainWhenNoLongerLifted();
    void currentPictureIsScaledWhileCardGrows();
    void moveByWholePixelsUpdatesNoNode();
    void oldPictureIsShownAfterResizeUntilNewOneIsReady();
    void hiddenCassetteRequestsNoPicture();
    void cassetteWithoutSizeDrawsNothing();
    void picturesAreFreedWithLastCassette();
};

void CassetteItemTest::cassetteHeightFollowsFromItsWidth()
{
    TestScreen fixture({500, 700});
    CassetteItem* card = cassetteOf(fixture.load(u"import Quillmere.Shop\nItem { VHSShelfCard { width: 250 } }"_s));
    QCOMPARE(card->height(), 390.625);
    card->setWidth(320);
    QCOMPARE(card->height(), 500);
    QCOMPARE(card->radius(), 10.0);
}

void CassetteItemTest::cassetteAtRestShowsItsPicturePixelForPixel_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<double>("width");
    QTest::addColumn<double>("scale");
    QTest::addColumn<QSize>("pixels");
    QTest::newRow("card") << u"VHSShelfCard"_s << 250.0 << 1.0 << QSize(250, 391);
    QTest::newRow("card at 720p") << u"VHSShelfCard"_s << 250.0 << 2.0 / 3 << QSize(167, 260);
    QTest::newRow("search card") << u"VHSShelfCard"_s << 230.0 << 1.0 << QSize(230, 359);
    QTest::newRow("lifted card") << u"VHSShelfCard"_s << 250.0 << 1.08 << QSize(270, 422);
    QTest::newRow("card at 2160p") << u"VHSShelfCard"_s << 250.0 << 2.0 << QSize(500, 781);
    QTest::newRow("box") << u"VHSBoxFront"_s << 420.0 << 1.0 << QSize(420, 656);
}

void CassetteItemTest::cassetteAtRestShowsItsPicturePixelForPixel()
{
    QFETCH(QString, type);
    QFETCH(double, width);
    QFETCH(double, scale);
    QFETCH(QSize, pixels);
    TestScreen fixture({600, 900});
    CassetteItem* cassette = cassetteOf(fixture.load(
        u"import Quillmere.Shop\nItem { scale: %1; transformOrigin: Item.TopLeft; %2 { x: 20; y: 20; width: %3 } }"_s
            .arg(scale, 0, 'g', 17)
            .arg(type)
            .arg(width)));
    cassette->setCover(sampleCover());
    QTRY_VERIFY(cassette->hasPicture());
    const auto form = type == u"VHSBoxFront"_s ? Form::BoxFront : Form::ShelfCard;
    const QPoint corner = (QPointF(20, 20) * scale).toPoint();
    QCOMPARE(fixture.picture().copy(QRect(corner, pixels)), renderedBox({form, sampleCover(), width, pixels}));
}

void CassetteItemTest::cassetteWithoutPictureShowsPlateInCoverColour()
{
    TestScreen fixture({500, 700});
    CassetteItem* card =
        cassetteOf(fixture.load(u"import Quillmere.Shop\nItem { VHSShelfCard { x: 20; y: 20; width: 250 } }"_s));
    card->setCover(sampleCover(145));
    const QImage grabbed = grabNow(fixture);
    QVERIFY(!card->hasPicture());
    const QColor sky = CoverArt::skyTop(145);
    for (const QPoint point : {QPoint(145, 200), QPoint(21, 200), QPoint(268, 200), QPoint(145, 21), QPoint(145, 408)})
        QCOMPARE(grabbed.pixel(point), sky.rgb());
    for (const QPoint outside : {QPoint(20, 20), QPoint(269, 20), QPoint(20, 410), QPoint(271, 200), QPoint(145, 412)})
        QCOMPARE(grabbed.pixelColor(outside), QColor(Qt::black));
    QTRY_VERIFY(card->hasPicture());
    QVERIFY(grabNow(fixture).pixel(145, 400) != sky.rgb());
}

void CassetteItemTest::newCoverNeverShowsOldPicture()
{
    TestScreen fixture({500, 700});
    CassetteItem* card =
        cassetteOf(fixture.load(u"import Quillmere.Shop\nItem { VHSShelfCard { x: 20; y: 20; width: 250 } }"_s));
    card->setCover(sampleCover(145));
    QTRY_VERIFY(card->hasPicture());
    card->setCover(sampleCover(4));
    QVERIFY(!card->hasPicture());
    QCOMPARE(grabNow(fixture).pixel(145, 300), CoverArt::skyTop(4).rgb());
    QTRY_VERIFY(card->hasPicture());
    QCOMPARE(fixture.picture().copy(20, 20, 250, 391),
             renderedBox({Form::ShelfCard, sampleCover(4), 250, QSize(250, 391)}));
    // The studio still has this picture.
    card->setCover(sampleCover(145));
    QVERIFY(card->hasPicture());
    QCOMPARE(grabNow(fixture).copy(20, 20, 250, 391),
             renderedBox({Form::ShelfCard, sampleCover(145), 250, QSize(250, 391)}));
}

void CassetteItemTest::pictureIsKeptWhenNewCoverLooksTheSame_data()
{
    VHSCover full = sampleCover();
    full.id = 7;
    full.spineTitle = full.bodyName = full.shelf = full.dateLabel = full.synopsis = full.rating.full = u"x"_s;
    full.hasAgenda = true;
    VHSCover withoutTranscript = sampleCover();
    withoutTranscript.hasTranscript = false;
    VHSCover renamed = full;
    renamed.title = u"x"_s;
    QTest::addColumn<QString>("type");
    QTest::addColumn<VHSCover>("cover");
    QTest::addColumn<bool>("isKept");
    QTest::newRow("box, fields that it does not draw") << u"VHSBoxFront"_s << full << true;
    QTest::newRow("card, fields that it does not draw") << u"VHSShelfCard"_s << full << true;
    QTest::newRow("box, transcript removed") << u"VHSBoxFront"_s << withoutTranscript << true;
    QTest::newRow("card, transcript removed") << u"VHSShelfCard"_s << withoutTranscript << false;
    QTest::newRow("box, another title") << u"VHSBoxFront"_s << renamed << false;
}

void CassetteItemTest::pictureIsKeptWhenNewCoverLooksTheSame()
{
    QFETCH(QString, type);
    QFETCH(VHSCover, cover);
    QFETCH(bool, isKept);
    TestScreen fixture({500, 700});
    CassetteItem* item = cassetteOf(fixture.load(u"import Quillmere.Shop\nItem { %1 { width: 250 } }"_s.arg(type)));
    item->setCover(sampleCover());
    QTRY_VERIFY(item->hasPicture());
    item->setCover(cover);
    QCOMPARE(item->cover(), cover);
    QCOMPARE(item->hasPicture(), isKept);
}

void CassetteItemTest::barcodeBeyondBoxEdgeIsDrawn_data()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<double>("scale");
    QTest::addColumn<QSize>("pixels");
    QTest::newRow("search card") << 230.0 << 1.0 << QSize(230, 359);
    QTest::newRow("search card at 720p") << 230.0 << 2.0 / 3 << QSize(153, 240);
    QTest::newRow("search card at 2160p") << 230.0 << 2.0 << QSize(460, 719);
    QTest::newRow("lifted search card") << 230.0 << 1.08 << QSize(248, 388);
    QTest::newRow("card") << 250.0 << 1.0 << QSize(250, 391);
    QTest::newRow("box") << 420.0 << 1.0 << QSize(420, 656);
}

void CassetteItemTest::barcodeBeyondBoxEdgeIsDrawn()
{
    QFETCH(double, width);
    QFETCH(double, scale);
    QFETCH(QSize, pixels);
    TestScreen fixture({700, 900});
    CassetteItem* cassette = cassetteOf(fixture.load(
        u"import Quillmere.Shop\nItem { scale: %1; transformOrigin: Item.TopLeft; VHSShelfCard { x: 40; y: 40; width: %2 } }"_s
            .arg(scale, 0, 'g', 17)
            .arg(width)));
    cassette->setCover(overhangingCover());
    QTRY_VERIFY(cassette->hasPicture());
    const CassettePicture picture = CassetteRenderer{Form::ShelfCard, overhangingCover(), width, pixels}.paint();
    QImage wanted(700, 900, QImage::Format_RGB32);
    wanted.fill(Qt::black);
    const QPoint corner(qRound(40 * scale), qRound(40 * scale));
    QPainter(&wanted).drawImage(corner - picture.box.topLeft(), picture.image);
    QCOMPARE(fixture.picture(), wanted);
    QCOMPARE(cassette->size(), QSizeF(width, width * 1.5625));
}

void CassetteItemTest::neighbourCardDoesNotCoverOverhangingBarcode_data()
{
    QTest::addColumn<QSize>("window");
    QTest::newRow("720p") << QSize(1280, 720);
    QTest::newRow("1080p") << QSize(1920, 1080);
    QTest::newRow("2160p") << QSize(3840, 2160);
}

void CassetteItemTest::neighbourCardDoesNotCoverOverhangingBarcode()
{
    QFETCH(QSize, window);
    const double scale = window.height() / 1080.0;
    TestScreen fixture(window);
    QQuickItem* root =
        fixture.load(u"import Quillmere.Shop\nCanvas { Rectangle { anchors.fill: parent; color: 'white' } "
                     "Row { x: 90; y: 60; spacing: 40; Repeater { model: 3; VHSShelfCard { width: 230 } } } }"_s);
    for (QQuickItem* card : TestScreen::all(root, "CassetteItem")) {
        qobject_cast<CassetteItem*>(card)->setCover(overhangingCover());
        QTRY_VERIFY(qobject_cast<CassetteItem*>(card)->hasPicture());
    }
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

void CassetteItemTest::cardsOfRowHaveEqualPixelSize()
{
    TestScreen fixture({1280, 720});
    QQuickItem* root = fixture.load(u"import Quillmere.Shop\nCanvas { Row { x: 70; y: 101; spacing: 40; Repeater { "
                                    "model: 5; VHSShelfCard { width: 250 } } } }"_s);
    const auto cards = TestScreen::all(root, "CassetteItem");
    QCOMPARE(cards.size(), 5);
    for (QQuickItem* card : cards) {
        auto* cassette = qobject_cast<CassetteItem*>(card);
        cassette->setCover(sampleCover());
        QTRY_VERIFY(cassette->hasPicture());
    }
    const QImage grabbed = fixture.picture();
    const QImage expected = renderedBox({Form::ShelfCard, sampleCover(), 250, QSize(167, 260)});
    for (int i = 0; i < 5; ++i) {
        const QPoint corner = (QPointF(70 + 290 * i, 101) * 2 / 3).toPoint();
        QCOMPARE(grabbed.copy(QRect(corner, expected.size())), expected);
    }
}

void CassetteItemTest::liftedCardIsRepaintedAtItsSizeAfterAnimation()
{
    TestScreen fixture({500, 700});
    QQuickItem* root = fixture.load(u"import Quillmere.Shop\nItem { x: 50; y: 50; width: 250; height: 390.625; "
                                    "Behavior on scale { NumberAnimation { duration: 150 } } "
                                    "VHSShelfCard { width: 250 } }"_s);
    CassetteItem* card = cassetteOf(root);
    card->setCover(sampleCover());
    QTRY_VERIFY(card->hasPicture());
    root->setProperty("scale", 1.08);
    QTRY_COMPARE(root->scale(), 1.08);
    const QImage expected = renderedBox({Form::ShelfCard, sampleCover(), 250, QSize(270, 422)});
    QTRY_COMPARE(fixture.picture().copy(40, 34, 270, 422), expected);
}

void CassetteItemTest::cardShowsItsFirstPictureAgainWhenNoLongerLifted()
{
    TestScreen fixture({500, 700});
    QQuickItem* root = fixture.load(u"import Quillmere.Shop\nItem { x: 50; y: 50; width: 250; height: 390.625; "
                                    "VHSShelfCard { width: 250 } }"_s);
    CassetteItem* card = cassetteOf(root);
    card->setCover(sampleCover());
    QTRY_VERIFY(card->hasPicture());
    const QImage before = fixture.picture();
    const qint64 bytesBefore = CassetteStudio::shared()->cachedBytes();
    root->setScale(1.08);
    QTRY_VERIFY(fixture.picture() != before);
    QTRY_COMPARE(CassetteStudio::shared()->cachedBytes(), bytesBefore + bytesOf({270, 422}));
    for (int round = 0; round < 3; ++round) {
        root->setScale(1.08);
        fixture.waitUntilIdle();
        root->setScale(1);
        QTRY_COMPARE(fixture.picture(), before);
    }
    QCOMPARE(CassetteStudio::shared()->cachedBytes(), bytesBefore + bytesOf({270, 422}));
}

void CassetteItemTest::currentPictureIsScaledWhileCardGrows()
{
    TestScreen fixture({500, 700});
    QQuickItem* root = fixture.load(u"import Quillmere.Shop\nItem { transformOrigin: Item.TopLeft; "
                                    "VHSShelfCard { width: 250 } }"_s);
    CassetteItem* card = cassetteOf(root);
    card->setCover(sampleCover());
    QTRY_VERIFY(card->hasPicture());
    root->setScale(1.5);
    const QImage grabbed = grabNow(fixture);
    QVERIFY(card->hasPicture());
    // The strip is at its scaled position, and its edge shows that the picture was scaled, not painted again.
    QCOMPARE(grabbed.pixelColor(367, 470),
             renderedBox({Form::ShelfCard, sampleCover(), 250, {250, 391}}).pixelColor(244, 313));
    QVERIFY(grabbed.copy(0, 0, 375, 586) != renderedBox({Form::ShelfCard, sampleCover(), 250, QSize(375, 586)}));
    QTRY_COMPARE(fixture.picture().copy(0, 0, 375, 586),
                 renderedBox({Form::ShelfCard, sampleCover(), 250, QSize(375, 586)}));
}

void CassetteItemTest::moveByWholePixelsUpdatesNoNode()
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
    const QImage expected = renderedBox({Form::ShelfCard, sampleCover(), 250, QSize(167, 260)});
    QCOMPARE(fixture.picture().copy(QRect(QPoint(40, 80), expected.size())), expected);
}

void CassetteItemTest::oldPictureIsShownAfterResizeUntilNewOneIsReady()
{
    TestScreen fixture({500, 700});
    CassetteItem* box = cassetteOf(fixture.load(u"import Quillmere.Shop\nItem { VHSBoxFront { width: 250 } }"_s));
    box->setCover(sampleCover());
    QTRY_VERIFY(box->hasPicture());
    box->setWidth(420);
    grabNow(fixture);
    QVERIFY(box->hasPicture());
    QTRY_COMPARE(fixture.picture().copy(0, 0, 420, 656),
                 renderedBox({Form::BoxFront, sampleCover(), 420, QSize(420, 656)}));
}

void CassetteItemTest::hiddenCassetteRequestsNoPicture()
{
    TestScreen fixture({500, 700});
    QQuickItem* root = fixture.load(u"import Quillmere.Shop\nItem { visible: false; VHSShelfCard { width: 250 } }"_s);
    CassetteItem* card = cassetteOf(root);
    card->setCover(sampleCover());
    fixture.waitUntilIdle();
    QVERIFY(!card->hasPicture());
    QCOMPARE(CassetteStudio::shared()->cachedBytes(), 0);
    root->setVisible(true);
    QTRY_VERIFY(card->hasPicture());
}

void CassetteItemTest::cassetteWithoutSizeDrawsNothing()
{
    TestScreen fixture({500, 700});
    CassetteItem* card = cassetteOf(fixture.load(u"import Quillmere.Shop\nItem { VHSShelfCard { } }"_s));
    card->setCover(sampleCover());
    fixture.waitUntilIdle();
    QVERIFY(!card->hasPicture());
    card->setWidth(250);
    QTRY_VERIFY(card->hasPicture());
    card->setWidth(0);
    QImage black(500, 700, QImage::Format_RGB32);
    black.fill(Qt::black);
    QCOMPARE(fixture.picture(), black);
}

void CassetteItemTest::picturesAreFreedWithLastCassette()
{
    std::weak_ptr<CassetteStudio> studio;
    {
        TestScreen fixture({500, 700});
        CassetteItem* card = cassetteOf(fixture.load(u"import Quillmere.Shop\nItem { VHSShelfCard { width: 250 } }"_s));
        card->setCover(sampleCover());
        QTRY_VERIFY(card->hasPicture());
        studio = CassetteStudio::shared();
        QVERIFY(!studio.expired());
    }
    QVERIFY(studio.expired());
}

QUILLMERE_TEST(CassetteItemTest, QGuiApplication)

} // namespace quillmere

#include "CassetteItemTest.moc"
