#include "Bench.h"
#include "ProcessFigures.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

namespace {

struct Measurements
{
    QList<double> processor; // per cent of one core
    QList<double> drawings;
};

Measurements watch(SimulatedViewer& viewer, qint64 pid, const BenchParameters& parameters)
{
    Measurements repetitions;
    viewer.screen().waitUntilStill(1500ms, 10s);
    for (int i = 0; i < parameters.repetitions; ++i) {
        const double spent = figures::processorSeconds(pid);
        const auto begin = ScreenWatch::Clock::now();
        const ScreenWatch::Count count = viewer.screen().count(parameters.idle);
        const std::chrono::duration<double> span = ScreenWatch::Clock::now() - begin;
        repetitions.processor.append(100 * (figures::processorSeconds(pid) - spent) / span.count());
        repetitions.drawings.append(count.drawings);
    }
    return repetitions;
}

} // namespace

QList<Figure> measureIdle(SimulatedViewer& viewer, const BenchParameters& parameters)
{
    viewer.switchOn(QProcess::nullDevice());
    const Measurements set = watch(viewer, viewer.program().process().pid(), parameters);
    viewer.switchOff();

    const auto window = startEmptyWindow(viewer);
    const Measurements empty = watch(viewer, window->pid(), parameters);

    const QString seconds = QString::number(std::chrono::duration<double>(parameters.idle).count());
    const QString yardstick = u"empty window"_s;
    return {{u"processor, idle"_s, u"%"_s, set.processor, yardstick, empty.processor, {}},
            {u"pictures drawn in %1 s, idle"_s.arg(seconds), u""_s, set.drawings, yardstick, empty.drawings, 0}};
}

} // namespace quillmere
