#include "Bench.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/** Milliseconds from key to changed pixel, of alternate presses of right and left; a press without effect is left out. */
QList<double> timePresses(LivingRoom& room, int presses)
{
    QList<double> times;
    ScreenWatch& screen = room.screen();
    // The first press of either may find no neighbour, so it is not counted.
    for (int i = -2; i < presses; ++i) {
        const QString button = i % 2 == 0 ? u"right"_s : u"left"_s;
        screen.waitUntilSettled(250ms, 2500ms);
        const QImage before = screen.look();
        const auto begin = ScreenWatch::Clock::now();
        room.remote().pushDown(button);
        const auto changed = screen.waitForChange(before, 1500ms);
        room.remote().letGo(button);
        if (changed && i >= 0)
            times.append(std::chrono::duration<double, std::milli>(*changed - begin).count());
    }
    return times;
}

/** The 95th percentile of each of five parts of the presses. */
QList<double> slowest(const QList<double>& times)
{
    constexpr int parts = 5;
    QList<double> result;
    const qsizetype length = times.size() / parts;
    for (int i = 0; i < parts && length > 0; ++i)
        result.append(quantile(times.mid(i * length, length), 0.95));
    return result;
}

} // namespace

QList<Figure> measureKeys(LivingRoom& room, const Effort& effort)
{
    room.switchOn(QProcess::nullDevice());
    room.screen().waitUntilSettled(1500ms, 10s);
    const QList<double> set = timePresses(room, effort.presses);
    room.switchOff();

    const auto window = startEmptyWindow(room);
    const QList<double> empty = timePresses(room, effort.presses);

    const QString yardstick = u"empty window"_s;
    return {{u"key to changed pixel, median"_s, u"ms"_s, set, yardstick, empty, 35},
            {u"key to changed pixel, 95 %"_s, u"ms"_s, slowest(set), yardstick, slowest(empty), 50}};
}
