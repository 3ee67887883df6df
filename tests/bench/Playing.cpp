#include "Bench.h"
#include "MpvProgram.h"
#include "Picture.h"
#include "ProcessFigures.h"
#include "Shop.h"

#include <stdexcept>
#include <vector>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

namespace {

// In points. The area crosses the moving ball of the recordings. Without shared memory, Xlib sends a picture of this
// width in parts of 34 rows; the area is inside one of these parts, so each picture is counted once.
constexpr QRectF movingBand(0, 856, 1920, 20);

// In points; shows only the background of the recording, even while the player screen slides in.
constexpr QPointF background(1880, 540);
constexpr int backgroundTolerance = 12; // of 255

constexpr double greatestRatio = 1.15;

struct Watched
{
    QList<double> processor; // per cent of one core
    QList<double> pictures;  // per second
    QList<double> first;     // milliseconds from the start of the program to the first picture
    QList<double> later;     // milliseconds to the first picture when playing again
};

/** Milliseconds from calling `start` to the recording's first picture on the screen. */
template<typename Start>
double timeFirstPicture(SimulatedViewer& viewer, const Start& start)
{
    struct Sample
    {
        ScreenWatch::Clock::time_point at;
        QColor colour;
    };
    std::vector<Sample> samples;
    viewer.screen().waitForDrawing(0ms);
    const auto begin = ScreenWatch::Clock::now();
    start();
    QColor shown;
    while (!shown.isValid() && ScreenWatch::Clock::now() < begin + 20s) {
        if (!viewer.screen().waitForDrawing(20s))
            break;
        const auto drawn = ScreenWatch::Clock::now();
        const QImage picture = viewer.screen().grab();
        samples.push_back({drawn, picture::colourAt(picture, background)});
        // Second 0 of the recording is as black as an empty screen, so wait for second 1.
        if (picture::recordedSeconds(picture).value_or(0) == 1)
            shown = samples.back().colour;
    }
    if (!shown.isValid())
        throw std::runtime_error("No moving picture came.");
    auto first = samples.end();
    while (first != samples.begin() && picture::isLike(std::prev(first)->colour, shown, backgroundTolerance))
        --first;
    return std::chrono::duration<double, std::milli>(first->at - begin).count();
}

void watch(SimulatedViewer& viewer, qint64 pid, const BenchParameters& parameters, Watched& watched)
{
    const QRect band = picture::pixels(viewer.screen().size(), movingBand);
    const double spent = figures::processorSeconds(pid);
    const auto begin = ScreenWatch::Clock::now();
    const ScreenWatch::Count count = viewer.screen().count(parameters.playing, band);
    const std::chrono::duration<double> span = ScreenWatch::Clock::now() - begin;
    watched.processor.append(100 * (figures::processorSeconds(pid) - spent) / span.count());
    watched.pictures.append(count.pictures / span.count());
}

void waitForPlayButton(SimulatedViewer& viewer)
{
    if (!viewer.waitForText(shop::firstButton, u"Push it in"_s))
        throw std::runtime_error("The tape's screen does not come.");
    viewer.screen().waitUntilStill(300ms, 5s);
}

/** Measures the program with the first tape of the shop's first shelf, which is the first tape in the hub's list. */
void watchSet(SimulatedViewer& viewer, const BenchParameters& parameters, Watched& set)
{
    viewer.switchOn(QProcess::nullDevice());
    if (!shop::open(viewer))
        throw std::runtime_error("The shop does not open.");
    viewer.press(u"down"_s);
    viewer.press(u"select"_s);
    waitForPlayButton(viewer);
    const auto press = [&viewer] { viewer.press(u"select"_s); };
    set.first.append(timeFirstPicture(viewer, press));
    watch(viewer, viewer.program().process().pid(), parameters, set);
    viewer.press(u"back"_s);
    waitForPlayButton(viewer);
    set.later.append(timeFirstPicture(viewer, press));
    viewer.switchOff();
}

void watchIdleMpv(SimulatedViewer& viewer, const QString& stream, const BenchParameters& parameters, Watched& mpv)
{
    viewer.waitForEmptyScreen();
    const auto program = MpvProgram::idle(viewer);
    const auto load = [&] { program->load(stream); };
    mpv.first.append(timeFirstPicture(viewer, load));
    watch(viewer, program->pid(), parameters, mpv);
    program->stop();
    const auto isBlack = [](const QImage& picture) {
        return picture::isLike(picture::colourAt(picture, background), Qt::black, backgroundTolerance);
    };
    if (!viewer.screen().waitUntil(isBlack, 10s))
        throw std::runtime_error("The mpv program does not stop.");
    viewer.screen().waitUntilStill(300ms, 5s);
    mpv.later.append(timeFirstPicture(viewer, load));
}

double timeStartedMpv(SimulatedViewer& viewer, const QString& stream)
{
    viewer.waitForEmptyScreen();
    std::unique_ptr<MpvProgram> program;
    return timeFirstPicture(viewer, [&] { program = MpvProgram::playing(stream); });
}

/** Returns the row, and a second row with the ratio to the yardstick in each repetition. */
QList<Figure> withRatio(const QString& name, const QString& unit, const QList<double>& set, const QString& yardstick,
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

QList<Figure> measurePlaying(SimulatedViewer& viewer, const QString& stream, const BenchParameters& parameters)
{
    Watched set;
    Watched mpv;
    QList<double> started;
    // In alternation, because the machine's speed varies over time.
    for (int i = 0; i < parameters.repetitions; ++i) {
        watchSet(viewer, parameters, set);
        if (!MpvProgram::isInstalled())
            continue;
        watchIdleMpv(viewer, stream, parameters, mpv);
        started.append(timeStartedMpv(viewer, stream));
    }
    const QString idle = u"the idle mpv program, told to play"_s;
    return withRatio(u"key to first picture, the first tape"_s, u"ms"_s, set.first, idle, mpv.first) +
           withRatio(u"key to first picture, a later tape"_s, u"ms"_s, set.later, idle, mpv.later) +
           QList<Figure>{{u"key to first picture, the first tape"_s,
                          u"ms"_s,
                          set.first,
                          u"the mpv program, from its start"_s,
                          started,
                          {}}} +
           withRatio(u"processor, a 720p tape playing"_s, u"%"_s, set.processor, u"the mpv program"_s, mpv.processor) +
           QList<Figure>{
               {u"pictures shown a second, playing"_s, {}, set.pictures, u"the mpv program"_s, mpv.pictures, {}}};
}

} // namespace quillmere
