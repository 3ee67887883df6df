#include "BroadcastFixture.h"
#include "StationPalette.h"
#include "TestMain.h"

#include <cmath>

namespace quillmere {

namespace {

constexpr int reach = 3; // pixels on each side of an edge that are checked for other edges

/** Texts with various fractional widths in points. */
const QStringList texts{u"Harbour Council"_s,
                        u"The Harbour Council: regular meeting of the board of the Tern Hollow Water District"_s,
                        u"The Harbour Council; regular meetings of the board of the Tern Hollow Water District."_s,
                        u"市議會定期會議與港口委員會聯席特別會議 of the board and of the library, at noon, with tea"_s,
                        u"The Joint Committee on Harbours, Ferries, Footbridges, Fog Horns, Lights and Lanterns: "
                        "a budget of some length, a second one, and what the library's roof has cost so far"_s};

NewsStatus newsOf(const QString& title)
{
    return programme(title, u"A note"_s, u"2025-01-01T14:30:30Z"_s, u"Tonight"_s);
}

void sizes()
{
    QTest::addColumn<QSize>("size");
    for (const QSize size : {QSize(1280, 720), QSize(1366, 768), QSize(1920, 1080), QSize(2560, 1080),
                             QSize(2560, 1440), QSize(3840, 2160)})
        QTest::addRow("%d by %d", size.width(), size.height()) << size;
}

int largestDifference(const QImage& one, const QImage& other)
{
    int largest = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x)
            largest = std::max(largest, difference(one.pixel(x, y), other.pixel(x, y)));
    }
    return largest;
}

/** One side of a shape in the picture. */
struct Side
{
    const char* name;
    double edge;    ///< expected position, in pixels
    double beside;  ///< position along the side at which it is checked, in pixels
    double depth;   ///< distance of this side from the opposite one, in pixels
    bool isUpright; ///< true for the left and right sides
    int inwards;    ///< direction to the inside of the shape, +1 or -1
};

/**
 * Describes what is wrong with a side whose outline is `border` pixels wide. Empty if the side is sharp and at its
 * expected position.
 */
QString sideError(const QImage& picture, const Side& side, int border)
{
    const auto at = [&](int position) {
        return side.isUpright ? picture.pixel(position, int(side.beside)) : picture.pixel(int(side.beside), position);
    };
    // Pixels from outside to inside, across the expected edge.
    const int first = side.inwards > 0 ? int(std::floor(side.edge)) - reach : int(std::ceil(side.edge)) + reach - 1;
    const int count = reach + border + std::min(reach, int(side.depth / 2) - border) + 1;
    QList<double> edges;
    QString colors;
    for (int i = 0; i < count; ++i) {
        const int position = first + i * side.inwards;
        colors += QColor(at(position)).name() + u' ';
        const int next = position + side.inwards;
        if (i + 1 < count && difference(at(position), at(next)) > 1)
            edges.append(side.inwards > 0 ? next : next + 1);
    }
    const QString seen = u"%1 side at %2: %3"_s.arg(QLatin1StringView(side.name)).arg(side.edge).arg(colors);
    if (edges.size() != (border > 0 ? 2 : 1))
        return u"blurred "_s + seen;
    if (std::abs(edges.constFirst() - side.edge) > 0.51)
        return u"misplaced "_s + seen;
    if (border > 0 && std::abs(edges.constLast() - edges.constFirst()) != border)
        return u"outline of the "_s + seen;
    return {};
}

/** Describes what is wrong with the sides of a flat shape, checked at the coordinates `beside`, in pixels. */
QString shapeError(const QImage& picture, QRectF area, int border, QPointF beside)
{
    QString errors;
    for (const Side& side : {Side{"left", area.left(), beside.y(), area.width(), true, 1},
                             {"right", area.right(), beside.y(), area.width(), true, -1},
                             {"top", area.top(), beside.x(), area.height(), false, 1},
                             {"bottom", area.bottom(), beside.x(), area.height(), false, -1}})
        errors += sideError(picture, side, border);
    return errors;
}

int outline(double points, double factor)
{
    return std::max(1, int(std::lround(points * factor)));
}

/** The first and last column (row if not `isUpright`) of the continuous run of the colour at `inside`. */
QPair<int, int> extent(const QImage& picture, QPoint inside, bool isUpright)
{
    const QPoint step = isUpright ? QPoint(1, 0) : QPoint(0, 1);
    const QRgb color = picture.pixel(inside);
    QPoint first = inside;
    while (picture.rect().contains(first - step) && picture.pixel(first - step) == color)
        first -= step;
    QPoint last = inside;
    while (picture.rect().contains(last + step) && picture.pixel(last + step) == color)
        last += step;
    return isUpright ? qMakePair(first.x(), last.x()) : qMakePair(first.y(), last.y());
}

int length(QPair<int, int> extent)
{
    return extent.second - extent.first + 1;
}

struct Scene : StandbyFixture
{
    explicit Scene(QSize size) : StandbyFixture(newsOf({}), size)
    {
        // On black, every edge separates two plain colours.
        item("ColorBars")->setVisible(false);
        // The crawl's animation would never let the picture come to rest.
        item("TickerCrawl")->setVisible(false);
    }
};

} // namespace

/** The graphics of the news channel at sizes that are not whole pixels: all edges are sharp and at their positions. */
class NewsEdgesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void standbyCardHasSharpOutline_data() { sizes(); }
    void standbyCardHasSharpOutline()
    {
        QFETCH(const QSize, size);
        Scene scene(size);
        for (const QString& text : texts) {
            for (const bool checking : {false, true}) {
                scene.canvas->setProperty("checking", checking);
                scene.setNews(newsOf(text));
                const QImage picture = scene.picture();
                const QRectF area = TestScreen::area(scene.card());
                QCOMPARE(shapeError(picture, area, outline(2, scene.factor()), area.center()), QString());
            }
        }
    }

    void ruleHasConstantSize_data() { sizes(); }
    void ruleHasConstantSize()
    {
        QFETCH(const QSize, size);
        Scene scene(size);
        for (const QString& text : texts) {
            scene.setNews(newsOf(text));
            const QImage picture = scene.currentPicture();
            const QRectF area = TestScreen::area(scene.rule());
            const QPoint inside = area.center().toPoint();
            const auto across = extent(picture, inside, true);
            QCOMPARE(length(across), int(std::lround(420 * scene.factor())));
            QCOMPARE(length(extent(picture, inside, false)), int(std::lround(3 * scene.factor())));
            QVERIFY(std::abs(across.first - area.left()) <= 1);
            for (const int beside : {across.first - 1, across.second + 1})
                QVERIFY(difference(picture.pixel(beside, inside.y()), picture.pixel(inside.x(), int(area.top()) - 2)) <=
                        1);
        }
    }

    void statusDotIsRound_data() { sizes(); }
    void statusDotIsRound()
    {
        QFETCH(const QSize, size);
        Scene scene(size);
        for (const QString& text : texts) {
            scene.setNews(newsOf(text));
            const QImage picture = scene.picture();
            const QRectF area = TestScreen::area(scene.statusDot());
            const QRgb backgroundColor = picture.pixel(area.topLeft().toPoint() - QPoint(4, 4));
            QRect dot;
            for (int y = int(area.top()) - 2; y <= int(area.bottom()) + 2; ++y) {
                for (int x = int(area.left()) - 2; x <= int(area.right()) + 2; ++x) {
                    if (difference(picture.pixel(x, y), backgroundColor) > 1)
                        dot |= QRect(x, y, 1, 1);
                }
            }
            QCOMPARE(dot.width(), dot.height());
            QVERIFY2(std::abs(dot.width() - 14 * scene.factor()) < 1, qPrintable(QString::number(dot.width())));
            const QImage seen = picture.copy(dot);
            // Mirrored or rotated it looks the same; a shift by part of a pixel would show.
            for (const QImage& turned :
                 {seen.mirrored(true, false), seen.mirrored(false, true), seen.transformed(QTransform().rotate(90))})
                QVERIFY(largestDifference(seen, turned) <= 4);
        }
    }

    void lowerThirdHasSharpEdges_data() { sizes(); }
    void lowerThirdHasSharpEdges()
    {
        QFETCH(const QSize, size);
        LowerThirdFixture scene(newsOf({}), size);
        for (const QString& text : texts) {
            scene.setNews(newsOf(text));
            scene.setStation(text.left(30));
            const QImage picture = scene.currentPicture();
            const auto shapes = TestScreen::all(scene.third(), "PixelRectangle");
            QCOMPARE(shapes.size(), 3);
            for (const QQuickItem* shape : shapes) {
                const QRectF area = TestScreen::area(shape);
                // At a point that its texts do not cover.
                const double padding = 4 * scene.factor();
                QCOMPARE(shapeError(picture, area, 0, area.topLeft() + QPointF(padding, padding)), QString());
            }
        }
    }

    void badgeAndStationLabelAreAligned_data() { sizes(); }
    void badgeAndStationLabelAreAligned()
    {
        QFETCH(const QSize, size);
        LowerThirdFixture scene(newsOf({}), size);
        for (const QString& text : texts) {
            scene.setStation(text.left(30));
            const QImage picture = scene.currentPicture();
            QCOMPARE(TestScreen::all(scene.third(), "PixelRectangle").size(), 3);
            const QRectF badge = TestScreen::area(scene.part(u"badge"_s));
            const QPointF padding = QPointF(4, 4) * scene.factor();
            const QPoint inBadge = (badge.topLeft() + padding).toPoint();
            const QPoint inStation = (TestScreen::area(scene.part(u"stationPlate"_s)).topLeft() + padding).toPoint();
            QCOMPARE(extent(picture, inBadge, false), extent(picture, inStation, false));
            const QPoint between(int(badge.right() + 8 * scene.factor()), inBadge.y());
            QVERIFY(std::abs(length(extent(picture, between, true)) - 16 * scene.factor()) < 1);
        }
    }

    void tunerStripHasSharpEdges_data() { sizes(); }
    void tunerStripHasSharpEdges()
    {
        QFETCH(const QSize, size);
        NewsStatus news;
        for (int i = 0; i < 3; ++i)
            news.channels.insert(QString::number(6 + i), {texts.at(i), u"/live/%1"_s.arg(i)});
        TunerStripFixture scene(news, size);
        const QImage picture = scene.picture();
        const double bottom = scene.strip()->height() * scene.factor();
        for (const int x : {3, picture.width() - 3})
            QCOMPARE(sideError(picture, {"bottom", bottom, double(x), bottom, false, -1}, 0), QString());
        const auto buttons = scene.buttons();
        QVERIFY(buttons.size() >= 3);
        for (QQuickItem* button : buttons) {
            // On the focused button, the bright plate covers the outlined one.
            const QRectF area = TestScreen::area(TestScreen::first(button, "CardPlate"));
            if (area.right() > picture.width())
                continue;
            const QPointF beside(area.left() + 24 * scene.factor(), area.center().y());
            const int border = button->hasActiveFocus() ? 0 : outline(2, scene.factor());
            QCOMPARE(shapeError(picture, area, border, beside), QString());
        }
    }

    void colourBarsHaveSharpEdges_data() { sizes(); }
    void colourBarsHaveSharpEdges()
    {
        QFETCH(const QSize, size);
        BroadcastFixture scene(
            u"ColorBars { x: 100.3; y: 50.7; width: 1033.4; height: 777.7; bars: StationPalette.colorBars }"_s, size);
        const QImage picture = scene.picture();
        const QRectF area = TestScreen::area(scene.item("ColorBars"));
        QCOMPARE(shapeError(picture, area, 0, area.topLeft() + QPointF(20, 20)), QString());
        QSet<QRgb> colors{qRgb(0, 0, 0)};
        for (const QColor& color : StationPalette::colorBars())
            colors.insert(color.rgb());
        for (const QColor& color :
             {QColor(14, 26, 50), QColor(240, 240, 240), QColor(42, 14, 50), QColor(16, 16, 16), QColor(27, 27, 27)})
            colors.insert(color.rgb());
        QSet<QRgb> seen;
        for (int y = 0; y < picture.height(); ++y) {
            const auto* const line = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
            seen.unite(QSet<QRgb>(line, line + picture.width()));
        }
        QCOMPARE(seen, colors);
    }

    void countdownTickMovesNoOtherText_data() { sizes(); }
    void countdownTickMovesNoOtherText()
    {
        QFETCH(const QSize, size);
        Scene scene(size);
        for (const QString& text : texts) {
            scene.setNews(newsOf(text));
            const QImage before = scene.currentPicture();
            const QRectF area = TestScreen::area(scene.item("Countdown"));
            scene.clock.advance(1s);
            const QImage after = scene.currentPicture();
            QVERIFY(before != after);
            // The hours, the minutes and the label do not move.
            const QRect hours = QRectF(area.topLeft(), QSizeF(area.width() / 2, area.height())).toRect();
            QCOMPARE(after.copy(hours), before.copy(hours));
        }
    }
};

QUILLMERE_TEST(NewsEdgesTest, QGuiApplication)

} // namespace quillmere

#include "NewsEdgesTest.moc"
