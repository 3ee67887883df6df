#include "Bench.h"
#include "MpvProgram.h"
#include "Picture.h"
#include "ProcessFigures.h"
#include "Shop.h"

#include <stdexcept>
#include <vector>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// Points: through the recordings' running ball, and within one of the parts of 34 rows in which Xlib sends a picture of
// this width that is not in shared memory: so each picture counts once.
constexpr QRectF movingBand(0, 856, 1920, 20);

// Points: nothing but the recording's ground, also while the screen that plays it slides up.
constexpr QPointF ground(1880, 540);
constexpr int groundTolerance = 12; // of 255

constexpr double greatestRatio = 1.15;

struct Watched
{
    QList<double> processor; // percent of a core
    QList<double> pictures;  // a second
    QList<double> first;     // ms to the first picture since the program began
    QList<double> later;     // ms to that of another playing
};

/** Milliseconds from `start` to the first picture of the recording, on the screen. */
template<typename Start>
double timeFirstPicture(LivingRoom& room, const Start& start)
{
    struct Glance
    {
        ScreenWatch::Clock::time_point at;
        QColor colour;
    };
    std::vector<Glance> glances;
    room.screen().waitForDrawing(0ms);
    const auto begin = ScreenWatch::Clock::now();
    start();
    QColor shown;
    while (!shown.isValid() && ScreenWatch::Clock::now() < begin + 20s) {
        if (!room.screen().waitForDrawing(20s))
            break;
        const auto drawn = ScreenWatch::Clock::now();
        const QImage picture = room.screen().look();
        glances.push_back({drawn, picture::colourAt(picture, ground)});
        // In its first second the recording counts none, as a black screen does.
        if (picture::recordedSeconds(picture).value_or(0) == 1)
            shown = glances.back().colour;
    }
    if (!shown.isValid())
        throw std::runtime_error("No moving picture came.");
    auto first = glances.end();
    while (first != glances.begin() && picture::isLike(std::prev(first)->colour, shown, groundTolerance))
        --first;
    return std::chrono::duration<double, std::milli>(first->at - begin).count();
}

void watch(LivingRoom& room, qint64 pid, const Effort& effort, Watched& watched)
{
    const QRect band = picture::pixels(room.screen().size(), movingBand);
    const double spent = figures::processorSeconds(pid);
    const auto begin = ScreenWatch::Clock::now();
    const ScreenWatch::Count count = room.screen().count(effort.playing, band);
    const std::chrono::duration<double> span = ScreenWatch::Clock::now() - begin;
    watched.processor.append(100 * (figures::processorSeconds(pid) - spent) / span.count());
    watched.pictures.append(count.pictures / span.count());
}

void waitForPlayButton(LivingRoom& room)
{
    if (!room.waitForText(shop::firstButton, u"Push it in"_s))
        throw std::runtime_error("The tape's screen does not come.");
    room.screen().waitUntilSettled(300ms, 5s);
}

/** The first tape of the hub's list is the first of the shop's first shelf. */
void watchSet(LivingRoom& room, const Effort& effort, Watched& set)
{
    room.switchOn(QProcess::nullDevice());
    if (!shop::open(room))
        throw std::runtime_error("The shop does not open.");
    room.press(u"down"_s);
    room.press(u"select"_s);
    waitForPlayButton(room);
    const auto press = [&room] { room.press(u"select"_s); };
    set.first.append(timeFirstPicture(room, press));
    watch(room, room.set().process().pid(), effort, set);
    room.press(u"back"_s);
    waitForPlayButton(room);
    set.later.append(timeFirstPicture(room, press));
    room.switchOff();
}

void watchIdleMpv(LivingRoom& room, const QString& stream, const Effort& effort, Watched& mpv)
{
    room.waitForEmptyScreen();
    const auto program = MpvProgram::idle(room);
    const auto load = [&] { program->load(stream); };
    mpv.first.append(timeFirstPicture(room, load));
    watch(room, program->pid(), effort, mpv);
    program->stop();
    const auto isBlack = [](const QImage& picture) {
        return picture::isLike(picture::colourAt(picture, ground), Qt::black, groundTolerance);
    };
    if (!room.screen().waitUntil(isBlack, 10s))
        throw std::runtime_error("The mpv program does not stop.");
    room.screen().waitUntilSettled(300ms, 5s);
    mpv.later.append(timeFirstPicture(room, load));
}

double timeStartedMpv(LivingRoom& room, const QString& stream)
{
    room.waitForEmptyScreen();
    std::unique_ptr<MpvProgram> program;
    return timeFirstPicture(room, [&] { program = MpvProgram::playing(stream); });
}

/** The row, and one of how many times the yardstick's value it is in each turn. */
QList<Figure> besides(const QString& name, const QString& unit, const QList<double>& set, const QString& yardstick,
                      const QList<double>& mpv)
{
    QList<Figure> rows{{name, unit, set, yardstick, mpv, {}}};
    QList<double> ratios;
    for (qsizetype i = 0; i < mpv.size(); ++i)
        ratios.append(set[i] / mpv[i]);
    if (!ratios.isEmpty())
        rows.append({name + u": times that"_s, {}, ratios, yardstick, {}, greatestRatio});
    return rows;
}

} // namespace

QList<Figure> measurePlaying(LivingRoom& room, const QString& stream, const Effort& effort)
{
    Watched set;
    Watched mpv;
    QList<double> started;
    // In turns, as the machine's pace changes.
    for (int i = 0; i < effort.spans; ++i) {
        watchSet(room, effort, set);
        if (!MpvProgram::isThere())
            continue;
        watchIdleMpv(room, stream, effort, mpv);
        started.append(timeStartedMpv(room, stream));
    }
    const QString idle = u"the idle mpv program, told to play"_s;
    return besides(u"key to first picture, the first tape"_s, u"ms"_s, set.first, idle, mpv.first) +
           besides(u"key to first picture, a later tape"_s, u"ms"_s, set.later, idle, mpv.later) +
           QList<Figure>{{u"key to first picture, the first tape"_s,
                          u"ms"_s,
                          set.first,
                          u"the mpv program, from its start"_s,
                          started,
                          {}}} +
           besides(u"processor, a 720p tape playing"_s, u"%"_s, set.processor, u"the mpv program"_s, mpv.processor) +
           QList<Figure>{
               {u"pictures shown a second, playing"_s, {}, set.pictures, u"the mpv program"_s, mpv.pictures, {}}};
}
