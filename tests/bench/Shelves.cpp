#include "Bench.h"
#include "Picture.h"
#include "ProcessFigures.h"
#include "Shop.h"

#include <algorithm>
#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

namespace {

constexpr double slowFrame = 50;    // ms
constexpr double blankCard = 0.05;  // share of the strip: a third of one of its six cards
constexpr auto beforeRepeats = 1s;  // after key down: the first step, the auto-repeat delay, and the first repeats
constexpr auto endOfScroll = 500ms; // before the last picture: the end of a scroll moves by less than a pixel per frame

struct ShelfMeasurement
{
    QList<double> keys;    // ms
    QList<double> longest; // ms, one per scroll
    QList<double> frames;  // ms
    QList<double> slow;    // % of a scroll's frames
    QList<double> blank;   // % of a scroll's frames
    QList<double> idle;    // drawings
    double memory = 0;     // PSS, MB
};

/**
 * A horizontal strip through the amber letters in the top band of all boxes, in pixels. It shows how the shelf scrolls.
 */
QRect stripThrough(const QImage& picture)
{
    const QColor amber(255, 203, 45);
    // Only on the right, because the shelf's title line has an amber badge on the left.
    const auto isAmber = [&](int y) { return picture::shareOf(picture, QRectF(900, y, 900, 1), amber, 60) > 0.03; };
    int first = 0; // points
    while (first < 1080 && !isAmber(first))
        ++first;
    int last = first;
    while (last < 1080 && isAmber(last))
        ++last;
    if (first == last)
        throw std::runtime_error("No boxes are on the shelf.");
    return picture::pixels(picture.size(), QRectF(0, (first + last) / 2.0, 1920, 1));
}

/** The colours of boxes that are not painted yet. Painted boxes do not have these colours in the strip. */
QList<QColor> plates(SampleHub& hub)
{
    QList<QColor> colours;
    for (const Shelf& shelf : shop::shelves(hub)) {
        for (const VHSCover& cover : shelf.covers) {
            const QColor sky = QColor::fromHsvF(float(cover.hue / 360), 0.55F, 0.42F);
            if (!colours.contains(sky))
                colours.append(sky);
        }
    }
    return colours;
}

double blankShare(const QImage& strip, const QList<QColor>& plates)
{
    qint64 blank = 0;
    for (int x = 0; x < strip.width(); ++x) {
        const QColor colour = strip.pixelColor(x, 0);
        blank += std::any_of(plates.cbegin(), plates.cend(),
                             [&](const QColor& plate) { return picture::isLike(colour, plate, 6); });
    }
    return double(blank) / strip.width();
}

/** Holds a button until the shelf's end and records the frames in between. */
void scrollToEnd(SimulatedViewer& viewer, const QString& button, const QRect& strip, const QList<QColor>& plates,
                 ShelfMeasurement& shelf)
{
    struct Frame
    {
        ScreenWatch::Clock::time_point at;
        bool isBlank;
    };
    std::vector<Frame> seen;
    const auto down = ScreenWatch::Clock::now();
    viewer.remote().keyDown(button);
    const auto last = viewer.screen().waitUntilStill(1500ms, 120s, strip,
                                                     [&](const QImage& picture, ScreenWatch::Clock::time_point at) {
                                                         seen.push_back({at, blankShare(picture, plates) > blankCard});
                                                     });
    viewer.remote().keyUp(button);
    if (!last)
        throw std::runtime_error("The held key does not reach the shelf's end.");
    QList<double> frames;
    int blank = 0;
    for (size_t i = 1; i < seen.size(); ++i) {
        if (seen[i - 1].at < down + beforeRepeats || seen[i].at > *last - endOfScroll)
            continue;
        frames.append(std::chrono::duration<double, std::milli>(seen[i].at - seen[i - 1].at).count());
        blank += seen[i - 1].isBlank && seen[i].isBlank ? 1 : 0;
    }
    if (frames.isEmpty())
        throw std::runtime_error("The shelf does not move while a key is held.");
    const auto slow = std::count_if(frames.cbegin(), frames.cend(), [](double frame) { return frame > slowFrame; });
    shelf.frames += frames;
    shelf.longest.append(*std::max_element(frames.cbegin(), frames.cend()));
    shelf.slow.append(100 * double(slow) / double(frames.size()));
    shelf.blank.append(100 * double(blank) / double(frames.size()));
}

/** Arrow buttons for `presses` steps along a shelf of `tapes` tapes and back, none of them beyond its ends. */
QStringList stepsAlong(int tapes, int presses)
{
    QStringList buttons;
    const int steps = tapes - 1;
    for (int i = 0; i < presses; ++i)
        buttons.append((i / steps) % 2 == 0 ? u"right"_s : u"left"_s);
    return buttons;
}

ShelfMeasurement measureShelf(SimulatedViewer& viewer, SampleHub& hub, int tapes, const BenchParameters& parameters)
{
    hub.post(u"/catalogue/one-shelf"_s, {{u"tapes"_s, tapes}});
    viewer.switchOn(QProcess::nullDevice());
    if (!shop::open(viewer))
        throw std::runtime_error("The shop does not open.");
    viewer.pressAndWaitForChange(u"down"_s);
    viewer.screen().waitUntilStill(1500ms, 10s);
    ShelfMeasurement shelf;
    const QRect strip = stripThrough(viewer.screen().grab());
    const QList<QColor> colours = plates(hub);
    shelf.keys = timePresses(viewer, stepsAlong(tapes, parameters.presses));
    viewer.remote().keyDown(u"left"_s);
    viewer.screen().waitUntilStill(1500ms, 120s);
    viewer.remote().keyUp(u"left"_s);
    for (int i = 0; i < parameters.scrolls; ++i) {
        scrollToEnd(viewer, u"right"_s, strip, colours, shelf);
        scrollToEnd(viewer, u"left"_s, strip, colours, shelf);
    }
    viewer.screen().waitUntilStill(1500ms, 10s);
    shelf.memory = double(figures::proportionalSetSize(viewer.program().process().pid())) / 1e6;
    shelf.idle.append(viewer.screen().count(parameters.idle).drawings);
    viewer.switchOff();
    hub.reset();
    return shelf;
}

} // namespace

QList<Figure> measureShelves(SimulatedViewer& viewer, SampleHub& hub, const BenchParameters& parameters)
{
    const ShelfMeasurement few = measureShelf(viewer, hub, 20, parameters);
    const ShelfMeasurement many = measureShelf(viewer, hub, 200, parameters);
    const QString seconds = QString::number(std::chrono::duration<double>(parameters.idle).count());
    const QString yardstick = u"a shelf of 20"_s;
    return {
        {u"shelf of 200: key to changed pixel, median"_s, u"ms"_s, many.keys, yardstick, few.keys, 35},
        {u"shelf of 200: key to changed pixel, 95 %"_s, u"ms"_s, slowest(many.keys), yardstick, slowest(few.keys), 50},
        {u"shelf of 200: a frame, key held"_s, u"ms"_s, many.frames, yardstick, few.frames, {}},
        {u"shelf of 200: frames above 50 ms"_s, u"%"_s, many.slow, yardstick, few.slow, 1},
        {u"shelf of 200: the longest frame"_s, u"ms"_s, many.longest, yardstick, few.longest, 100},
        {u"shelf of 200: a blank card for two frames"_s, u"%"_s, many.blank, yardstick, few.blank, 0},
        {u"shelf of 200: pictures drawn in %1 s, idle"_s.arg(seconds), u""_s, many.idle, yardstick, few.idle, 0},
        {u"shelf of 200: memory there and back (PSS)"_s, u"MB"_s, {many.memory}, yardstick, {few.memory}, {}},
        {u"shelf of 200: memory more than of 20"_s, u"MB"_s, {many.memory - few.memory}, {}, {}, 25},
    };
}

} // namespace quillmere
