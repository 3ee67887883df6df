#include "PaintedItem.h"
#include "Stage.h"
#include "VeneerBackground.h"

#include <QPainter>
#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

/** A red disc that counts how often it is painted. */
class CountedDisc : public PaintedItem
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

/** What painted art costs: when it is painted, and what it hides. */
class PaintedArtTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aMoveByWholePixelsLeavesThePictureAsItIs_data();
    void aMoveByWholePixelsLeavesThePictureAsItIs();
    void aMoveByWholePixelsDrawsOneFrame();
    void aMoveByPartOfAPixelPaintsOnceAtItsEnd();
    void artThatGrewIsSharpThoughItIsStillScrolled();
    void hiddenArtIsNotPainted();
    void artWithoutAGapHidesWhatIsBeneath_data();
    void artWithoutAGapHidesWhatIsBeneath();
    void artWithoutAGapIsFadedAsAnyOther();
};

void PaintedArtTest::aMoveByWholePixelsLeavesThePictureAsItIs_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("720p") << QSize(1280, 720);
    QTest::newRow("1080p") << QSize(1920, 1080);
    QTest::newRow("2160p") << QSize(3840, 2160);
}

void PaintedArtTest::aMoveByWholePixelsLeavesThePictureAsItIs()
{
    QFETCH(QSize, size);
    Stage stage(size);
    QQuickItem* canvas = stage.put(u"Canvas {}"_s);
    CountedDisc disc;
    disc.setSize({101, 101});
    disc.setPosition({40.3, 30.7});
    disc.setParentItem(canvas);
    const QImage before = stage.picture();
    const double points = 1920.0 / size.width(); // a pixel
    int moved = 0;
    for (const int step : {1, 7, 30, 2, 11}) {
        moved += step;
        disc.setX(40.3 + moved * points);
        stage.waitForFrame();
        // On the way no less sharp than at rest.
        const QImage now = stage.window().grabWindow().convertToFormat(QImage::Format_RGB32);
        QCOMPARE(now.copy(moved, 0, 300, 300), before.copy(0, 0, 300, 300));
    }
    stage.settle();
    QCOMPARE(disc.paintings, 1);
}

void PaintedArtTest::aMoveByWholePixelsDrawsOneFrame()
{
    Stage stage({400, 300});
    QQuickItem* root = stage.put(u"Item {}"_s);
    CountedDisc disc;
    disc.setSize({100, 100});
    disc.setParentItem(root);
    stage.settle();
    const int before = stage.frames();
    disc.setX(25);
    stage.settle();
    QCOMPARE(stage.frames(), before + 1);
}

void PaintedArtTest::aMoveByPartOfAPixelPaintsOnceAtItsEnd()
{
    Stage stage({400, 300});
    QQuickItem* root = stage.put(u"Item {}"_s);
    CountedDisc disc;
    disc.setSize({100, 100});
    disc.setParentItem(root);
    stage.settle();
    for (const double x : {0.2, 0.4, 0.6}) {
        disc.setX(x);
        stage.waitForFrame();
        QCOMPARE(disc.paintings, 1);
    }
    stage.settle();
    QCOMPARE(disc.paintings, 2);
}

void PaintedArtTest::artThatGrewIsSharpThoughItIsStillScrolled()
{
    Stage stage({600, 300});
    QQuickItem* root = stage.put(u"Item {}"_s);
    CountedDisc disc;
    disc.setSize({100, 100});
    disc.setTransformOrigin(QQuickItem::TopLeft);
    disc.setParentItem(root);
    stage.settle();
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
    QQuickItem* root = stage.put(u"Item { Rectangle { width: 400; height: 300; color: 'white' } Item {} }"_s);
    QQuickItem* cupboard = root->childItems().constLast();
    cupboard->setVisible(false);
    CountedDisc disc;
    disc.setSize({100, 100});
    disc.setParentItem(cupboard);
    stage.settle();
    QCOMPARE(disc.paintings, 0);
    cupboard->setVisible(true);
    QCOMPARE(stage.picture().pixelColor(50, 50), QColor(Qt::red));
    QCOMPARE(disc.paintings, 1);
    // Hidden for a while it keeps its picture.
    cupboard->setVisible(false);
    stage.settle();
    cupboard->setVisible(true);
    QCOMPARE(stage.picture().pixelColor(50, 50), QColor(Qt::red));
    QCOMPARE(disc.paintings, 1);
}

void PaintedArtTest::artWithoutAGapHidesWhatIsBeneath_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<bool>("hides");
    QTest::newRow("on whole pixels") << 30.0 << true;
    QTest::newRow("with half a pixel at its edges") << 30.5 << false;
}

void PaintedArtTest::artWithoutAGapHidesWhatIsBeneath()
{
    QFETCH(double, x);
    QFETCH(bool, hides);
    Stage stage({400, 300});
    QQuickItem* root = stage.put(u"Item {}"_s);
    VeneerBackground veneer(root);
    veneer.setSize({100, 100});
    veneer.setX(x);
    stage.settle();
    QCOMPARE(veneer.picture()->hasAlphaChannel(), !hides);
}

void PaintedArtTest::artWithoutAGapIsFadedAsAnyOther()
{
    Stage stage({400, 300});
    QQuickItem* root = stage.put(u"Item { Rectangle { width: 400; height: 300; color: 'white' } }"_s);
    VeneerBackground veneer(root);
    veneer.setSize({100, 100});
    veneer.setOpacity(0.5);
    const QColor seen = stage.picture().pixelColor(50, 50);
    const QColor wood = veneer.picture()->pixelColor(50, 50);
    QVERIFY2(std::abs(seen.red() - (wood.red() + 255) / 2) <= 2, qPrintable(seen.name()));
}

QTEST_MAIN(PaintedArtTest)
#include "PaintedArtTest.moc"
