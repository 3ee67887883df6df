// Measures the real program from outside, beside its yardsticks, on the display that DISPLAY names; prints one table.
//   tv-bench [--quick] [BENCHMARK-PROGRAM...]

#include "Bench.h"

#include <QCoreApplication>
#include <QJsonArray>

#include <cstdio>
#include <exception>

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
    return tapes.first().toObject().value(u"stream_url"_s).toString();
}

QList<Figure> measureAll(const QStringList& libraries, const Effort& effort)
{
    SampleHub hub;
    LivingRoom room;
    QList<Figure> figures;
    note("starts and memory");
    figures += measureStart(room, effort);
    note("keys");
    figures += measureKeys(room, effort);
    note("the shelves");
    figures += measureShelves(room, hub, effort);
    note("idleness");
    figures += measureIdle(room, effort);
    note("a playing tape");
    figures += measurePlaying(room, firstTapesStream(hub), effort);
    note("the libraries");
    return figures + measureLibraries(libraries, effort);
}

} // namespace

int main(int count, char** arguments)
{
    QCoreApplication application(count, arguments);
    QStringList words = application.arguments().mid(1);
    const bool isQuick = words.removeAll(u"--quick"_s) > 0;
    try {
        printTable(measureAll(words, isQuick ? quick : whole));
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "tv-bench: %s\n", failure.what());
        return 1;
    }
}
