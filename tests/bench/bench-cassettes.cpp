#include "CassetteRenderer.h"
#include "SampleCover.h"

#include <QGuiApplication>
#include <QPainter>

#include <benchmark/benchmark.h>

namespace quillmere {

namespace {

/** A shelf card for a display with `scale` device pixels per point. */
CassetteRenderer cardAt(double scale)
{
    return {CassetteRenderer::Form::ShelfCard, sampleCover(), 250, QSizeF(250 * scale, 390.625 * scale).toSize()};
}

void paintShelfCard(benchmark::State& state, double scale)
{
    const CassetteRenderer card = cardAt(scale);
    while (state.KeepRunning())
        benchmark::DoNotOptimize(card.paint());
}

/** A title whose font size must be searched for, in scripts that need several fonts. */
void paintCrowdedCard(benchmark::State& state)
{
    CassetteRenderer card = cardAt(1);
    card.cover.title =
        QStringLiteral("Joint session 市議會會議記錄 of the اجتماع مجلس المدينة authority \U0001F6A2 ").repeated(6);
    card.cover.tagline = card.cover.title;
    while (state.KeepRunning())
        benchmark::DoNotOptimize(card.paint());
}

/** Yardstick: fills an image of the card's size and draws it onto another. */
void fillAndCompose(benchmark::State& state, double scale)
{
    const QSize pixels = cardAt(scale).pixels;
    QImage background(pixels, QImage::Format_ARGB32_Premultiplied);
    background.fill(Qt::black);
    while (state.KeepRunning()) {
        QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
        image.fill(QColor(31, 111, 139, 230));
        QPainter(&background).drawImage(0, 0, image);
        benchmark::DoNotOptimize(background.constBits());
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

} // namespace quillmere

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
