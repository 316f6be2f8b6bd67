#include "bench/tools/SampleTexts.h"
#include "capture/ScreenshotImporter.h"
#include "platform/linux/SystemClock.h"
#include "platform/testing/FakeApplicationIcons.h"
#include "platform/workers/ImagingWorkerCodec.h"

#include <QBuffer>
#include <QImage>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <qcoro/qcorotask.h>

/// From what the clipboard delivered to the item in the library, with real files and the real worker.
namespace tessary::bench {
namespace {

constexpr quint64 kSeed = 11;
constexpr int kTexts = 500;

class Intake {
public:
    Intake()
        : m_paths(AppPaths::create(m_folder.path())),
          m_store(QCoro::waitFor(SQLiteStore::open(m_paths.database))),
          m_codec({.program = QStringLiteral(TESSARY_IMAGING_PROGRAM)}),
          importer(m_paths, *m_store, m_codec, m_icons, m_clock)
    {
    }

private:
    QTemporaryDir m_folder;
    AppPaths m_paths;
    std::unique_ptr<SQLiteStore> m_store;
    testing::FakeApplicationIcons m_icons;
    SystemClock m_clock;
    ImagingWorkerCodec m_codec;

public:
    ScreenshotImporter importer;
};

QCoro::Task<int> importAll(ScreenshotImporter& importer, QStringList texts)
{
    int added = 0;
    for (const QString& text : texts) {
        const ScreenshotImporter::Record record =
            co_await importer.importClipboardPayload(text, std::nullopt);
        added += record ? 1 : 0;
    }
    co_return added;
}

void importTexts(benchmark::State& state)
{
    Intake intake;
    SampleTexts source(kSeed);
    for (auto _ : state) {
        state.PauseTiming();
        QStringList texts;
        for (int i = 0; i < kTexts; ++i)
            texts.append(source.next());
        state.ResumeTiming();
        if (QCoro::waitFor(importAll(intake.importer, texts)) != kTexts)
            state.SkipWithError("a text was not imported");
    }
    state.SetItemsProcessed(static_cast<qint64>(state.iterations()) * kTexts);
}

/// A photograph as far as compression is concerned: half of each channel is noise.
QByteArray png4000x3000()
{
    QImage image(4000, 3000, QImage::Format_RGB32);
    quint32 noise = 1;
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            noise = noise * 1664525 + 1013904223;
            line[x] =
                qRgb(x / 20 + static_cast<int>(noise >> 28), y / 20 + static_cast<int>(noise >> 20 & 15),
                     (x + y) / 40 + static_cast<int>(noise >> 12 & 15));
        }
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

/// Half a second of this is the wait for the file to be complete.
void importPicture(benchmark::State& state)
{
    Intake intake;
    const QByteArray picture = png4000x3000();
    int number = 0;
    for (auto _ : state) {
        // What follows the last chunk of a PNG is no part of the picture, but makes it another file.
        const QByteArray bytes = picture + QByteArray::number(++number);
        auto task = intake.importer.importClipboardPayload(bytes, std::nullopt);
        if (!QCoro::waitFor(std::move(task)))
            state.SkipWithError("the picture was not imported");
    }
    state.counters["MB"] = static_cast<double>(picture.size()) / 1'000'000;
}

BENCHMARK(importTexts)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(importPicture)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
} // namespace tessary::bench
