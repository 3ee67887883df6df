#include "Bench.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

struct Benchmark
{
    QString name;
    QString unit;
    QList<double> times;
};

/** Runs a Google Benchmark program; its benchmarks in their order, one time a repetition. */
QList<Benchmark> run(const QString& program, int repetitions)
{
    QProcess process;
    process.start(program, {u"--benchmark_format=json"_s, u"--benchmark_repetitions=%1"_s.arg(repetitions)});
    if (!process.waitForFinished(300000) || process.exitCode() != 0)
        throw std::runtime_error((program + " failed."_L1).toStdString());
    QList<Benchmark> benchmarks;
    const QJsonArray entries =
        QJsonDocument::fromJson(process.readAllStandardOutput()).object().value(u"benchmarks"_s).toArray();
    for (const QJsonValue& entry : entries) {
        if (entry[u"run_type"] != "iteration"_L1)
            continue;
        const QString name = entry[u"run_name"].toString();
        if (benchmarks.isEmpty() || benchmarks.last().name != name)
            benchmarks.append({name, entry[u"time_unit"].toString(), {}});
        benchmarks.last().times.append(entry[u"real_time"].toDouble());
    }
    return benchmarks;
}

bool isYardstick(const Benchmark& benchmark)
{
    return benchmark.name.contains("yardstick"_L1, Qt::CaseInsensitive);
}

} // namespace

QList<Figure> measureLibraries(const QStringList& programs, const Effort& effort)
{
    QList<Figure> figures;
    for (const QString& program : programs) {
        const QList<Benchmark> benchmarks = run(program, effort.spans);
        const auto yardstick = std::find_if(benchmarks.cbegin(), benchmarks.cend(), isYardstick);
        for (const Benchmark& benchmark : benchmarks) {
            if (isYardstick(benchmark))
                continue;
            Figure figure{benchmark.name, benchmark.unit, benchmark.times, {}, {}, {}};
            if (yardstick != benchmarks.cend() && yardstick->unit == benchmark.unit) {
                figure.yardstick = yardstick->name;
                figure.yardstickMeasured = yardstick->times;
            }
            figures.append(figure);
        }
    }
    return figures;
}
