#include "capture/ClipboardMonitor.h"

#include "base/FlowSet.h"
#include "platform/testing/FakeClock.h"
#include "platform/testing/FakeImageCodec.h"
#include "platform/testing/FakePasteboard.h"
#include "tests/support/Await.h"

namespace tessary {
namespace {

using namespace std::chrono_literals;
using testing::await;
using testing::eventually;

class ClipboardMonitorTest : public ::testing::Test {
protected:
    ClipboardMonitorTest()
    {
        monitor.handler = [this](const ClipboardPayload& payload) { payloads.append(payload); };
    }
    /// One poll, and all that follows from it.
    void poll()
    {
        clock.advance(450ms);
        await(flows.drained());
    }
    void offer(const testing::FakePasteboard::Contents& contents) { pasteboard.setContents(contents); }
    static ClipboardPayload text(const char* utf8) { return QString::fromUtf8(utf8); }

    testing::FakeClock clock;
    testing::FakePasteboard pasteboard;
    testing::FakeImageCodec codec;
    FlowSet flows{[](const std::exception& error) { ADD_FAILURE() << error.what(); }};
    ClipboardMonitor monitor{pasteboard, clock, codec, flows};
    QList<ClipboardPayload> payloads;
};

TEST_F(ClipboardMonitorTest, CopyingTheSameTextTwiceIsDeliveredTwice)
{
    monitor.start();
    pasteboard.setText(QStringLiteral("same"));
    poll();
    pasteboard.setText(QStringLiteral("same"));
    poll();
    EXPECT_EQ(payloads, (QList{text("same"), text("same")}));
}

TEST_F(ClipboardMonitorTest, APictureWithATextIsDeliveredAsPictureOnly)
{
    monitor.start();
    offer({{PasteboardType::Png, "png bytes"}, {PasteboardType::Text, "text"}});
    poll();
    EXPECT_EQ(payloads, QList{ClipboardPayload(QByteArray("png bytes"))});
    EXPECT_FALSE(pasteboard.reads().contains(PasteboardType::Text));
}

TEST_F(ClipboardMonitorTest, AnotherBitmapIsDeliveredAsPng)
{
    codec.png = "encoded";
    monitor.start();
    pasteboard.setBitmap("tiff bytes");
    poll();
    EXPECT_EQ(payloads, QList{ClipboardPayload(QByteArray("encoded"))});
}

TEST_F(ClipboardMonitorTest, APngIsDeliveredUnchangedWhateverItsBytes)
{
    monitor.start();
    offer({{PasteboardType::Png, "not a png at all"}, {PasteboardType::Bitmap, "tiff"}});
    poll();
    EXPECT_EQ(payloads, QList{ClipboardPayload(QByteArray("not a png at all"))});
    EXPECT_TRUE(codec.requests.isEmpty());
}

TEST_F(ClipboardMonitorTest, ABitmapThatCannotBeDecodedLeavesTheText)
{
    codec.pngFailure = ImageError::Case::WorkerFailed;
    monitor.start();
    offer({{PasteboardType::Bitmap, "bad"}, {PasteboardType::Text, "caption"}});
    poll();
    EXPECT_EQ(payloads, QList{text("caption")});
}

TEST_F(ClipboardMonitorTest, BlankTextIsIgnoredAndPaddedTextTrimmed)
{
    monitor.start();
    pasteboard.setText(QStringLiteral(" \n\t\u3000 "));
    poll();
    EXPECT_TRUE(payloads.isEmpty());
    pasteboard.setText(QStringLiteral("\n  padded\ttext \u3000\n"));
    poll();
    EXPECT_EQ(payloads, QList{text("padded\ttext")});
}

TEST_F(ClipboardMonitorTest, LongTextIsTrimmedAsWell)
{
    monitor.start();
    const QString body = QString(2'000'000, u'长');
    pasteboard.setText(QStringLiteral("  ") + body + QStringLiteral("\n"));
    poll();
    EXPECT_EQ(payloads, QList{ClipboardPayload(body)});
}

TEST_F(ClipboardMonitorTest, WhatIsThereAtTheStartIsNotCaptured)
{
    pasteboard.setText(QStringLiteral("before"));
    monitor.start();
    poll();
    EXPECT_TRUE(payloads.isEmpty());
}

TEST_F(ClipboardMonitorTest, OfTwoChangesInOneIntervalOnlyTheLaterIsDelivered)
{
    monitor.start();
    pasteboard.setText(QStringLiteral("first"));
    pasteboard.setText(QStringLiteral("second"));
    poll();
    poll();
    EXPECT_EQ(payloads, QList{text("second")});
}

TEST_F(ClipboardMonitorTest, StartingAnewDropsWhatChangedMeanwhile)
{
    monitor.start();
    pasteboard.setText(QStringLiteral("dropped"));
    monitor.start();
    poll();
    EXPECT_TRUE(payloads.isEmpty());
    EXPECT_EQ(clock.timers(), 1);
}

TEST_F(ClipboardMonitorTest, StoppedItSeesNothingAndKeepsNoTimer)
{
    monitor.start();
    EXPECT_TRUE(pasteboard.isFetching());
    monitor.stop();
    EXPECT_FALSE(monitor.isRunning());
    EXPECT_FALSE(pasteboard.isFetching());
    EXPECT_EQ(clock.timers(), 0);
    pasteboard.setText(QStringLiteral("unseen"));
    poll();
    EXPECT_TRUE(payloads.isEmpty());
}

TEST_F(ClipboardMonitorTest, WithoutAHandlerChangesArePassedOver)
{
    monitor.handler = nullptr;
    monitor.start();
    pasteboard.setText(QStringLiteral("nobody listens"));
    poll();
    monitor.handler = [this](const ClipboardPayload& payload) { payloads.append(payload); };
    poll();
    EXPECT_TRUE(payloads.isEmpty());
}

TEST_F(ClipboardMonitorTest, ASlowOwnerDoesNotHoldUpTheNextOne)
{
    monitor.start();
    pasteboard.hold();
    pasteboard.setText(QStringLiteral("slow"));
    clock.advance(450ms);
    ASSERT_TRUE(eventually([&] { return pasteboard.waiting() > 0; }));
    pasteboard.setText(QStringLiteral("next"));
    clock.advance(450ms);
    ASSERT_TRUE(eventually([&] { return pasteboard.waiting() > 1; }));
    pasteboard.letGo();
    await(flows.drained());
    EXPECT_TRUE(payloads.contains(text("next")));
}

TEST_F(ClipboardMonitorTest, WithNothingNewItReadsNothing)
{
    monitor.start();
    for (int i = 0; i < 10; ++i)
        poll();
    EXPECT_TRUE(pasteboard.reads().isEmpty());
}

TEST_F(ClipboardMonitorTest, LetsGoOfWhatItHasDealtWith)
{
    monitor.start();
    pasteboard.setText(QStringLiteral("once"));
    poll();
    EXPECT_EQ(pasteboard.released().last(), pasteboard.changeCount());
}

} // namespace
} // namespace tessary
