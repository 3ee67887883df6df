#include "Bench.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace quillmere {

namespace {

struct Benchmark
{
    QString name;
    QString unit;
    QList<double> times;
};

/** Runs a Google Benchmark program; returns its benchmarks in order, with one time per repetition. */
QList<Benchmark> run(const QString& program, int repetitions)
{
    QProcess process;
    process.start(program, {u"--benchmark_format=json"_s, u"--benchmark_repetitions=%1"_s.arg(repetitions)});
    if (!process.waitForFinished(300000) || process.exitCode() != 0)
        throw std::runtime_error((program + " failed."_L1).toStdString());
    QList<Benchmark> benchmarks;
    const QJsonArray entries =
        QJsonDocument::fromJson(process.readAllStandardOutput()).object().value(u"benchmarks"_s).toArray();
    for (const QJsonValue entry : entries) {
        if (entry[u"run_type"] != "iteration"_L1)
            continue;
        const QString name = entry[u"run_name"].toString();
        if (benchmarks.isEmpty() || benchmarks.last().name != name)
            benchmarks.append({name, entry[u"time_unit"].toString(), {}});
        benchmarks.last().times.append(entry[u"real_time"].toDouble());
    }
    return benchmarks;
}

/** The table row of a benchmark. A benchmark that is not listed gets a row under its own name. */
struct Row
{
    const char16_t* benchmark;
    const char16_t* name;
    const char16_t* yardstick; ///< name of another benchmark in the same program
    const char16_t* against;
    double target; ///< greatest acceptable median in the benchmark's unit; 0 for none
};

constexpr Row rows[] = {
    {u"dressAsciiTape", u"dressing a tape", u"buildOneSynopsis", u"joining one text of that length", 5},
    {u"dressAccentedTape", u"dressing a tape with accents", u"buildOneSynopsis", u"joining one text of that length", 0},
    {u"buildShelvesOf200", u"shelves of 200 tapes", u"buildOneSynopsis", u"joining one text", 1500},
    {u"decodeAPageOf200", u"decoding a page of 200", u"parseAPageOf200", u"the JSON parser alone", 0},
    {u"paintShelfCard/1080p", u"shelf card, 1080p", u"fillAndCompose/1080p", u"filling and laying down one image", 3},
    {u"paintShelfCard/1620p", u"shelf card, 1620p", u"fillAndCompose/1620p", u"filling and laying down one image", 0},
    {u"paintShelfCard/2160p", u"shelf card, 2160p", u"fillAndCompose/2160p", u"filling and laying down one image", 0},
    {u"reflowAscii/500", u"a transcript of 0.5 MB", u"splitAscii/5000", u"splitting 5 MB into lines", 0},
    {u"reflowAscii/1000", u"a transcript of 1 MB", u"splitAscii/5000", u"splitting 5 MB into lines", 0},
    {u"reflowAscii/2000", u"a transcript of 2 MB", u"splitAscii/5000", u"splitting 5 MB into lines", 0},
    {u"reflowAscii/5000", u"a transcript of 5 MB", u"splitAscii/5000", u"splitting 5 MB into lines", 150},
    {u"reflowMixedScripts/500", u"mixed scripts, 0.5 MB", u"splitAscii/5000", u"splitting 5 MB into lines", 0},
    {u"reflowMixedScripts/1000", u"mixed scripts, 1 MB", u"splitAscii/5000", u"splitting 5 MB into lines", 0},
    {u"reflowMixedScripts/2000", u"mixed scripts, 2 MB", u"splitAscii/5000", u"splitting 5 MB into lines", 0},
    {u"reflowMixedScripts/5000", u"mixed scripts, 5 MB", u"splitAscii/5000", u"splitting 5 MB into lines", 150},
    {u"paintCrowdedCard", u"crowded card, 1080p", u"fillAndCompose/1080p", u"filling and laying down one image", 0},
};

const Row* rowOf(const QString& benchmark)
{
    const auto row = std::find_if(std::begin(rows), std::end(rows),
                                  [&](const Row& row) { return benchmark == QStringView(row.benchmark); });
    return row == std::end(rows) ? nullptr : row;
}

bool isYardstick(const Benchmark& benchmark)
{
    return std::any_of(std::begin(rows), std::end(rows),
                       [&](const Row& row) { return benchmark.name == QStringView(row.yardstick); });
}

Figure figureOf(const Benchmark& benchmark, const QList<Benchmark>& all)
{
    const Row* row = rowOf(benchmark.name);
    Figure figure{row ? QString::fromUtf16(row->name) : benchmark.name, benchmark.unit, benchmark.times, {}, {}, {}};
    if (!row)
        return figure;
    if (row->target > 0)
        figure.target = row->target;
    for (const Benchmark& other : all) {
        if (other.name == QStringView(row->yardstick) && other.unit == benchmark.unit) {
            figure.yardstick = QString::fromUtf16(row->against);
            figure.yardstickMeasured = other.times;
        }
    }
    return figure;
}

} // namespace

QList<Figure> measureLibraries(const QStringList& programs, const BenchParameters& parameters)
{
    QList<Figure> figures;
    for (const QString& program : programs) {
        const QList<Benchmark> benchmarks = run(program, parameters.repetitions);
        for (const Benchmark& benchmark : benchmarks) {
            if (!isYardstick(benchmark))
                figures.append(figureOf(benchmark, benchmarks));
        }
    }
    return figures;
}

} // namespace quillmere
