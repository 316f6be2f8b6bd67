#include "base/FlowSet.h"
#include "capture/ClipboardMonitor.h"
#include "platform/testing/FakeImageCodec.h"
#include "platform/testing/FakePasteboard.h"

#include <benchmark/benchmark.h>

/// What a look at the clipboard costs the main thread while nothing new is there.
namespace tessary::bench {
namespace {

/// Keeps the one timer's callback, to be called without any timer's own cost.
class ManualClock : public Clock {
public:
    [[nodiscard]] Date now() const override { return {}; }
    [[nodiscard]] QCoro::Task<> sleep(std::chrono::milliseconds) override { co_return; }
    [[nodiscard]] std::unique_ptr<RepeatingTimer> repeat(std::chrono::milliseconds,
                                                         std::function<void()> callback) override
    {
        tick = std::move(callback);
        return std::make_unique<RepeatingTimer>();
    }

    std::function<void()> tick;
};

void pollNothingNew(benchmark::State& state)
{
    testing::FakePasteboard pasteboard;
    testing::FakeImageCodec codec;
    ManualClock clock;
    FlowSet flows([](const std::exception&) {});
    ClipboardMonitor monitor(pasteboard, clock, codec, flows);
    pasteboard.setText(QStringLiteral("there before"));
    monitor.start();
    for (auto _ : state)
        clock.tick();
    if (!pasteboard.reads().isEmpty())
        state.SkipWithError("the clipboard was read");
}

BENCHMARK(pollNothingNew);

} // namespace
} // namespace tessary::bench
