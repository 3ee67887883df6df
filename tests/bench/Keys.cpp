#include "Bench.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

namespace {

QStringList rightAndLeft(int presses)
{
    QStringList buttons;
    for (int i = 0; i < presses; ++i)
        buttons.append(i % 2 == 0 ? u"right"_s : u"left"_s);
    return buttons;
}

/** The first press in each direction may find no neighbour, so it is not measured. */
QList<double> timeRightAndLeft(SimulatedViewer& viewer, int presses)
{
    timePresses(viewer, rightAndLeft(2));
    return timePresses(viewer, rightAndLeft(presses));
}

} // namespace

QList<double> timePresses(SimulatedViewer& viewer, const QStringList& buttons)
{
    QList<double> times;
    ScreenWatch& screen = viewer.screen();
    for (const QString& button : buttons) {
        screen.waitUntilStill(250ms, 2500ms);
        const QImage before = screen.grab();
        const auto begin = ScreenWatch::Clock::now();
        viewer.remote().keyDown(button);
        const auto changed = screen.waitForChange(before, 1500ms);
        viewer.remote().keyUp(button);
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

QList<Figure> measureKeys(SimulatedViewer& viewer, const BenchParameters& parameters)
{
    viewer.switchOn(QProcess::nullDevice());
    viewer.screen().waitUntilStill(1500ms, 10s);
    const QList<double> set = timeRightAndLeft(viewer, parameters.presses);
    viewer.switchOff();

    const auto window = startEmptyWindow(viewer);
    const QList<double> empty = timeRightAndLeft(viewer, parameters.presses);

    const QString yardstick = u"empty window"_s;
    return {{u"key to changed pixel, median"_s, u"ms"_s, set, yardstick, empty, 35},
            {u"key to changed pixel, 95 %"_s, u"ms"_s, slowest(set), yardstick, slowest(empty), 50}};
}

} // namespace quillmere
