// What must keep up with the hand, and what a user waits for: a 4K picture with a hundred objects of every
// kind.
//
//     cmake --build build/release --target bench_document && build/release/bench/bench_document

#include "mixed_objects.h"

#include "document/editor_document.h"
#include "document/renderer.h"

#include <QGuiApplication>
#include <QPainter>
#include <QRandomGenerator>
#include <benchmark/benchmark.h>
#include <malloc.h>

namespace {

constexpr QSize size4K(3840, 2160);

// Something like a page: flat areas, lines of small text, pictures.
QImage page()
{
    QImage image(size4K, QImage::Format_RGB32);
    image.fill(QColor(246, 247, 250));
    QPainter painter(&image);
    QFont font("Inter");
    font.setPixelSize(26);
    painter.setFont(font);
    painter.fillRect(0, 0, 520, 2160, QColor(32, 34, 46));
    for (int y = 40; y < 2160; y += 44)
        painter.drawText(560, y,
                         "The quick brown fox jumps over the lazy dog 0123456789, account 4417 2290 1183, "
                         "phone +44 20 7946 0812, mara@example.org");
    for (int i = 0; i < 12; ++i)
        painter.fillRect(2400 + 110 * i, 1400 - 60 * i, 80, 200 + 60 * i, QColor::fromHsv(i * 30, 160, 220));
    return image;
}

EditorDocument::Source source()
{
    Effects effects;
    effects.border = effects.shadow = effects.rounded = effects.backdrop = true;
    return {page(), mixedObjects(100, {4000, 2250}, everyKind()), effects, {}};
}

} // namespace

static void Pixelated(benchmark::State &state)
{
    const QImage base = page();
    for (auto _ : state)
        benchmark::DoNotOptimize(Renderer::pixelated(base));
}
BENCHMARK(Pixelated)->Unit(benchmark::kMillisecond);

static void Flattened(benchmark::State &state)
{
    const EditorDocument document(source());
    document.pixelated();
    for (auto _ : state)
        benchmark::DoNotOptimize(document.flattened());
}
BENCHMARK(Flattened)->Unit(benchmark::kMillisecond);

static void ExportedWithAllEffects(benchmark::State &state)
{
    const EditorDocument document(source());
    document.pixelated();
    for (auto _ : state)
        benchmark::DoNotOptimize(document.exported());
}
BENCHMARK(ExportedWithAllEffects)->Unit(benchmark::kMillisecond);

static void EffectsAlone(benchmark::State &state)
{
    const EditorDocument document(source());
    const QImage flat = document.flattened();
    for (auto _ : state)
        benchmark::DoNotOptimize(document.effects().applied(flat));
}
BENCHMARK(EffectsAlone)->Unit(benchmark::kMillisecond);

// One object of each kind, alone on the picture: where `flattened` spends its time.
static void OneObject(benchmark::State &state)
{
    const QImage base = page();
    const QImage pixelated = Renderer::pixelated(base);
    const Annotation object = mixedObjects(15, {4000, 2250}, everyKind())[state.range(0)];
    QImage canvas = base.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&canvas);
    for (auto _ : state) {
        Renderer::drawSpotlights(base.size(), {object}, painter);
        Renderer::drawObject(object, base, pixelated, {object}, painter);
    }
    state.SetLabel(Tools::rawValue(object.kind).toStdString());
}
BENCHMARK(OneObject)->DenseRange(0, 14)->Unit(benchmark::kMicrosecond);

// As a script makes them, or a project from elsewhere: the time goes with their number.
static void ManyObjects(benchmark::State &state)
{
    const QImage base = page();
    const QImage pixelated = Renderer::pixelated(base);
    const auto objects = mixedObjects(static_cast<int>(state.range(0)), {4000, 2250}, everyKind());
    for (auto _ : state)
        benchmark::DoNotOptimize(Renderer::flattened(base, pixelated, objects));
}
BENCHMARK(ManyObjects)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->Iterations(1);

static void Snapshot(benchmark::State &state)
{
    EditorDocument document(source());
    for (auto _ : state) {
        document.pushUndo();
        Annotation first = document.annotations().first();
        first.offset(1, 1);
        document.replace(first); // makes the array its own again, as every real step does
    }
}
BENCHMARK(Snapshot)->Unit(benchmark::kMicrosecond);

// Memory that 60 undo steps without image surgery add.
static void MemoryOfHistory(benchmark::State &state)
{
    for (auto _ : state) {
        EditorDocument document(source());
        document.pixelated();
        const auto before = mallinfo2();
        for (int step = 0; step < 60; ++step) {
            document.pushUndo();
            QList<Annotation> objects = document.annotations();
            for (Annotation &object : objects)
                object.offset(1, 1);
            document.setAnnotations(objects);
        }
        const auto after = mallinfo2();
        state.counters["MB"] =
            static_cast<double>(after.uordblks + after.hblkhd - before.uordblks - before.hblkhd) / 1e6;
    }
}
BENCHMARK(MemoryOfHistory)->Iterations(1);

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
