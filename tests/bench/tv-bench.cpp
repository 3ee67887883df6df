// Measures the real program from outside, and yardsticks to compare it with, on the display that DISPLAY names. Prints
// one table.
//   tv-bench [--quick] [PART...] [BENCHMARK-PROGRAM...]
// An argument with a slash is the path of a benchmark program; other arguments are names of parts (see allParts).

#include "Bench.h"

#include <QCoreApplication>
#include <QJsonArray>

#include <cstdio>
#include <exception>
#include <functional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quillmere {

namespace {

constexpr BenchParameters full{.starts = 7, .presses = 60, .scrolls = 3, .repetitions = 5, .idle = 10s, .playing = 5s};
constexpr BenchParameters quick{.starts = 5, .presses = 20, .scrolls = 1, .repetitions = 5, .idle = 2s, .playing = 2s};

void note(const char* what)
{
    std::fprintf(stderr, "measuring: %s\n", what);
}

QString firstTapesStream(SampleHub& hub)
{
    const QJsonArray tapes = hub.fetch(u"/api/tv/tapes?page=1&per_page=1"_s).value(u"items"_s).toArray();
    return SampleHub::urlOf(tapes.first().toObject().value(u"stream_url"_s).toString());
}

struct Part
{
    const char* name;
    const char* note;
    std::function<QList<Figure>(SimulatedViewer& viewer, SampleHub& hub, const BenchParameters& parameters)> measure;
};

QList<Part> allParts(const QStringList& libraries)
{
    return {
        {"start", "starts and memory",
         [](SimulatedViewer& viewer, SampleHub&, const BenchParameters& parameters) {
             return measureStart(viewer, parameters);
         }},
        {"keys", "keys",
         [](SimulatedViewer& viewer, SampleHub&, const BenchParameters& parameters) {
             return measureKeys(viewer, parameters);
         }},
        {"shelves", "the shelves", &measureShelves},
        {"idle", "idleness",
         [](SimulatedViewer& viewer, SampleHub&, const BenchParameters& parameters) {
             return measureIdle(viewer, parameters);
         }},
        {"playing", "a playing tape",
         [](SimulatedViewer& viewer, SampleHub& hub, const BenchParameters& parameters) {
             return measurePlaying(viewer, firstTapesStream(hub), parameters);
         }},
        {"news", "the news channel", &measureNews},
        {"libraries", "the libraries",
         [libraries](SimulatedViewer&, SampleHub&, const BenchParameters& parameters) {
             return measureLibraries(libraries, parameters);
         }},
    };
}

/** Runs the parts listed in `named`; all parts if it is empty. */
QList<Figure> measure(const QList<Part>& parts, const QStringList& named, const BenchParameters& parameters)
{
    SampleHub hub;
    SimulatedViewer viewer;
    QList<Figure> figures;
    for (const Part& part : parts) {
        if (!named.isEmpty() && !named.contains(QLatin1StringView(part.name)))
            continue;
        note(part.note);
        figures += part.measure(viewer, hub, parameters);
    }
    return figures;
}

} // namespace

} // namespace quillmere

int main(int count, char** arguments)
{
    using namespace quillmere;
    QCoreApplication application(count, arguments);
    QStringList words = application.arguments().mid(1);
    const bool isQuick = words.removeAll(u"--quick"_s) > 0;
    const QStringList programs = words.filter(u"/"_s);
    words.removeIf([](const QString& word) { return word.contains(u'/'); });
    try {
        printTable(measure(allParts(programs), words, isQuick ? quick : full));
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "tv-bench: %s\n", failure.what());
        return 1;
    }
}
