#include "Bench.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

QStringList rightAndLeft(int presses)
{
    QStringList buttons;
    for (int i = 0; i < presses; ++i)
        buttons.append(i % 2 == 0 ? u"right"_s : u"left"_s);
    return buttons;
}

/** The first press of either may find no neighbour, so it is not counted. */
QList<double> timeNeighbours(LivingRoom& room, int presses)
{
    timePresses(room, rightAndLeft(2));
    return timePresses(room, rightAndLeft(presses));
}

} // namespace

QList<double> timePresses(LivingRoom& room, const QStringList& buttons)
{
    QList<double> times;
    ScreenWatch& screen = room.screen();
    for (const QString& button : buttons) {
        screen.waitUntilSettled(250ms, 2500ms);
        const QImage before = screen.look();
        const auto begin = ScreenWatch::Clock::now();
        room.remote().pushDown(button);
        const auto changed = screen.waitForChange(before, 1500ms);
        room.remote().letGo(button);
        if (changed)
            times.append(std::chrono::duration<double, std::milli>(*changed - begin).count());
    }
    return times;
}

QList<double> slowest(const QList<double>& times)
{
    constexpr int parts = 5;
    QList<double> result;
    const qsizetype length = times.size() / parts;
    for (int i = 0; i < parts && length > 0; ++i)
        result.append(quantile(times.mid(i * length, length), 0.95));
    return result;
}

QList<Figure> measureKeys(LivingRoom& room, const Effort& effort)
{
    room.switchOn(QProcess::nullDevice());
    room.screen().waitUntilSettled(1500ms, 10s);
    const QList<double> set = timeNeighbours(room, effort.presses);
    room.switchOff();

    const auto window = startEmptyWindow(room);
    const QList<double> empty = timeNeighbours(room, effort.presses);

    const QString yardstick = u"empty window"_s;
    return {{u"key to changed pixel, median"_s, u"ms"_s, set, yardstick, empty, 35},
            {u"key to changed pixel, 95 %"_s, u"ms"_s, slowest(set), yardstick, slowest(empty), 50}};
}
