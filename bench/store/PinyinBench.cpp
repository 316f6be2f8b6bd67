#include "bench/tools/SampleTexts.h"
#include "store/PinyinText.h"

#include <benchmark/benchmark.h>

/// How fast texts become searchable by their romanisation, in bytes of their UTF-8.
namespace tessary::bench {
namespace {

constexpr quint64 kSeed = 7;
constexpr qsizetype kTextLength = 2000; // characters
constexpr qsizetype kTexts = 100;

using MakeText = QString (SampleTexts::*)(qsizetype);

void romanise(benchmark::State& state, const QStringList& texts)
{
    PinyinText pinyin;
    qint64 bytes = 0;
    for (const QString& text : texts) {
        bytes += text.toUtf8().size();
        benchmark::DoNotOptimize(pinyin.searchText(text)); // fills the table of syllables
    }
    for (auto _ : state) {
        for (const QString& text : texts)
            benchmark::DoNotOptimize(pinyin.searchText(text));
    }
    state.SetBytesProcessed(static_cast<qint64>(state.iterations()) * bytes);
}

void samples(benchmark::State& state, MakeText make)
{
    SampleTexts source(kSeed);
    QStringList texts;
    for (qsizetype i = 0; i < kTexts; ++i)
        texts.append((source.*make)(kTextLength));
    romanise(state, texts);
}

void cyrillic(benchmark::State& state)
{
    const QString sentence =
        QStringLiteral("Встреча перенесена на четверг, потому что зал ещё не готов; подробности в письме. ");
    romanise(state, QStringList(kTexts, sentence.repeated(kTextLength / sentence.size())));
}

/// The first text with characters that were not met before.
void firstChinese(benchmark::State& state)
{
    const QString text = SampleTexts(kSeed).chinese(kTextLength);
    for (auto _ : state) {
        PinyinText pinyin;
        benchmark::DoNotOptimize(pinyin.searchText(text));
    }
}

BENCHMARK_CAPTURE(samples, chinese, &SampleTexts::chinese);
BENCHMARK_CAPTURE(samples, ascii, &SampleTexts::english);
BENCHMARK_CAPTURE(samples, code, &SampleTexts::code);
BENCHMARK_CAPTURE(samples, mixed, &SampleTexts::mixed);
BENCHMARK(cyrillic);
BENCHMARK(firstChinese)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace tessary::bench
