#include "Reflow.h"

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

constexpr double megabyte = 1e6;

/** Repeats caption lines up to `megabytes` of UTF-8 text. */
QString captions(const QStringList& lines, double megabytes)
{
    const QString round = lines.join(u'\n') + u'\n';
    return round.repeated(qsizetype(megabytes * megabyte / double(round.toUtf8().size())) + 1);
}

QString asciiCaptions(double megabytes)
{
    return captions({u"THE COUNCIL WILL NOW COME TO ORDER"_s, u"THANK YOU. FIRST ON THE AGENDA TONIGHT"_s,
                     u"IS THE FERRY. MR. ABERNATHY, YOU"_s, u"HAVE THREE MINUTES. GO AHEAD."_s},
                    megabytes);
}

QString mixedCaptions(double megabytes)
{
    return captions({u"La séance est levée à l’été, très chère."_s, u"Заседание совета объявляется открытым."_s,
                     u"港口委員會例會現在開始，請各位就座。"_s, u"सभा अब शुरू होती है, कृपया बैठ जाइए।"_s,
                     u"اجتماع مجلس الميناء يبدأ الآن من فضلكم"_s,
                     u"THANK YOU. 🚢 👩‍👩‍👧‍👦 FAMILY NIGHT 🏳️‍🌈"_s},
                    megabytes);
}

void measure(benchmark::State& state, const QString& text)
{
    constexpr qsizetype limit = 420;
    while (state.KeepRunning())
        benchmark::DoNotOptimize(Reflow::paragraphs(text, limit));
}

void reflowAscii(benchmark::State& state)
{
    measure(state, asciiCaptions(double(state.range(0)) / 1000));
}

void reflowMixedScripts(benchmark::State& state)
{
    measure(state, mixedCaptions(double(state.range(0)) / 1000));
}

/** Yardstick: splits the same text at its line breaks. */
void splitAscii(benchmark::State& state)
{
    const QString text = asciiCaptions(double(state.range(0)) / 1000);
    while (state.KeepRunning())
        benchmark::DoNotOptimize(text.split(u'\n', Qt::SkipEmptyParts));
}

// Arguments are kilobytes.
BENCHMARK(splitAscii)->Unit(benchmark::kMillisecond)->Arg(5000);
BENCHMARK(reflowAscii)->Unit(benchmark::kMillisecond)->Arg(500)->Arg(1000)->Arg(2000)->Arg(5000);
BENCHMARK(reflowMixedScripts)->Unit(benchmark::kMillisecond)->Arg(500)->Arg(1000)->Arg(2000)->Arg(5000);

} // namespace

} // namespace quillmere

BENCHMARK_MAIN();
