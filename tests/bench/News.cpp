#include "Bench.h"
#include "ProcessFigures.h"

#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

namespace {

constexpr QRectF tunerStrip(500, 0, 350, 92);
constexpr QRectF card(210, 120, 1500, 840);
constexpr QRectF lowerThird(70, 800, 1300, 280);
constexpr double greatestShare = 25; // per cent of one core, for the standby card

struct Measurements
{
    QList<double> processor; // per cent of one core
    QList<double> drawings;  // per second
};

Measurements watch(SimulatedViewer& viewer, const BenchParameters& parameters)
{
    Measurements repetitions;
    const qint64 pid = viewer.program().process().pid();
    for (int i = 0; i < parameters.repetitions; ++i) {
        const double spent = figures::processorSeconds(pid);
        const auto begin = ScreenWatch::Clock::now();
        const ScreenWatch::Count count = viewer.screen().count(parameters.playing);
        const std::chrono::duration<double> span = ScreenWatch::Clock::now() - begin;
        repetitions.processor.append(100 * (figures::processorSeconds(pid) - spent) / span.count());
        repetitions.drawings.append(count.drawings / span.count());
    }
    return repetitions;
}

void waitFor(SimulatedViewer& viewer, const QRectF& area, const QString& text)
{
    if (!viewer.waitForText(area, text, 30s))
        throw std::runtime_error(("The news channel does not show \""_L1 + text + "\"."_L1).toStdString());
}

} // namespace

QList<Figure> measureNews(SimulatedViewer& viewer, SampleHub& hub, const BenchParameters& parameters)
{
    hub.stopBroadcast();
    viewer.switchOn(QProcess::nullDevice());
    waitFor(viewer, area::rightDoor, u"every one plays right here"_s);
    viewer.press(u"select"_s);
    // The hub's first station is always on air; the built-in station is to its right.
    waitFor(viewer, tunerStrip, u"5 O'Clock News"_s);
    viewer.press(u"right"_s);
    viewer.press(u"select"_s);
    waitFor(viewer, card, u"WATCHING THE TOWER"_s);
    const Measurements dark = watch(viewer, parameters);
    hub.startBroadcast();
    waitFor(viewer, lowerThird, u"LIVE"_s);
    const Measurements lit = watch(viewer, parameters);
    viewer.switchOff();
    hub.reset();
    return {{u"processor, the standby card with its ticker"_s, u"%"_s, dark.processor, {}, {}, greatestShare},
            {u"drawings a second, the standby card"_s, {}, dark.drawings, {}, {}, {}},
            {u"processor, the lit channel"_s, u"%"_s, lit.processor, {}, {}, {}}};
}

} // namespace quillmere
