#include "Bench.h"
#include "ProcessFigures.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

using std::chrono::milliseconds;

namespace {

constexpr milliseconds quiet = 1500ms; // time without a change after which the picture counts as final
constexpr milliseconds limit = 20s;
constexpr double megabyte = 1e6;

struct Starts
{
    QList<double> first;  // ms
    QList<double> still;  // ms
    QList<double> shared; // PSS, MB
    QList<double> resident;
};

double ms(ScreenWatch::Clock::duration span)
{
    return std::chrono::duration<double, std::milli>(span).count();
}

/** `start` starts the program and returns an object that keeps it running, and its process id. */
template<typename Start>
void measureOne(SimulatedViewer& viewer, Starts& starts, const Start& start)
{
    viewer.waitForEmptyScreen();
    ScreenWatch& screen = viewer.screen();
    screen.waitForDrawing(0ms);
    const QImage before = screen.grab();
    const auto begin = ScreenWatch::Clock::now();
    const auto [program, pid] = start();
    const auto first = screen.waitForChange(before, limit);
    const auto still = screen.waitUntilStill(quiet, limit);
    if (!first || !still)
        return;
    starts.first.append(ms(*first - begin));
    starts.still.append(ms(std::max(*first, *still) - begin));
    starts.shared.append(double(figures::proportionalSetSize(pid)) / megabyte);
    starts.resident.append(double(figures::residentSetSize(pid)) / megabyte);
}

} // namespace

QList<Figure> measureStart(SimulatedViewer& viewer, const BenchParameters& parameters)
{
    Starts set;
    Starts empty;
    for (int i = 0; i < parameters.starts; ++i) {
        measureOne(viewer, set, [] {
            auto program = std::make_unique<ProgramProcess>(QProcess::nullDevice());
            const qint64 pid = program->process().pid();
            return std::pair(std::move(program), pid);
        });
        measureOne(viewer, empty, [] {
            auto program = launchEmptyWindow();
            const qint64 pid = program->pid();
            return std::pair(std::move(program), pid);
        });
    }
    const QString yardstick = u"empty window"_s;
    return {{u"start to first picture"_s, u"ms"_s, set.first, yardstick, empty.first, 250},
            {u"start to settled picture"_s, u"ms"_s, set.still, yardstick, empty.still, {}},
            {u"memory, idle (PSS)"_s, u"MB"_s, set.shared, yardstick, empty.shared, 60},
            {u"memory, idle (RSS)"_s, u"MB"_s, set.resident, yardstick, empty.resident, {}}};
}

} // namespace quillmere
