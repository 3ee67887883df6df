#include "Bench.h"
#include "ProcessFigures.h"

#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr QRectF tunerStrip(500, 0, 350, 92);
constexpr QRectF card(210, 120, 1500, 840);
constexpr QRectF lowerThird(70, 800, 1300, 280);
constexpr double greatestShare = 25; // percent of a core, for the standby card

struct Spans
{
    QList<double> processor; // percent of a core
    QList<double> drawings;  // a second
};

Spans watch(LivingRoom& room, const Effort& effort)
{
    Spans spans;
    const qint64 pid = room.set().process().pid();
    for (int i = 0; i < effort.spans; ++i) {
        const double spent = figures::processorSeconds(pid);
        const auto begin = ScreenWatch::Clock::now();
        const ScreenWatch::Count count = room.screen().count(effort.playing);
        const std::chrono::duration<double> span = ScreenWatch::Clock::now() - begin;
        spans.processor.append(100 * (figures::processorSeconds(pid) - spent) / span.count());
        spans.drawings.append(count.drawings / span.count());
    }
    return spans;
}

void waitFor(LivingRoom& room, const QRectF& area, const QString& text)
{
    if (!room.waitForText(area, text, 30s))
        throw std::runtime_error(("The news channel does not show \""_L1 + text + "\"."_L1).toStdString());
}

} // namespace

QList<Figure> measureNews(LivingRoom& room, SampleHub& hub, const Effort& effort)
{
    hub.darken();
    room.switchOn(QProcess::nullDevice());
    waitFor(room, area::rightDoor, u"every one plays right here"_s);
    room.press(u"select"_s);
    // The hub's first station is always lit; the tower's own stands to its right.
    waitFor(room, tunerStrip, u"5 O'Clock News"_s);
    room.press(u"right"_s);
    room.press(u"select"_s);
    waitFor(room, card, u"WATCHING THE TOWER"_s);
    const Spans dark = watch(room, effort);
    hub.light();
    waitFor(room, lowerThird, u"LIVE"_s);
    const Spans lit = watch(room, effort);
    room.switchOff();
    hub.calm();
    return {{u"processor, the standby card with its ticker"_s, u"%"_s, dark.processor, {}, {}, greatestShare},
            {u"drawings a second, the standby card"_s, {}, dark.drawings, {}, {}, {}},
            {u"processor, the lit channel"_s, u"%"_s, lit.processor, {}, {}, {}}};
}
