#include "CassettePrint.h"
#include "SampleCover.h"

#include <QGuiApplication>
#include <QPainter>

#include <benchmark/benchmark.h>

namespace {

/** A shelf's card on a display of so many device pixels a point. */
CassettePrint cardAt(double scale)
{
    return {CassettePrint::Form::ShelfCard, sampleCover(), 250, QSizeF(250 * scale, 390.625 * scale).toSize()};
}

void paintShelfCard(benchmark::State& state, double scale)
{
    const CassettePrint card = cardAt(scale);
    while (state.KeepRunning())
        benchmark::DoNotOptimize(card.paint());
}

/** A title that is searched for the size at which it fits, in scripts that no one font has. */
void paintCrowdedCard(benchmark::State& state)
{
    CassettePrint card = cardAt(1);
    card.cover.title =
        QStringLiteral("Joint session 市議會會議記錄 of the اجتماع مجلس المدينة authority \U0001F6A2 ").repeated(6);
    card.cover.tagline = card.cover.title;
    while (state.KeepRunning())
        benchmark::DoNotOptimize(card.paint());
}

/** The yardstick: an image of the card's size, filled and laid over another, and nothing else. */
void fillAndCompose(benchmark::State& state, double scale)
{
    const QSize pixels = cardAt(scale).pixels;
    QImage ground(pixels, QImage::Format_ARGB32_Premultiplied);
    ground.fill(Qt::black);
    while (state.KeepRunning()) {
        QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
        image.fill(QColor(31, 111, 139, 230));
        QPainter(&ground).drawImage(0, 0, image);
        benchmark::DoNotOptimize(ground.constBits());
    }
}

BENCHMARK_CAPTURE(fillAndCompose, 1080p, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(fillAndCompose, 1620p, 1.5)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(fillAndCompose, 2160p, 2)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(paintShelfCard, 1080p, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(paintShelfCard, 1620p, 1.5)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(paintShelfCard, 2160p, 2)->Unit(benchmark::kMillisecond);
BENCHMARK(paintCrowdedCard)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
