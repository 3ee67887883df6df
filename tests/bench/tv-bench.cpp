// Measures the real program from outside, beside its yardsticks, on the display that DISPLAY names; prints one table.
//   tv-bench [--quick] [PART...] [BENCHMARK-PROGRAM...]
// A program is named by a path, a part (see allParts) is not.

#include "Bench.h"

#include <QCoreApplication>
#include <QJsonArray>

#include <cstdio>
#include <exception>
#include <functional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr Effort whole{.starts = 7, .presses = 60, .rides = 3, .spans = 5, .idle = 10s, .playing = 5s};
constexpr Effort quick{.starts = 5, .presses = 20, .rides = 1, .spans = 5, .idle = 2s, .playing = 2s};

void note(const char* what)
{
    std::fprintf(stderr, "measuring: %s\n", what);
}

QString firstTapesStream(SampleHub& hub)
{
    const QJsonArray tapes = hub.fetch(u"/api/tv/tapes?page=1&per_page=1"_s).value(u"items"_s).toArray();
    return SampleHub::address(tapes.first().toObject().value(u"stream_url"_s).toString());
}

struct Part
{
    const char* name;
    const char* note;
    std::function<QList<Figure>(LivingRoom& room, SampleHub& hub, const Effort& effort)> measure;
};

QList<Part> allParts(const QStringList& libraries)
{
    return {
        {"start", "starts and memory",
         [](LivingRoom& room, SampleHub&, const Effort& effort) { return measureStart(room, effort); }},
        {"keys", "keys", [](LivingRoom& room, SampleHub&, const Effort& effort) { return measureKeys(room, effort); }},
        {"shelves", "the shelves", &measureShelves},
        {"idle", "idleness",
         [](LivingRoom& room, SampleHub&, const Effort& effort) { return measureIdle(room, effort); }},
        {"playing", "a playing tape",
         [](LivingRoom& room, SampleHub& hub, const Effort& effort) {
             return measurePlaying(room, firstTapesStream(hub), effort);
         }},
        {"news", "the news channel", &measureNews},
        {"libraries", "the libraries",
         [libraries](LivingRoom&, SampleHub&, const Effort& effort) { return measureLibraries(libraries, effort); }},
    };
}

/** The parts that `named` names; all when it names none. */
QList<Figure> measure(const QList<Part>& parts, const QStringList& named, const Effort& effort)
{
    SampleHub hub;
    LivingRoom room;
    QList<Figure> figures;
    for (const Part& part : parts) {
        if (!named.isEmpty() && !named.contains(QLatin1StringView(part.name)))
            continue;
        note(part.note);
        figures += part.measure(room, hub, effort);
    }
    return figures;
}

} // namespace

int main(int count, char** arguments)
{
    QCoreApplication application(count, arguments);
    QStringList words = application.arguments().mid(1);
    const bool isQuick = words.removeAll(u"--quick"_s) > 0;
    const QStringList programs = words.filter(u"/"_s);
    words.removeIf([](const QString& word) { return word.contains(u'/'); });
    try {
        printTable(measure(allParts(programs), words, isQuick ? quick : whole));
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "tv-bench: %s\n", failure.what());
        return 1;
    }
}
