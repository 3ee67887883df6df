#include "Barcode.h"
#include "CassetteRenderer.h"
#include "PixelBounds.h"
#include "Rows.h"
#include "SampleCover.h"
#include "ShelfCard.h"
#include "StationPalette.h"
#include "TestMain.h"

#include <QPainter>
#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

CassettePicture boxOf(const VHSCover& cover, double width, double scale)
{
    const QSizeF pixels = QSizeF(1, 1.5625) * (width * scale);
    return CassetteRenderer{CassetteRenderer::Form::BoxFront, cover, width, pixels.toSize()}.paint();
}

/** The sample cover with these bar widths. */
VHSCover withBars(const QList<int>& bars)
{
    VHSCover cover = sampleCover();
    cover.barcode = bars;
    return cover;
}

const QList<int> longest(28, 4);

} // namespace

/** Tests bar codes, alone and on their boxes. */
class BarcodeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void barCodeHasFourteenBarsOfGivenWidths_data()
    {
        QTest::addColumn<VHSCover>("cover");
        QTest::addColumn<double>("width");
        QTest::addColumn<double>("scale");
        for (const double width : {230.0, 250.0, 420.0, 640.0}) {
            for (const double scale : {1.0, 2.0, 8.0, 8 * 1.08}) {
                QTest::addRow("%g at %g", width, scale) << sampleCover() << width << scale;
                QTest::addRow("longest, %g at %g", width, scale) << withBars(longest) << width << scale;
            }
        }
    }

    void barCodeHasFourteenBarsOfGivenWidths()
    {
        QFETCH(const VHSCover, cover);
        QFETCH(double, width);
        QFETCH(double, scale);
        const CassettePicture box = boxOf(cover, width, scale);
        const double boxUnit = width * scale / 320;
        int units = 0;
        for (const int bar : cover.barcode)
            units += bar + 1;
        const double unit = std::max(120 * width / 320 / units, 1.0) * scale;
        const int y = box.box.top() + int(455 * boxUnit);
        // The ink in this row equals the width of the bar, whatever the position of the bar's edges. Bars beside the
        // outline are measured less strictly.
        double x = box.box.left() + std::round(190 * boxUnit);
        const double faceEnd = box.box.left() + (320 - 1.5) * boxUnit;
        const double boxEnd = box.box.left() + (320 + 1.5) * boxUnit;
        const auto ink = [&](double from, double to) {
            double pixels = 0;
            for (int at = int(from); at < int(std::ceil(to)); ++at) {
                const QColor seen = box.image.pixelColor(at, y);
                const bool isOnFace = at < box.box.left() + 320 * boxUnit;
                pixels += isOnFace ? double(247 - seen.red()) / (247 - 11) : double(seen.alphaF());
            }
            return pixels;
        };
        int bars = 0;
        for (qsizetype i = 0; i < cover.barcode.size(); ++i) {
            const double end = x + unit * cover.barcode.at(i);
            const bool isOnOutline = x - unit / 2 < boxEnd && end + unit / 2 > faceEnd;
            if (i % 2 == 0) {
                ++bars;
                QVERIFY(box.image.width() >= end - 0.001);
                if (isOnOutline)
                    QVERIFY(ink(x, end) > end - x - 0.1);
                else
                    QVERIFY(std::abs(ink(x - unit / 2, end + std::min(unit / 2, box.image.width() - end)) - (end - x)) <
                            1.1);
            }
            x = end + unit;
        }
        QCOMPARE(bars, 14);
    }

    void pictureIsOnlyAsWideAsBarCodeNeeds()
    {
        constexpr int outline = 2; // width of the outline outside the box, in pixels
        const auto beyond = [](const CassettePicture& picture) {
            return picture.image.width() - picture.box.right() - 1;
        };
        const CassettePicture plain = boxOf(sampleCover(), 420, 1);
        QCOMPARE(beyond(plain), outline + 1);
        QCOMPARE(plain.box.topLeft(), QPoint(outline, outline));
        // 13 bars and 13 spaces with their gaps, then one more bar: 134 points, starting at 136.5625 points.
        QCOMPARE(beyond(boxOf(withBars(longest), 230, 1)), int(std::ceil(136.5625 + 134 - 230 + 0.5)));
        QCOMPARE(boxOf(withBars(longest), 230, 1).box.size(), boxOf(withBars({}), 230, 1).box.size());
    }

    void barCodeUnitIsAtLeastOnePointWide()
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
        // A bar of 3 units, a gap, a space of 2 units and a gap: the pattern repeats each 7 units.
        for (int x = 0; x < 120; ++x) {
            const bool isBar = x < 98 && x % 7 < 3;
            QCOMPARE(image.pixelColor(x, 13), isBar ? StationPalette::inkNavy() : QColor(Qt::white));
        }
        QCOMPARE(image.pixelColor(1, 25), StationPalette::inkNavy());
        QCOMPARE(image.pixelColor(1, 26), QColor(Qt::white));
    }

    void onlyOutlineAndBarCodeAreDrawnOutsideBox_data()
    {
        VHSCover wordy = withBars(longest);
        wordy.title = wordy.tagline = wordy.genre = wordy.catalogNo = QString(300, u'W');
        rows<VHSCover, double>({"cover", "width"}, {{"long bar code", withBars(longest), 230.0},
                                                    {"long texts", wordy, 250.0},
                                                    {"tiny", wordy, 60.0},
                                                    {"empty", VHSCover(), 250.0}});
    }

    void onlyOutlineAndBarCodeAreDrawnOutsideBox()
    {
        QFETCH(VHSCover, cover);
        QFETCH(double, width);
        const QSize box = (QSizeF(1, 1.5625) * width).toSize();
        QImage image(box + QSize(200, 80), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.translate(40, 40);
        ShelfCard{cover, width}.paint(painter);
        painter.end();
        const double unit = width / 320;
        const double outline = 1.5 * unit;
        const QRectF outlined = QRectF(QPointF(40, 40), QSizeF(box)).adjusted(-outline, -outline, outline, outline);
        const QRectF barcode(40 + 190 * unit, 40 + width, Barcode{cover.barcode}.extent(120 * unit), 1);
        const QRect drawn = outlined.toAlignedRect() | barcode.toAlignedRect();
        const QRect ink = boundsOfPixels(image.rect(), [&](QPoint at) { return qAlpha(image.pixel(at)) > 0; });
        QVERIFY2(drawn.adjusted(-1, -1, 1, 1).contains(ink), "something else is drawn outside the box");
        QVERIFY2(ink.contains(drawn.adjusted(1, 1, -1, -1)), "something is cut off");
    }
};

QUILLMERE_TEST(BarcodeTest, QGuiApplication)

} // namespace quillmere

#include "BarcodeTest.moc"
