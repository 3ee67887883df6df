#include "PaintedItem.h"
#include "Rows.h"
#include "TestMain.h"
#include "TestScreen.h"
#include "VeneerBackground.h"

#include <QPainter>
#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

/** A red disc that counts how often it is painted. */
class CountingDisc : public PaintedItem
{
public:
    mutable int paintings = 0;

    explicit CountingDisc(QQuickItem* parent) : PaintedItem(parent) { setSize({100, 100}); }

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
    void moveByWholePixelsKeepsPicture_data() { rowsOfDisplaySizes(); }

    void moveByWholePixelsKeepsPicture()
    {
        QFETCH(QSize, size);
        TestScreen fixture(size);
        QQuickItem* canvas = fixture.load(u"Canvas {}"_s);
        CountingDisc disc(canvas);
        disc.setSize({101, 101});
        disc.setPosition({40.3, 30.7});
        const QImage before = fixture.picture();
        const double points = 1920.0 / size.width(); // points per pixel
        int moved = 0;
        for (const int step : {1, 7, 30, 2, 11}) {
            moved += step;
            disc.setX(40.3 + moved * points);
            fixture.waitForFrame();
            // As sharp during the movement as at rest.
            const QImage now = fixture.window().grabWindow().convertToFormat(QImage::Format_RGB32);
            QCOMPARE(now.copy(moved, 0, 300, 300), before.copy(0, 0, 300, 300));
        }
        fixture.waitUntilIdle();
        QCOMPARE(disc.paintings, 1);
    }

    void moveByWholePixelsDrawsOneFrame()
    {
        TestScreen fixture({400, 300});
        QQuickItem* root = fixture.load(u"Item {}"_s);
        CountingDisc disc(root);
        fixture.waitUntilIdle();
        const int before = fixture.frames();
        disc.setX(25);
        fixture.waitUntilIdle();
        QCOMPARE(fixture.frames(), before + 1);
    }

    void moveByFractionOfPixelPaintsOnceAtEnd()
    {
        TestScreen fixture({400, 300});
        QQuickItem* root = fixture.load(u"Item {}"_s);
        CountingDisc disc(root);
        fixture.waitUntilIdle();
        for (const double x : {0.2, 0.4, 0.6}) {
            disc.setX(x);
            fixture.waitForFrame();
            QCOMPARE(disc.paintings, 1);
        }
        fixture.waitUntilIdle();
        QCOMPARE(disc.paintings, 2);
    }

    void scaledArtIsRepaintedDuringScroll()
    {
        TestScreen fixture({600, 300});
        QQuickItem* root = fixture.load(u"Item {}"_s);
        CountingDisc disc(root);
        disc.setTransformOrigin(QQuickItem::TopLeft);
        fixture.waitUntilIdle();
        disc.setScale(1.5);
        QTRY_VERIFY_WITH_TIMEOUT(
            [&] {
                disc.setX(std::fmod(disc.x() + 1, 300));
                fixture.waitForFrame();
                return disc.paintings == 2;
            }(),
            2000);
    }

    void hiddenArtIsNotPainted()
    {
        TestScreen fixture({400, 300});
        QQuickItem* root = fixture.load(
            u"Item { Rectangle { width: 400; height: 300; color: 'white' } Item { objectName: 'parent' } }"_s);
        QQuickItem* parent = root->findChild<QQuickItem*>(u"parent"_s);
        parent->setVisible(false);
        CountingDisc disc(parent);
        fixture.waitUntilIdle();
        QCOMPARE(disc.paintings, 0);
        parent->setVisible(true);
        QCOMPARE(fixture.picture().pixelColor(50, 50), QColor(Qt::red));
        QCOMPARE(disc.paintings, 1);
        // It keeps its picture while hidden for a short time.
        parent->setVisible(false);
        fixture.waitUntilIdle();
        parent->setVisible(true);
        QCOMPARE(fixture.picture().pixelColor(50, 50), QColor(Qt::red));
        QCOMPARE(disc.paintings, 1);
    }

    void artOnWholePixelsIsOpaque_data()
    {
        rows<double, bool>({"x", "isOpaque"}, {{"on whole pixels", 30.0, true}, {"on half pixels", 30.5, false}});
    }

    void artOnWholePixelsIsOpaque()
    {
        QFETCH(double, x);
        QFETCH(bool, isOpaque);
        TestScreen fixture({400, 300});
        QQuickItem* root = fixture.load(u"Item {}"_s);
        VeneerBackground veneer(root);
        veneer.setSize({100, 100});
        veneer.setX(x);
        fixture.waitUntilIdle();
        QCOMPARE(veneer.picture()->hasAlphaChannel(), !isOpaque);
    }

    void opaqueArtIsBlendedWithItsOpacity()
    {
        TestScreen fixture({400, 300});
        QQuickItem* root = fixture.load(u"Item { Rectangle { width: 400; height: 300; color: 'white' } }"_s);
        VeneerBackground veneer(root);
        veneer.setSize({100, 100});
        veneer.setOpacity(0.5);
        const QColor seen = fixture.picture().pixelColor(50, 50);
        const QColor wood = veneer.picture()->pixelColor(50, 50);
        QVERIFY2(std::abs(seen.red() - (wood.red() + 255) / 2) <= 2, qPrintable(seen.name()));
    }
};

QUILLMERE_TEST(PaintedArtTest, QGuiApplication)

} // namespace quillmere

#include "PaintedArtTest.moc"
