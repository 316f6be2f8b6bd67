#include "capture/ClipboardService.h"

#include "tests/support/Await.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/RecordSamples.h"

#include <QFile>

namespace tessary {
namespace {

using namespace std::chrono_literals;
using ClipboardService::Outcome;
using testing::await;
using testing::eventually;
using testing::textRecord;

const RunningApplication kEditor{QStringLiteral("Editor"), QStringLiteral("editor"), std::nullopt, 7, 70};
const RunningApplication kTerminal{
    QStringLiteral("Terminal"), QStringLiteral("term"), std::nullopt, 8, 80, true};
const RunningApplication kPanel{QStringLiteral("Tessary"), QStringLiteral("panel"), std::nullopt, 9, 90};

class ClipboardServiceTest : public ::testing::Test, protected testing::FakePlatform {
protected:
    /// Begins to paste; time stands still.
    void begin(const ScreenshotRecord& record, std::optional<RunningApplication> target)
    {
        const auto follow = [](QCoro::Task<Outcome> running, std::optional<Outcome>& end) -> QCoro::Task<> {
            end = co_await running;
        };
        task = follow(ClipboardService::copyAndPaste(record, target, platform), outcome);
    }
    /// Lets everything happen until the flow sleeps, then moves time on.
    void pass(std::chrono::milliseconds duration)
    {
        ASSERT_TRUE(eventually([this] { return clock.sleeping() == 1; }));
        clock.advance(duration);
    }
    std::optional<Outcome> ended()
    {
        EXPECT_TRUE(eventually([this] { return outcome.has_value(); }));
        return outcome;
    }
    ScreenshotRecord imageRecord(const QByteArray& bytes)
    {
        ScreenshotRecord record;
        record.libraryPath = folder.file(QStringLiteral("picture.png"));
        QFile file(record.libraryPath);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        return record;
    }
    bool copy(const ScreenshotRecord& record)
    {
        return await(ClipboardService::copy(record, pasteboard, PasteboardReach::Clipboard));
    }

    std::optional<Outcome> outcome;
    QCoro::Task<> task;
};

TEST_F(ClipboardServiceTest, ATextIsWrittenAsTextOnly)
{
    EXPECT_TRUE(copy(textRecord(QStringLiteral("  as it is\n"))));
    EXPECT_EQ(pasteboard.text(), QStringLiteral("  as it is\n"));
    EXPECT_EQ(pasteboard.contents().size(), 1);
    EXPECT_EQ(pasteboard.changeCount(), 1);
    EXPECT_TRUE(pasteboard.selection().isEmpty());
}

TEST_F(ClipboardServiceTest, APictureIsWrittenFromTheLibrary)
{
    EXPECT_TRUE(copy(imageRecord("png bytes")));
    EXPECT_EQ(pasteboard.contents().value(PasteboardType::Png), "png bytes");
    EXPECT_EQ(pasteboard.contents().size(), 1);
}

TEST_F(ClipboardServiceTest, APictureWhoseFileWasDeletedLeavesTheContentsAlone)
{
    pasteboard.setText(QStringLiteral("former"));
    const ScreenshotRecord record = imageRecord("x");
    ASSERT_TRUE(QFile::remove(record.libraryPath));
    EXPECT_FALSE(copy(record));
    begin(record, kEditor);
    EXPECT_EQ(ended(), Outcome::NotWritten);
    EXPECT_EQ(pasteboard.text(), QStringLiteral("former"));
    EXPECT_TRUE(workspace.activationRequests().isEmpty());
}

TEST_F(ClipboardServiceTest, AClipboardThatCannotBeWrittenEndsIt)
{
    pasteboard.refuseWrites();
    EXPECT_FALSE(copy(textRecord(QStringLiteral("x"))));
    begin(textRecord(QStringLiteral("x")), kEditor);
    EXPECT_EQ(ended(), Outcome::NotWritten);
    EXPECT_TRUE(workspace.activationRequests().isEmpty());
}

TEST_F(ClipboardServiceTest, PastesIntoTheProgramOnceItIsInFrontAndSettled)
{
    workspace.setFrontmost(kPanel);
    begin(textRecord(QStringLiteral("text")), kEditor);
    pass(219ms);
    EXPECT_EQ(workspace.frontmostApplication(), kEditor);
    EXPECT_EQ(pasteboard.text(), QStringLiteral("text"));
    EXPECT_TRUE(keystrokes.sent().isEmpty());
    pass(1ms);
    EXPECT_EQ(ended(), Outcome::Pasted);
    EXPECT_EQ(keystrokes.sent(),
              (QList<testing::FakeKeystrokeSender::Sent>{{PasteKeystroke::ControlV, kEditor}}));
    EXPECT_EQ(workspace.activationRequests(), QList{kEditor});
}

TEST_F(ClipboardServiceTest, ATerminalGetsItsOwnKeysAndTheTextAsSelectionToo)
{
    begin(textRecord(QStringLiteral("ls")), kTerminal);
    pass(220ms);
    EXPECT_EQ(ended(), Outcome::Pasted);
    EXPECT_EQ(keystrokes.sent().first().first, PasteKeystroke::ShiftInsert);
    EXPECT_EQ(pasteboard.selection().value(PasteboardType::Text), "ls");
}

TEST_F(ClipboardServiceTest, WithoutAProgramTheTextIsOnTheClipboardOnly)
{
    begin(textRecord(QStringLiteral("text")), std::nullopt);
    EXPECT_EQ(ended(), Outcome::Written);
    EXPECT_EQ(pasteboard.text(), QStringLiteral("text"));
    EXPECT_TRUE(keystrokes.sent().isEmpty());
}

TEST_F(ClipboardServiceTest, AProgramThatHasQuitGetsNothing)
{
    workspace.refuseActivation();
    begin(textRecord(QStringLiteral("text")), kEditor);
    EXPECT_EQ(ended(), Outcome::Written);
    EXPECT_EQ(pasteboard.text(), QStringLiteral("text"));
    EXPECT_EQ(workspace.looks(), 0);
    EXPECT_TRUE(keystrokes.sent().isEmpty());
}

TEST_F(ClipboardServiceTest, AProgramThatIsInFrontOnlyAfterHalfASecondGetsNothing)
{
    workspace.delayActivation();
    begin(textRecord(QStringLiteral("text")), kEditor);
    for (int poll = 0; poll < 8; ++poll) {
        EXPECT_EQ(outcome, std::nullopt);
        pass(50ms);
    }
    EXPECT_EQ(ended(), Outcome::Written);
    workspace.setFrontmost(kEditor);
    clock.advance(1s);
    EXPECT_TRUE(keystrokes.sent().isEmpty());
}

TEST_F(ClipboardServiceTest, AProgramThatIsInFrontAfterThreeTenthsOfASecondGetsIt)
{
    workspace.delayActivation();
    begin(textRecord(QStringLiteral("text")), kEditor);
    for (int poll = 0; poll < 6; ++poll)
        pass(50ms);
    workspace.setFrontmost(kEditor);
    ASSERT_TRUE(eventually([this] { return workspace.looks() == 7; }));
    pass(219ms);
    EXPECT_TRUE(keystrokes.sent().isEmpty());
    pass(1ms);
    EXPECT_EQ(ended(), Outcome::Pasted);
    EXPECT_EQ(workspace.looks(), 7);
}

TEST_F(ClipboardServiceTest, WithoutKeysThatPasteTheTextIsOnTheClipboardOnly)
{
    keystrokes.stopTyping();
    begin(textRecord(QStringLiteral("text")), kEditor);
    pass(220ms);
    EXPECT_EQ(ended(), Outcome::Written);
    EXPECT_EQ(pasteboard.text(), QStringLiteral("text"));
}

} // namespace
} // namespace tessary
