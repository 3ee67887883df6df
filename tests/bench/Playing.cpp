#include "Bench.h"
#include "Picture.h"
#include "ProcessFigures.h"
#include "Shop.h"

#include <QStandardPaths>

#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// Points: through the recordings' running ball, and within one of the parts of 34 rows in which Xlib sends a picture of
// this width that is not in shared memory: so each picture counts once.
constexpr QRectF movingBand(0, 856, 1920, 20);

struct Spans
{
    QList<double> processor; // percent of a core
    QList<double> pictures;  // a second
};

bool waitForVideo(LivingRoom& room)
{
    return room.screen().waitUntil(
        [](const QImage& picture) { return picture::recordedSeconds(picture).value_or(0) > 0; }, 20s);
}

Spans watch(LivingRoom& room, qint64 pid, const Effort& effort)
{
    if (!waitForVideo(room))
        throw std::runtime_error("No moving picture came.");
    Spans spans;
    const QRect band = picture::pixels(room.screen().size(), movingBand);
    for (int i = 0; i < effort.spans; ++i) {
        const double spent = figures::processorSeconds(pid);
        const auto begin = ScreenWatch::Clock::now();
        const ScreenWatch::Count count = room.screen().count(effort.playing, band);
        const std::chrono::duration<double> span = ScreenWatch::Clock::now() - begin;
        spans.processor.append(100 * (figures::processorSeconds(pid) - spent) / span.count());
        spans.pictures.append(count.pictures / span.count());
    }
    return spans;
}

/** The first tape of the hub's list is the first of the shop's first shelf. */
void playFirstTape(LivingRoom& room)
{
    room.switchOn(QProcess::nullDevice());
    if (!shop::open(room))
        throw std::runtime_error("The shop does not open.");
    room.press(u"down"_s);
    room.press(u"select"_s);
    if (!room.waitForText(shop::firstButton, u"Push it in"_s))
        throw std::runtime_error("The tape's screen does not come.");
    room.press(u"select"_s);
}

Spans measurePlayer(LivingRoom& room, const QString& file, const Effort& effort)
{
    const QString program = QStandardPaths::findExecutable(u"mpv"_s);
    if (program.isEmpty())
        return {};
    room.waitForEmptyScreen();
    ChildProcess player(program, {u"--no-config"_s, u"--fs"_s, u"--vo=x11"_s, u"--hwdec=no"_s, u"--osc=no"_s,
                                  u"--really-quiet"_s, u"--loop"_s, file});
    return watch(room, player.pid(), effort);
}

} // namespace

QList<Figure> measurePlaying(LivingRoom& room, const QString& firstTape, const Effort& effort)
{
    playFirstTape(room);
    const Spans set = watch(room, room.set().process().pid(), effort);
    room.switchOff();
    const Spans player = measurePlayer(room, SampleHub::file(firstTape), effort);

    const QString yardstick = u"the mpv program"_s;
    return {{u"processor, a 720p tape playing"_s, u"%"_s, set.processor, yardstick, player.processor, {}},
            {u"pictures shown a second, playing"_s, u""_s, set.pictures, yardstick, player.pictures, {}}};
}
