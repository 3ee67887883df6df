#include "Dressing.h"

#include <QStringBuilder>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

Tape asciiTape(qint64 id)
{
    static const QStringList titles{u"City Council Regular Meeting"_s, u"Planning Commission - Work Session"_s,
                                    u"Board of Supervisors: Budget Workshop"_s,
                                    u"Parks and Recreation Advisory Panel"_s, u"School Board Special Meeting"_s};
    Tape tape;
    tape.id = id;
    tape.title = titles[id % titles.size()];
    tape.meetingDate = u"2024-03-05"_s;
    tape.hasAgenda = id % 2 == 0;
    if (id % 3 != 0)
        tape.body = TapeBody{u"city-council"_s, u"City Council"_s, u"council"_s};
    return tape;
}

Tape accentedTape(qint64 id)
{
    Tape tape = asciiTape(id);
    tape.title = u"Comité d’urbanisme — séance extraordinaire"_s;
    tape.body.reset();
    return tape;
}

/** Yardstick: concatenates one text as long as a synopsis. */
void buildOneSynopsis(benchmark::State& state)
{
    const QString name = u"City Council"_s;
    const QString date = u"March 5, 2024"_s;
    const QString rest = dress(asciiTape(42)).synopsis;
    while (state.KeepRunning()) {
        QString text = u"When "_s % name % u" convenes on "_s % date % rest;
        benchmark::DoNotOptimize(text);
    }
}

void dressAsciiTape(benchmark::State& state)
{
    const Tape tape = asciiTape(42);
    while (state.KeepRunning())
        benchmark::DoNotOptimize(dress(tape));
}

void dressAccentedTape(benchmark::State& state)
{
    const Tape tape = accentedTape(42);
    while (state.KeepRunning())
        benchmark::DoNotOptimize(dress(tape));
}

void buildShelvesOf200(benchmark::State& state)
{
    QList<Tape> tapes;
    for (qint64 id = 1; id <= 200; ++id)
        tapes.append(asciiTape(id));
    while (state.KeepRunning())
        benchmark::DoNotOptimize(buildShelves(tapes));
}

BENCHMARK(buildOneSynopsis)->Unit(benchmark::kMicrosecond);
BENCHMARK(dressAsciiTape)->Unit(benchmark::kMicrosecond);
BENCHMARK(dressAccentedTape)->Unit(benchmark::kMicrosecond);
BENCHMARK(buildShelvesOf200)->Unit(benchmark::kMicrosecond);

} // namespace

} // namespace quillmere

BENCHMARK_MAIN();
