#include "library/model/search_index.h"
#include "made_library.h"

#include <QElapsedTimer>
#include <QFile>
#include <array>
#include <benchmark/benchmark.h>
#include <bit>
#include <cstdio>
#include <string>

namespace {

qint64 residentKilobytes()
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').first().toLongLong();
    }
    return 0;
}

SearchIndex &index()
{
    static SearchIndex built = [] {
        SearchIndex index;
        MadeTexts texts;
        const qint64 before = residentKilobytes();
        qint64 nanoseconds = 0;
        for (int i = 0; i < 100'000; ++i) {
            const std::array fields{QStringLiteral("Capture 2026-03-14 at 09.%1").arg(i),
                                    QStringLiteral("Terminal"), texts.text(300)};
            QElapsedTimer timer;
            timer.start();
            index.add(fields);
            nanoseconds += timer.nsecsElapsed();
        }
        std::printf("100,000 documents of 300 words: built in %.1f s, %lld MB\n", double(nanoseconds) / 1e9,
                    static_cast<long long>((residentKilobytes() - before) / 1024));
        return index;
    }();
    return built;
}

void keyStroke(benchmark::State &state, const QString &query)
{
    const SearchIndex &searched = index();
    size_t bits = 0;
    for (auto _ : state) {
        const auto found = searched.find(query);
        bits = 0;
        for (const quint64 word : found)
            bits += static_cast<size_t>(std::popcount(word));
    }
    state.counters["found"] = static_cast<double>(bits);
}

} // namespace

int main(int argc, char **argv)
{
    for (const char *query :
         {"e", "er", "ing", "the", "error", "settings", "zqx", "the e", "e t", "of the", "n the e", "the er", "er te", "e the", "ing 2",
          "user name", "terentproment", "9.4711", "xyzzy nothing", "capture 2026"})
        benchmark::RegisterBenchmark(
            (std::string("KeyStroke/\"") + query + '"').c_str(),
            [query](benchmark::State &state) { keyStroke(state, QString::fromLatin1(query)); })
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
