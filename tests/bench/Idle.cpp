#include "Bench.h"
#include "ProcessFigures.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

struct Spans
{
    QList<double> processor; // percent of a core
    QList<double> drawings;
};

Spans watch(LivingRoom& room, qint64 pid, const Effort& effort)
{
    Spans spans;
    room.screen().waitUntilSettled(1500ms, 10s);
    for (int i = 0; i < effort.spans; ++i) {
        const double spent = figures::processorSeconds(pid);
        const auto begin = ScreenWatch::Clock::now();
        const ScreenWatch::Count count = room.screen().count(effort.idle);
        const std::chrono::duration<double> span = ScreenWatch::Clock::now() - begin;
        spans.processor.append(100 * (figures::processorSeconds(pid) - spent) / span.count());
        spans.drawings.append(count.drawings);
    }
    return spans;
}

} // namespace

QList<Figure> measureIdle(LivingRoom& room, const Effort& effort)
{
    room.switchOn(QProcess::nullDevice());
    const Spans set = watch(room, room.set().process().pid(), effort);
    room.switchOff();

    const auto window = startEmptyWindow(room);
    const Spans empty = watch(room, window->pid(), effort);

    const QString seconds = QString::number(std::chrono::duration<double>(effort.idle).count());
    const QString yardstick = u"empty window"_s;
    return {{u"processor, idle"_s, u"%"_s, set.processor, yardstick, empty.processor, {}},
            {u"pictures drawn in %1 s, idle"_s.arg(seconds), u""_s, set.drawings, yardstick, empty.drawings, 0}};
}
