#include "PaintedItem.h"
#include "Stage.h"
#include "TestMain.h"
#include "VeneerBackground.h"

#include <QPainter>
#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

/** A red disc that counts how often it is painted. */
class CountingDisc : public PaintedItem
{
public:
    mutable int paintings = 0;

    void paint(QPainter& painter, const QSizeF& size) const override
    {
        ++paintings;
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::red);
        painter.drawEllipse(QRectF(QPointF(), size));
    }
};

} // namespace

/** When painted art is painted, and what it covers. */
class PaintedArtTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void moveByWholePixelsKeepsPicture_data();
    void moveByWholePixelsKeepsPicture();
    void moveByWholePixelsDrawsOneFrame();
    void moveByFractionOfPixelPaintsOnceAtEnd();
    void scaledArtIsRepaintedDuringScroll();
    void hiddenArtIsNotPainted();
    void artOnWholePixelsIsOpaque_data();
    void artOnWholePixelsIsOpaque();
    void opaqueArtIsBlendedWithItsOpacity();
};

void PaintedArtTest::moveByWholePixelsKeepsPicture_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("720p") << QSize(1280, 720);
    QTest::newRow("1080p") << QSize(1920, 1080);
    QTest::newRow("2160p") << QSize(3840, 2160);
}

void PaintedArtTest::moveByWholePixelsKeepsPicture()
{
    QFETCH(QSize, size);
    Stage stage(size);
    QQuickItem* canvas = stage.load(u"Canvas {}"_s);
    CountingDisc disc;
    disc.setSize({101, 101});
    disc.setPosition({40.3, 30.7});
    disc.setParentItem(canvas);
    const QImage before = stage.picture();
    const double points = 1920.0 / size.width(); // points per pixel
    int moved = 0;
    for (const int step : {1, 7, 30, 2, 11}) {
        moved += step;
        disc.setX(40.3 + moved * points);
        stage.waitForFrame();
        // As sharp during the movement as at rest.
        const QImage now = stage.window().grabWindow().convertToFormat(QImage::Format_RGB32);
        QCOMPARE(now.copy(moved, 0, 300, 300), before.copy(0, 0, 300, 300));
    }
    stage.waitUntilIdle();
    QCOMPARE(disc.paintings, 1);
}

void PaintedArtTest::moveByWholePixelsDrawsOneFrame()
{
    Stage stage({400, 300});
    QQuickItem* root = stage.load(u"Item {}"_s);
    CountingDisc disc;
    disc.setSize({100, 100});
    disc.setParentItem(root);
    stage.waitUntilIdle();
    const int before = stage.frames();
    disc.setX(25);
    stage.waitUntilIdle();
    QCOMPARE(stage.frames(), before + 1);
}

void PaintedArtTest::moveByFractionOfPixelPaintsOnceAtEnd()
{
    Stage stage({400, 300});
    QQuickItem* root = stage.load(u"Item {}"_s);
    CountingDisc disc;
    disc.setSize({100, 100});
    disc.setParentItem(root);
    stage.waitUntilIdle();
    for (const double x : {0.2, 0.4, 0.6}) {
        disc.setX(x);
        stage.waitForFrame();
        QCOMPARE(disc.paintings, 1);
    }
    stage.waitUntilIdle();
    QCOMPARE(disc.paintings, 2);
}

void PaintedArtTest::scaledArtIsRepaintedDuringScroll()
{
    Stage stage({600, 300});
    QQuickItem* root = stage.load(u"Item {}"_s);
    CountingDisc disc;
    disc.setSize({100, 100});
    disc.setTransformOrigin(QQuickItem::TopLeft);
    disc.setParentItem(root);
    stage.waitUntilIdle();
    disc.setScale(1.5);
    QTRY_VERIFY_WITH_TIMEOUT(
        [&] {
            disc.setX(std::fmod(disc.x() + 1, 300));
            stage.waitForFrame();
            return disc.paintings == 2;
        }(),
        2000);
}

void PaintedArtTest::hiddenArtIsNotPainted()
{
    Stage stage({400, 300});
    QQuickItem* root = stage.load(u"Item { Rectangle { width: 400; height: 300; color: 'white' } Item {} }"_s);
    QQuickItem* parent = root->childItems().constLast();
    parent->setVisible(false);
    CountingDisc disc;
    disc.setSize({100, 100});
    disc.setParentItem(parent);
    stage.waitUntilIdle();
    QCOMPARE(disc.paintings, 0);
    parent->setVisible(true);
    QCOMPARE(stage.picture().pixelColor(50, 50), QColor(Qt::red));
    QCOMPARE(disc.paintings, 1);
    // It keeps its picture while hidden for a short time.
    parent->setVisible(false);
    stage.waitUntilIdle();
    parent->setVisible(true);
    QCOMPARE(stage.picture().pixelColor(50, 50), QColor(Qt::red));
    QCOMPARE(disc.paintings, 1);
}

void PaintedArtTest::artOnWholePixelsIsOpaque_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<bool>("isOpaque");
    QTest::newRow("on whole pixels") << 30.0 << true;
    QTest::newRow("on half pixels") << 30.5 << false;
}

void PaintedArtTest::artOnWholePixelsIsOpaque()
{
    QFETCH(double, x);
    QFETCH(bool, isOpaque);
    Stage stage({400, 300});
    QQuickItem* root = stage.load(u"Item {}"_s);
    VeneerBackground veneer(root);
    veneer.setSize({100, 100});
    veneer.setX(x);
    stage.waitUntilIdle();
    QCOMPARE(veneer.picture()->hasAlphaChannel(), !isOpaque);
}

void PaintedArtTest::opaqueArtIsBlendedWithItsOpacity()
{
    Stage stage({400, 300});
    QQuickItem* root = stage.load(u"Item { Rectangle { width: 400; height: 300; color: 'white' } }"_s);
    VeneerBackground veneer(root);
    veneer.setSize({100, 100});
    veneer.setOpacity(0.5);
    const QColor seen = stage.picture().pixelColor(50, 50);
    const QColor wood = veneer.picture()->pixelColor(50, 50);
    QVERIFY2(std::abs(seen.red() - (wood.red() + 255) / 2) <= 2, qPrintable(seen.name()));
}

QUILLMERE_TEST(PaintedArtTest, QGuiApplication)
#include "PaintedArtTest.moc"
