// What it costs to join frames of a scrolling capture: processor time a frame from the first row hashed to
// the finished picture, and the highest memory of it all against what frames and result take by themselves.
#include "capture/frame_stitcher.h"

#include <QFile>
#include <QRandomGenerator>
#include <benchmark/benchmark.h>

namespace {

// A page of "text": dark marks of random length in lines with blank rows between, beside a blank margin.
QImage page(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::white);
    QRandomGenerator random(7);
    for (int y = 0; y < height; ++y) {
        if (y % 20 > 12)
            continue;
        auto *row = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = width / 8; x < width; x += 9)
            std::fill_n(row + x, std::min<int>(random.bounded(9), width - x), 0xff202020);
    }
    return image;
}

qint64 highWaterBytes()
{
    QFile status("/proc/self/status");
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').first().toLongLong() * 1024;
    }
    return 0;
}

void resetHighWater()
{
    QFile file("/proc/self/clear_refs");
    if (file.open(QIODevice::WriteOnly))
        file.write("5");
}

void joinFrames(benchmark::State &state)
{
    const int width = int(state.range(0));
    const int height = int(state.range(1));
    const int count = int(state.range(2));
    const int shift = int(height * 0.55);
    QList<QImage> frames;
    {
        const QImage whole = page(width, height + (count - 1) * shift);
        for (int i = 0; i < count; ++i)
            frames.append(whole.copy(0, i * shift, width, height));
    }
    resetHighWater();
    const qint64 before = highWaterBytes(); // the frames are in it
    qint64 resultBytes = 0;
    for (auto _ : state) {
        FrameStitcher stitcher;
        for (const QImage &frame : frames) {
            if (!stitcher.add(frame))
                state.SkipWithError("a frame was refused");
        }
        const std::optional<QImage> result = stitcher.result();
        resultBytes = result ? result->sizeInBytes() : 0;
    }
    state.counters["time_a_frame"] =
        benchmark::Counter(double(count) * double(state.iterations()),
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
    const double needed = double(frames.first().sizeInBytes()) * count + double(resultBytes);
    state.counters["memory_above_need_%"] = 100 * (double(highWaterBytes() - before - resultBytes)) / needed;
}

// What a picture costs of which only a part scrolls, beside a side bar: looked at whole, then in parts.
void lookTwice(benchmark::State &state)
{
    const int width = int(state.range(0));
    const int height = int(state.range(1));
    const int shift = int(height * 0.55);
    const QImage whole = page(width, height + shift);
    const QImage side = page(width / 5, height);
    const auto frame = [&](int offset) {
        QImage image = whole.copy(0, offset, width, height);
        for (int y = 0; y < height; ++y)
            std::copy_n(side.constScanLine(y), side.width() * 4, image.scanLine(y));
        return image;
    };
    const QImage next = frame(shift);
    FrameStitcher stitcher;
    stitcher.add(frame(0));
    for (auto _ : state) {
        const auto picture = ComparedPicture::of(next);
        if (!picture || !stitcher.look(*picture).step)
            state.SkipWithError("the second look found nothing");
    }
}

void hashRows(benchmark::State &state)
{
    const QImage image = page(int(state.range(0)), int(state.range(1)));
    for (auto _ : state)
        benchmark::DoNotOptimize(RowSignatures::of(image));
}

} // namespace

BENCHMARK(joinFrames)->Args({1920, 1080, 20})->Args({3840, 2160, 20})->Unit(benchmark::kMillisecond);
BENCHMARK(lookTwice)->Args({1100, 704})->Args({1920, 1080})->Args({3840, 2160})->Unit(benchmark::kMillisecond);
BENCHMARK(hashRows)->Args({1920, 1080})->Args({3840, 2160})->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
