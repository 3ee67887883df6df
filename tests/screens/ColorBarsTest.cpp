#include "BroadcastFixture.h"
#include "StationPalette.h"
#include "TestMain.h"

#include <cmath>

namespace quillmere {

/** The full-screen colour bars, compared pixel by pixel. */
class ColorBarsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void threeBandsFillDisplayWithoutGaps_data()
    {
        QTest::addColumn<QSize>("size");
        for (const QSize size : {QSize(1280, 720), QSize(1920, 1080), QSize(3840, 2160), QSize(1366, 768),
                                 QSize(1680, 1050), QSize(1024, 768), QSize(2560, 1080)})
            QTest::addRow("%d by %d", size.width(), size.height()) << size;
    }

    void threeBandsFillDisplayWithoutGaps()
    {
        QFETCH(QSize, size);
        BroadcastFixture scene(u"FullBleed { ColorBars { anchors.fill: parent; bars: StationPalette.colorBars } }"_s,
                               size);
        const QImage picture = scene.picture();
        const QList<QColor>& bars = StationPalette::colorBars();
        const QList<QColor> reversed(bars.crbegin(), bars.crend());
        const QList<QColor> foot{{14, 26, 50}, {240, 240, 240}, {42, 14, 50}, {16, 16, 16}, {27, 27, 27}, {16, 16, 16}};

        const int second = int(std::lround(0.70 * size.height()));
        const int third = int(std::lround(0.79 * size.height()));
        compareBand(picture, 0, second - 2, bars);
        compareBand(picture, second + 1, third - 2, reversed);
        compareBand(picture, third + 1, size.height() - 1, foot);
        // At the boundaries of the bands there are no mixed colours.
        const int x = size.width() / 14;
        for (const int y : {second - 1, second, third - 1, third}) {
            const QColor seen = picture.pixelColor(x, y);
            QVERIFY2(seen == bars.constFirst() || seen == reversed.constFirst() || seen == foot.constFirst(),
                     qPrintable(seen.name()));
        }
    }

private:
    /** Checks that every pixel row of a band consists of its cells, all equally wide, and nothing else. */
    static void compareBand(const QImage& picture, int first, int last, const QList<QColor>& cells)
    {
        const double width = double(picture.width()) / double(cells.size());
        for (int x = 0; x < picture.width(); ++x) {
            // A pixel crossed by an edge may have the colour of either side.
            const QColor seen = picture.pixelColor(x, first);
            const QColor left = cells.at(int(x / width));
            const QColor right = cells.at(std::min(int((x + 1) / width), int(cells.size()) - 1));
            QVERIFY2(seen == left || seen == right, qPrintable(u"%1 at %2, %3"_s.arg(seen.name()).arg(x).arg(first)));
        }
        const auto row = [&picture](int y) { return QByteArrayView(picture.constScanLine(y), picture.width() * 4); };
        for (int y = first + 1; y <= last; ++y)
            QVERIFY2(row(y) == row(first), qPrintable(QString::number(y)));
    }
};

QUILLMERE_TEST(ColorBarsTest, QGuiApplication)

} // namespace quillmere

#include "ColorBarsTest.moc"
