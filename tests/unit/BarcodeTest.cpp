#include "Barcode.h"
#include "CassettePrint.h"
#include "SampleCover.h"
#include "ShelfCard.h"
#include "StationPalette.h"

#include <QPainter>
#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

QImage boxOf(const VHSCover& cover, double width, double scale)
{
    const QSize pixels(int(std::lround(width * scale)), int(std::lround(width * scale * 1.5625)));
    return CassettePrint{CassettePrint::Form::BoxFront, cover, width, pixels}.paint();
}

/** The least rectangle around all that is not transparent. */
QRect inked(const QImage& image)
{
    QRect area;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 0)
                area |= QRect(x, y, 1, 1);
        }
    }
    return area;
}

} // namespace

/** Bar codes by themselves and on their boxes. */
class BarcodeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aBarCodeHasFourteenBarsOfItsWidths_data();
    void aBarCodeHasFourteenBarsOfItsWidths();
    void aBarCodeIsNeverThinnerThanAPointAUnit();
    void nothingIsDrawnBeyondTheBox_data();
    void nothingIsDrawnBeyondTheBox();
};

void BarcodeTest::aBarCodeHasFourteenBarsOfItsWidths_data()
{
    QTest::addColumn<double>("width");
    QTest::newRow("shelf") << 250.0;
    QTest::newRow("search") << 230.0;
    QTest::newRow("detail") << 420.0;
    QTest::newRow("large") << 640.0;
}

void BarcodeTest::aBarCodeHasFourteenBarsOfItsWidths()
{
    QFETCH(double, width);
    constexpr double scale = 8;
    const VHSCover cover = sampleCover();
    const QImage box = boxOf(cover, width, scale);
    const double boxUnit = width * scale / 320;
    int units = 0;
    for (const int bar : cover.barcode)
        units += bar + 1;
    const double unit = std::max(120 * width / 320 / units, 1.0) * scale;
    double x = 190 * boxUnit;
    const int y = int(455 * boxUnit);
    int bars = 0;
    for (qsizetype i = 0; i < cover.barcode.size(); ++i) {
        const double end = x + unit * cover.barcode.at(i);
        if (i % 2 == 0 && end < 316 * boxUnit) {
            ++bars;
            QCOMPARE(box.pixelColor(int(x + 2), y), StationPalette::inkNavy());
            QCOMPARE(box.pixelColor(int(end - 2), y), StationPalette::inkNavy());
            QCOMPARE(box.pixelColor(int(x - 2), y), StationPalette::cream());
            QCOMPARE(box.pixelColor(int(end + 2), y), StationPalette::cream());
        }
        x = end + unit;
    }
    QVERIFY(bars == 14 || (width == 230 && bars >= 13));
}

void BarcodeTest::aBarCodeIsNeverThinnerThanAPointAUnit()
{
    Barcode barcode;
    for (int i = 0; i < 28; ++i)
        barcode.bars.append(i % 2 == 0 ? 3 : 2);
    QCOMPARE(barcode.unitWidth(60), 1.0);
    QCOMPARE(barcode.unitWidth(98), 1.0);
    QCOMPARE(barcode.unitWidth(196), 2.0);

    QImage image(120, 30, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    barcode.paint(painter, {60, 26});
    painter.end();
    // A bar of 3, its gap, a space of 2 and its gap make 7.
    for (int x = 0; x < 120; ++x) {
        const bool isBar = x < 98 && x % 7 < 3;
        QCOMPARE(image.pixelColor(x, 13), isBar ? StationPalette::inkNavy() : QColor(Qt::white));
    }
    QCOMPARE(image.pixelColor(1, 25), StationPalette::inkNavy());
    QCOMPARE(image.pixelColor(1, 26), QColor(Qt::white));
}

void BarcodeTest::nothingIsDrawnBeyondTheBox_data()
{
    QTest::addColumn<VHSCover>("cover");
    QTest::addColumn<double>("width");
    VHSCover longest = sampleCover();
    longest.barcode = QList<int>(28, 4);
    VHSCover wordy = longest;
    wordy.title = wordy.tagline = wordy.genre = wordy.catalogNo = QString(300, u'W');
    VHSCover empty;
    QTest::newRow("long bar code") << longest << 230.0;
    QTest::newRow("long texts") << wordy << 250.0;
    QTest::newRow("tiny") << wordy << 60.0;
    QTest::newRow("empty") << empty << 250.0;
}

void BarcodeTest::nothingIsDrawnBeyondTheBox()
{
    QFETCH(VHSCover, cover);
    QFETCH(double, width);
    const QSize box(int(std::lround(width)), int(std::lround(width * 1.5625)));
    QImage image(box + QSize(200, 80), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.translate(40, 40);
    ShelfCard{cover, width}.paint(painter);
    painter.end();
    QCOMPARE(inked(image), QRect(QPoint(40, 40), box));
}

QTEST_MAIN(BarcodeTest)
#include "BarcodeTest.moc"
