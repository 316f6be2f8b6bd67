#include "platform/workers/WorkerProcess.h"
#include "workers/imaging/ImagingProtocol.h"

#include <QCborValue>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

/// How long the imaging worker takes, and its peak memory (VmHWM) after that work alone.
namespace tessary {
namespace {

using namespace std::chrono_literals;

/// Something between a photograph and a screenshot, which neither compresses to nothing nor not at all.
QImage sample(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    quint32 noise = 1;
    for (int y = 0; y < height; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < width; ++x) {
            noise = noise * 1664525 + 1013904223;
            const int grain = static_cast<int>(noise >> 28);
            line[x] = qRgb(x * 200 / width + grain, y * 200 / height + grain, (x + y) / 16 % 200 + grain);
        }
    }
    return image;
}

/// Files are made once and kept until the end.
class Samples {
public:
    [[nodiscard]] QString path(int width, int height, const char* format)
    {
        const QString name =
            m_folder.filePath(QStringLiteral("%1x%2.%3").arg(width).arg(height).arg(QLatin1String(format)));
        if (!QFile::exists(name))
            sample(width, height).save(name, format, 90);
        return name;
    }

private:
    QTemporaryDir m_folder;
};

Samples& samples()
{
    static Samples made;
    return made;
}

WorkerCommand command()
{
    return {QStringLiteral(TESSARY_IMAGING_PROGRAM), {}};
}

double peakMegabytes(const WorkerProcess& worker)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(worker.processId().value_or(0)));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:"))
            return line.mid(6).simplified().split(' ').first().toDouble() / 1024;
    return 0;
}

QCborMap thumbnailRequest(const QString& path)
{
    constexpr int kThumbnailSize = 480;
    constexpr int kQuality = 78;
    return {{imaging::kOperation, imaging::kThumbnail},
            {imaging::kPath, path},
            {imaging::kMaximumPixelSize, kThumbnailSize},
            {imaging::kQuality, kQuality}};
}

void thumbnail(benchmark::State& state, int width, int height, const char* format)
{
    const QCborMap request = thumbnailRequest(samples().path(width, height, format));
    WorkerProcess worker(command());
    for (auto _ : state) {
        const QCborMap reply = worker.request(request, 20s);
        if (!reply.contains(imaging::kBytes))
            state.SkipWithError("no thumbnail");
    }
    state.counters["peak_MB"] = peakMegabytes(worker);
}

/// What a window shows of a picture that is far larger, `zoom` of its pixels a window's pixel, from the place
/// that many thousandths down.
void part(benchmark::State& state, const char* format, int zoom, int place)
{
    constexpr QSize kPicture(16'000, 12'000);
    constexpr QSize kWindow(1'280, 960);
    const QSize area = (kWindow * zoom).boundedTo(kPicture);
    const int top = (kPicture.height() - area.height()) * place / 1000;
    const QCborMap request = {{imaging::kOperation, imaging::kPart},
                              {imaging::kPath, samples().path(kPicture.width(), kPicture.height(), format)},
                              {imaging::kLeft, (kPicture.width() - area.width()) / 2},
                              {imaging::kTop, top},
                              {imaging::kWidth, area.width()},
                              {imaging::kHeight, area.height()},
                              {imaging::kScaledWidth, area.width() / zoom},
                              {imaging::kScaledHeight, area.height() / zoom}};
    WorkerProcess worker(command());
    for (auto _ : state) {
        const QCborMap reply = worker.request(request, 20s);
        if (!reply.contains(imaging::kBytes))
            state.SkipWithError("no part");
    }
    state.counters["peak_MB"] = peakMegabytes(worker);
}

void coldStart(benchmark::State& state)
{
    const QCborMap request = {{imaging::kOperation, imaging::kPixelSize},
                              {imaging::kPath, samples().path(64, 48, "png")}};
    double peak = 0;
    for (auto _ : state) {
        WorkerProcess worker(command());
        benchmark::DoNotOptimize(worker.request(request, 20s));
        state.PauseTiming();
        peak = peakMegabytes(worker);
        state.ResumeTiming();
    }
    state.counters["peak_MB"] = peak;
}

/// A clipboard bitmap of a 4K screen into PNG.
void pngFromBitmap(benchmark::State& state)
{
    QFile file(samples().path(3840, 2160, "bmp"));
    if (!file.open(QIODevice::ReadOnly))
        return state.SkipWithError("no sample");
    const QCborMap request = {{imaging::kOperation, imaging::kPng}, {imaging::kBytes, file.readAll()}};
    WorkerProcess worker(command());
    for (auto _ : state)
        benchmark::DoNotOptimize(worker.request(request, 20s));
    state.counters["peak_MB"] = peakMegabytes(worker);
}

BENCHMARK(coldStart)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(thumbnail, png_4000x3000, 4000, 3000, "png")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(thumbnail, jpeg_4000x3000, 4000, 3000, "jpg")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(thumbnail, png_8000x6000, 8000, 6000, "png")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(part, png_start_1to1, "png", 1, 0)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(part, png_end_1to1, "png", 1, 1000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(part, png_whole, "png", 12, 0)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(part, jpeg_end_1to1, "jpg", 1, 1000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(part, jpeg_whole, "jpg", 12, 0)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(pngFromBitmap)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
} // namespace tessary
