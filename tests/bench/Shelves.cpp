#include "Bench.h"
#include "Picture.h"
#include "ProcessFigures.h"
#include "Shop.h"

#include <algorithm>
#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr double slowFrame = 50;    // ms
constexpr double blankCard = 0.05;  // of the strip: a third of one of its six cards
constexpr auto beforeRepeats = 1s;  // after a key went down: its first step, the pause, the first repeats
constexpr auto towardsRest = 500ms; // before the last picture: a scroll that comes to rest moves by less than a pixel

struct Walk
{
    QList<double> keys;    // ms
    QList<double> longest; // ms, one a ride
    QList<double> frames;  // ms
    QList<double> slow;    // % of a ride's frames
    QList<double> blank;   // % of a ride's frames
    QList<double> idle;    // pictures
    double memory = 0;     // PSS, MB
};

/** What is seen of the shelf, wherever it moves to: a strip through the amber letters in each box's uppermost band. */
QRect stripThrough(const QImage& picture)
{
    const QColor amber(255, 203, 45);
    // On the right, as the shelf's title line has a badge in that colour.
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

/** The colours of boxes that are not painted yet: skies, which a painted box does not have where the letters are. */
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

/** Holds a button until the shelf's end, and notes the frames of the ride. */
void ride(LivingRoom& room, const QString& button, const QRect& strip, const QList<QColor>& plates, Walk& shelf)
{
    struct Frame
    {
        ScreenWatch::Clock::time_point at;
        bool isBlank;
    };
    std::vector<Frame> seen;
    const auto down = ScreenWatch::Clock::now();
    room.remote().pushDown(button);
    const auto last = room.screen().waitUntilSettled(1500ms, 120s, strip,
                                                     [&](const QImage& picture, ScreenWatch::Clock::time_point at) {
                                                         seen.push_back({at, blankShare(picture, plates) > blankCard});
                                                     });
    room.remote().letGo(button);
    if (!last)
        throw std::runtime_error("The held key does not come to the shelf's end.");
    QList<double> frames;
    int blank = 0;
    for (size_t i = 1; i < seen.size(); ++i) {
        if (seen[i - 1].at < down + beforeRepeats || seen[i].at > *last - towardsRest)
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

/** So many steps along a shelf of so many tapes and back, none of them against its end. */
QStringList stepsAlong(int tapes, int presses)
{
    QStringList buttons;
    const int stretch = tapes - 1;
    for (int i = 0; i < presses; ++i)
        buttons.append((i / stretch) % 2 == 0 ? u"right"_s : u"left"_s);
    return buttons;
}

Walk walk(LivingRoom& room, SampleHub& hub, int tapes, const Effort& effort)
{
    hub.order(u"/catalogue/one-shelf"_s, {{u"tapes"_s, tapes}});
    room.switchOn(QProcess::nullDevice());
    if (!shop::open(room))
        throw std::runtime_error("The shop does not open.");
    room.pressAndSee(u"down"_s);
    room.screen().waitUntilSettled(1500ms, 10s);
    Walk shelf;
    const QRect strip = stripThrough(room.screen().look());
    const QList<QColor> colours = plates(hub);
    shelf.keys = timePresses(room, stepsAlong(tapes, effort.presses));
    room.remote().pushDown(u"left"_s);
    room.screen().waitUntilSettled(1500ms, 120s);
    room.remote().letGo(u"left"_s);
    for (int i = 0; i < effort.rides; ++i) {
        ride(room, u"right"_s, strip, colours, shelf);
        ride(room, u"left"_s, strip, colours, shelf);
    }
    room.screen().waitUntilSettled(1500ms, 10s);
    shelf.memory = double(figures::proportionalSetSize(room.set().process().pid())) / 1e6;
    shelf.idle.append(room.screen().count(effort.idle).drawings);
    room.switchOff();
    hub.calm();
    return shelf;
}

} // namespace

QList<Figure> measureShelves(LivingRoom& room, SampleHub& hub, const Effort& effort)
{
    const Walk few = walk(room, hub, 20, effort);
    const Walk many = walk(room, hub, 200, effort);
    const QString seconds = QString::number(std::chrono::duration<double>(effort.idle).count());
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
