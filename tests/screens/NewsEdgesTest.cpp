#include "BroadcastStage.h"
#include "StationPalette.h"

#include <QTest>

#include <cmath>

using namespace std::chrono_literals;

namespace {

constexpr int reach = 3; // pixels to either side of an edge in which its shape shows no other

const QString standbyCard = u"property bool checking: false; StandbyCard { anchors.fill: parent; news: canvas.news; "
                            "station: canvas.station; checking: canvas.checking; timepiece: canvas.timepiece }"_s;
const QString lowerThird = u"LowerThird { anchors.fill: parent; timepiece: canvas.timepiece; "
                           "stationLabel: canvas.station.label; program: canvas.news.programTitle; "
                           "note: canvas.news.programNote; tagline: ''; ticker: [] }"_s;
const QString tunerStrip = u"FocusScreen { anchors.fill: parent; focus: true; TunerStrip { width: parent.width; "
                           "height: implicitHeight; stations: canvas.stations; current: canvas.station; "
                           "timepiece: canvas.timepiece } }"_s;

/** Texts whose widths are no whole points, each another part of one. */
const QStringList texts{u"Harbour Council"_s,
                        u"The Harbour Council: regular meeting of the board of the Tern Hollow Water District"_s,
                        u"The Harbour Council; regular meetings of the board of the Tern Hollow Water District."_s,
                        u"市議會定期會議與港口委員會聯席特別會議 of the board and of the library, at noon, with tea"_s,
                        u"The Joint Committee on Harbours, Ferries, Footbridges, Fog Horns, Lights and Lanterns: "
                        "a budget of some length, a second one, and what the library's roof has cost so far"_s};

NewsStatus newsOf(const QString& text)
{
    NewsStatus news;
    news.programTitle = text;
    news.programNote = u"A note"_s;
    news.nextBroadcast = u"2025-01-01T14:30:30Z"_s;
    news.nextBroadcastLabel = u"Tonight"_s;
    return news;
}

void sizes()
{
    QTest::addColumn<QSize>("size");
    for (const QSize size : {QSize(1280, 720), QSize(1366, 768), QSize(1920, 1080), QSize(2560, 1080),
                             QSize(2560, 1440), QSize(3840, 2160)})
        QTest::addRow("%d by %d", size.width(), size.height()) << size;
}

int difference(QRgb one, QRgb other)
{
    return std::max({std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
                     std::abs(qBlue(one) - qBlue(other))});
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

/** One side of a shape on the glass. */
struct Side
{
    const char* name;
    double edge;    ///< where it belongs, in pixels
    double beside;  ///< where along the side it is looked at
    double depth;   ///< of the shape, from this side to the opposite one
    bool isUpright; ///< the left or right one
    int inwards;    ///< +1 or -1
};

/** What is wrong with a side whose outline is `border` pixels wide; nothing when it is sharp and where it belongs. */
QString fault(const QImage& picture, const Side& side, int border)
{
    const auto at = [&](int place) {
        return side.isUpright ? picture.pixel(place, int(side.beside)) : picture.pixel(int(side.beside), place);
    };
    // From the pixel next to the edge as it should be, outwards and inwards.
    const int first = side.inwards > 0 ? int(std::floor(side.edge)) - reach : int(std::ceil(side.edge)) + reach - 1;
    const int count = reach + border + std::min(reach, int(side.depth / 2) - border) + 1;
    QList<double> edges;
    QString colors;
    for (int i = 0; i < count; ++i) {
        const int place = first + i * side.inwards;
        colors += QColor(at(place)).name() + u' ';
        const int next = place + side.inwards;
        if (i + 1 < count && difference(at(place), at(next)) > 1)
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

/** A flat shape on the glass, and what is wrong with its sides. */
struct Shape
{
    const QImage& picture;
    QRectF area;    ///< pixels
    int border = 0; ///< pixels
    QPointF beside; ///< where its sides are looked at, in pixels

    QStringList faults() const
    {
        const Side sides[] = {{"left", area.left(), beside.y(), area.width(), true, 1},
                              {"right", area.right(), beside.y(), area.width(), true, -1},
                              {"top", area.top(), beside.x(), area.height(), false, 1},
                              {"bottom", area.bottom(), beside.x(), area.height(), false, -1}};
        QStringList all;
        for (const Side& side : sides) {
            const QString one = fault(picture, side, border);
            if (!one.isEmpty())
                all.append(one);
        }
        return all;
    }
};

int outline(double points, double factor)
{
    return std::max(1, int(std::lround(points * factor)));
}

/** The columns (rows, when not `isUpright`) of the glass that the colour at `inside` runs through. */
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

struct Standby : BroadcastStage
{
    explicit Standby(QSize size) : BroadcastStage(standbyCard, size, newsOf({}))
    {
        // On black every edge is one between two plain colours.
        first("ColorBars")->setVisible(false);
        // Nor does anything keep the picture from coming to rest.
        first("TickerCrawl")->setVisible(false);
    }

    QQuickItem* plate(int number) const { return Stage::all(first("StandbyCard"), "CardPlate").at(number); }
    QQuickItem* rule() const { return Stage::first(first("StandbyCard"), "PixelRectangle"); }
};

} // namespace

#define VERIFY_SHARP(shape)                                                                                            \
    do {                                                                                                               \
        const QStringList faults = (shape).faults();                                                                   \
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join(u'\n')));                                                    \
    } while (false)

/** Each graphic of the news channel where its lengths are no whole pixels: its edges are sharp, and where they belong. */
class NewsEdgesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theStandbyCardIsOutlinedSharply_data() { sizes(); }
    void theStandbyCardIsOutlinedSharply();
    void theRuleKeepsItsSize_data() { sizes(); }
    void theRuleKeepsItsSize();
    void theStatusDotIsRound_data() { sizes(); }
    void theStatusDotIsRound();
    void theLowerThirdIsSharp_data() { sizes(); }
    void theLowerThirdIsSharp();
    void theBadgeAndTheChipStandInOneRow_data() { sizes(); }
    void theBadgeAndTheChipStandInOneRow();
    void theTunerStripIsSharp_data() { sizes(); }
    void theTunerStripIsSharp();
    void theColourBarsAreSharp_data() { sizes(); }
    void theColourBarsAreSharp();
    void aTickOfTheCountdownMovesNothing_data() { sizes(); }
    void aTickOfTheCountdownMovesNothing();
};

void NewsEdgesTest::theStandbyCardIsOutlinedSharply()
{
    QFETCH(const QSize, size);
    Standby scene(size);
    for (const QString& text : texts) {
        for (const bool checking : {false, true}) {
            scene.canvas->setProperty("checking", checking);
            scene.setNews(newsOf(text));
            const QImage picture = scene.stage.picture();
            const QRectF area = Stage::area(scene.plate(0));
            VERIFY_SHARP((Shape{picture, area, outline(2, scene.factor()), area.center()}));
        }
    }
}

void NewsEdgesTest::theRuleKeepsItsSize()
{
    QFETCH(const QSize, size);
    Standby scene(size);
    for (const QString& text : texts) {
        scene.setNews(newsOf(text));
        const QImage picture = scene.picture();
        const QRectF area = Stage::area(scene.rule());
        const QPoint inside = area.center().toPoint();
        const auto across = extent(picture, inside, true);
        QCOMPARE(length(across), int(std::lround(420 * scene.factor())));
        QCOMPARE(length(extent(picture, inside, false)), int(std::lround(3 * scene.factor())));
        QVERIFY(std::abs(across.first - area.left()) <= 1);
        for (const int beside : {across.first - 1, across.second + 1})
            QVERIFY(difference(picture.pixel(beside, inside.y()), picture.pixel(inside.x(), int(area.top()) - 2)) <= 1);
    }
}

void NewsEdgesTest::theStatusDotIsRound()
{
    QFETCH(const QSize, size);
    Standby scene(size);
    for (const QString& text : texts) {
        scene.setNews(newsOf(text));
        const QImage picture = scene.stage.picture();
        const QRectF area = Stage::area(scene.plate(1));
        const QRgb ground = picture.pixel(area.topLeft().toPoint() - QPoint(4, 4));
        QRect dot;
        for (int y = int(area.top()) - 2; y <= int(area.bottom()) + 2; ++y) {
            for (int x = int(area.left()) - 2; x <= int(area.right()) + 2; ++x) {
                if (difference(picture.pixel(x, y), ground) > 1)
                    dot |= QRect(x, y, 1, 1);
            }
        }
        QCOMPARE(dot.width(), dot.height());
        QVERIFY2(std::abs(dot.width() - 14 * scene.factor()) < 1, qPrintable(QString::number(dot.width())));
        const QImage seen = picture.copy(dot);
        // Whichever side it is looked at from; a shift by part of a pixel would show.
        for (const QImage& turned :
             {seen.mirrored(true, false), seen.mirrored(false, true), seen.transformed(QTransform().rotate(90))})
            QVERIFY(largestDifference(seen, turned) <= 4);
    }
}

void NewsEdgesTest::theLowerThirdIsSharp()
{
    QFETCH(const QSize, size);
    BroadcastStage scene(lowerThird, size, newsOf({}));
    QTRY_COMPARE(scene.first("LowerThird")->property("presence").toDouble(), 1.0);
    for (const QString& text : texts) {
        scene.setNews(newsOf(text));
        scene.canvas->setProperty("station", QVariant::fromValue(TunerStation{u"5"_s, text.left(30), {}}));
        const QImage picture = scene.picture();
        const auto shapes = Stage::all(scene.first("LowerThird"), "PixelRectangle");
        QCOMPARE(shapes.size(), 3);
        for (const QQuickItem* shape : shapes) {
            const QRectF area = Stage::area(shape);
            // Beside its texts.
            const double padding = 4 * scene.factor();
            VERIFY_SHARP((Shape{picture, area, 0, area.topLeft() + QPointF(padding, padding)}));
        }
    }
}

void NewsEdgesTest::theBadgeAndTheChipStandInOneRow()
{
    QFETCH(const QSize, size);
    BroadcastStage scene(lowerThird, size, newsOf({}));
    QTRY_COMPARE(scene.first("LowerThird")->property("presence").toDouble(), 1.0);
    for (const QString& text : texts) {
        scene.canvas->setProperty("station", QVariant::fromValue(TunerStation{u"5"_s, text.left(30), {}}));
        const QImage picture = scene.picture();
        const auto shapes = Stage::all(scene.first("LowerThird"), "PixelRectangle");
        QCOMPARE(shapes.size(), 3);
        const auto inside = [&](int shape) {
            const double padding = 4 * scene.factor();
            return (Stage::area(shapes.at(shape)).topLeft() + QPointF(padding, padding)).toPoint();
        };
        QCOMPARE(extent(picture, inside(1), false), extent(picture, inside(2), false));
        const QPoint between(int(Stage::area(shapes.at(1)).right() + 8 * scene.factor()), inside(1).y());
        QVERIFY(std::abs(length(extent(picture, between, true)) - 16 * scene.factor()) < 1);
    }
}

void NewsEdgesTest::theTunerStripIsSharp()
{
    QFETCH(const QSize, size);
    NewsStatus news;
    for (int i = 0; i < 3; ++i)
        news.channels.insert(QString::number(6 + i), {texts.at(i), u"/live/%1"_s.arg(i)});
    BroadcastStage scene(tunerStrip, size, news);
    const QImage picture = scene.stage.picture();
    const double bottom = scene.first("TunerStrip")->height() * scene.factor();
    for (const int x : {3, picture.width() - 3})
        QCOMPARE(fault(picture, {"bottom", bottom, double(x), bottom, false, -1}, 0), QString());
    const auto buttons = Stage::all(scene.first("TunerStrip"), "TunerButton");
    QVERIFY(buttons.size() >= 3);
    for (QQuickItem* button : buttons) {
        const bool isFocused = button->hasActiveFocus();
        // Under the focus the bright plate lies over the outlined one.
        const QRectF area = Stage::area(Stage::first(button, "CardPlate"));
        if (area.right() > picture.width())
            continue;
        const QPointF beside(area.left() + 24 * scene.factor(), area.center().y());
        VERIFY_SHARP((Shape{picture, area, isFocused ? 0 : outline(2, scene.factor()), beside}));
    }
}

void NewsEdgesTest::theColourBarsAreSharp()
{
    QFETCH(const QSize, size);
    BroadcastStage scene(
        u"ColorBars { x: 100.3; y: 50.7; width: 1033.4; height: 777.7; bars: StationPalette.colorBars }"_s, size);
    const QImage picture = scene.stage.picture();
    const QRectF area = Stage::area(scene.first("ColorBars"));
    VERIFY_SHARP((Shape{picture, area, 0, area.topLeft() + QPointF(20, 20)}));
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

void NewsEdgesTest::aTickOfTheCountdownMovesNothing()
{
    QFETCH(const QSize, size);
    Standby scene(size);
    for (const QString& text : texts) {
        scene.setNews(newsOf(text));
        const QImage before = scene.picture();
        const QRectF area = Stage::area(scene.first("Countdown"));
        scene.clock.advance(1s);
        const QImage after = scene.picture();
        QVERIFY(before != after);
        // The hours, the minutes and the label stand as they stood.
        const QRect hours = QRectF(area.topLeft(), QSizeF(area.width() / 2, area.height())).toRect();
        QCOMPARE(after.copy(hours), before.copy(hours));
    }
}

QTEST_MAIN(NewsEdgesTest)
#include "NewsEdgesTest.moc"
