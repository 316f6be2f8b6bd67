#include "app/AppRuntime.h"

#include "app/ApplicationIdentity.h"
#include "tests/support/Await.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/FakeWindows.h"
#include "tests/support/RecordSamples.h"

#include <QCoreApplication>

namespace tessary {
namespace {

using namespace std::chrono_literals;
using testing::await;
using testing::eventually;
using testing::textRecord;

const RunningApplication kEditor{QStringLiteral("Editor"), QStringLiteral("editor"), std::nullopt, 7, 70};

/// The panel alone; showing it brings it to the front, as a real one does.
class PanelOnly : public testing::FakeWindows {
public:
    explicit PanelOnly(testing::FakeWorkspace& workspace) : m_workspace(workspace) {}
    void showQuickSearch() override
    {
        isVisible = true;
        happened.append(QStringLiteral("shown"));
        m_workspace.setFrontmost(RunningApplication{QStringLiteral("Tessary"), applicationIdentifier(),
                                                    std::nullopt, QCoreApplication::applicationPid(), 1});
    }
    void hideQuickSearch() override
    {
        isVisible = false;
        happened.append(QStringLiteral("hidden"));
    }

    QStringList happened;

private:
    testing::FakeWorkspace& m_workspace;
};

class PasteBackTest : public ::testing::Test, protected testing::FakePlatform {
protected:
    PasteBackTest()
    {
        permissions.setState({true, true, false});
        await(runtime.start());
        QObject::connect(&runtime, &AppRuntime::libraryChanged, &runtime, [this] { ++changes; });
    }
    ~PasteBackTest() override { await(runtime.shutDown()); }

    void showPanelOver(std::optional<RunningApplication> application)
    {
        workspace.setFrontmost(std::move(application));
        runtime.toggleQuickSearch();
    }
    ScreenshotRecord stored(const QString& text)
    {
        const ScreenshotRecord record = textRecord(text);
        EXPECT_TRUE(await(runtime.store()->insert(record)));
        return record;
    }
    /// Runs the copy to its end, time moving on as far as it sleeps.
    void copy(const ScreenshotRecord& record, bool paste)
    {
        bool ended = false;
        QCoro::connect(runtime.copy(record, paste), &runtime, [&ended] { ended = true; });
        ASSERT_TRUE(eventually([&] {
            if (clock.sleeping() > 0)
                clock.advance(10ms);
            return ended;
        }));
    }
    std::optional<Date> lastUse(const ScreenshotRecord& record)
    {
        return await(runtime.store()->record(record.id))->lastUsedAt;
    }

    PanelOnly windows{workspace};
    AppRuntime runtime{platform, windows};
    int changes = 0;
};

TEST_F(PasteBackTest, ACopyIsOnTheClipboardAndCountsAsAUse)
{
    const ScreenshotRecord record = stored(QStringLiteral("text"));
    copy(record, false);
    EXPECT_EQ(pasteboard.text(), QStringLiteral("text"));
    EXPECT_EQ(lastUse(record), clock.now());
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(runtime.lastError(), std::nullopt);
    EXPECT_TRUE(windows.happened.isEmpty());
    EXPECT_EQ(permissions.probes(), 1); // at the start only
}

TEST_F(PasteBackTest, AClipboardThatCannotBeWrittenIsToldAndIsNoUse)
{
    const ScreenshotRecord record = stored(QStringLiteral("text"));
    pasteboard.refuseWrites();
    showPanelOver(kEditor);
    for (const bool paste : {false, true}) {
        runtime.clearLastError();
        copy(record, paste);
        EXPECT_EQ(runtime.lastError(), QStringLiteral("无法将内容写入剪贴板"));
    }
    permissions.setState({});
    runtime.clearLastError();
    copy(record, true);
    EXPECT_EQ(runtime.lastError(), QStringLiteral("无法将内容写入剪贴板"));
    EXPECT_EQ(lastUse(record), std::nullopt);
    EXPECT_EQ(changes, 0);
}

TEST_F(PasteBackTest, PastesIntoTheProgramThatWasInFrontBeforeThePanel)
{
    const ScreenshotRecord record = stored(QStringLiteral("text"));
    showPanelOver(kEditor);
    copy(record, true);
    EXPECT_EQ(windows.happened, (QStringList{QStringLiteral("shown"), QStringLiteral("hidden")}));
    EXPECT_EQ(keystrokes.sent(),
              (QList<testing::FakeKeystrokeSender::Sent>{{PasteKeystroke::ControlV, kEditor}}));
    EXPECT_EQ(runtime.lastError(), std::nullopt);
    EXPECT_TRUE(lastUse(record));
    EXPECT_EQ(changes, 1);
}

TEST_F(PasteBackTest, WhatCameToTheFrontJustBeforeThePanelCountsThoughItIsHeardOfLate)
{
    const RunningApplication kLater{QStringLiteral("Later"), QStringLiteral("later"), std::nullopt, 8, 80};
    const RunningApplication kOurs{QStringLiteral("Tessary"), applicationIdentifier(), std::nullopt,
                                   QCoreApplication::applicationPid(), 1};
    const ScreenshotRecord record = stored(QStringLiteral("text"));
    showPanelOver(std::nullopt);
    workspace.activate(kEditor);
    workspace.activate(kOurs);
    workspace.activate(kLater); // the panel is pinned, and the person looks elsewhere
    ASSERT_TRUE(eventually([&] { return workspace.frontmostApplication() == kLater; }));
    copy(record, true);
    EXPECT_EQ(workspace.activationRequests(), QList{kEditor});
}

TEST_F(PasteBackTest, AProgramThatHasQuitIsToldAndThePanelComesBack)
{
    const ScreenshotRecord record = stored(QStringLiteral("text"));
    showPanelOver(kEditor);
    workspace.refuseActivation();
    copy(record, true);
    EXPECT_EQ(runtime.lastError(),
              QStringLiteral("内容已复制，但无法切回原来的 App 完成粘贴。请确认辅助功能权限已授权。"));
    EXPECT_TRUE(windows.isVisible);
    EXPECT_EQ(pasteboard.text(), QStringLiteral("text"));
    EXPECT_TRUE(lastUse(record));
    // Still that program, although we were in front when the panel came back.
    copy(record, true);
    EXPECT_EQ(workspace.activationRequests(), (QList{kEditor, kEditor}));
}

TEST_F(PasteBackTest, WithoutLeaveToTypeItOnlyCopiesAndSaysHowToPaste)
{
    const ScreenshotRecord record = stored(QStringLiteral("text"));
    permissions.setState({true, false, false});
    showPanelOver(kEditor);
    copy(record, true);
    EXPECT_EQ(runtime.lastError(),
              QStringLiteral("内容已复制。授予辅助功能权限后可自动粘贴；现在请切换到目标 App 并按 ⌘ V。"));
    EXPECT_EQ(pasteboard.text(), QStringLiteral("text"));
    EXPECT_TRUE(windows.isVisible);
    EXPECT_TRUE(workspace.activationRequests().isEmpty());
    EXPECT_TRUE(keystrokes.sent().isEmpty());
    EXPECT_TRUE(lastUse(record));
}

TEST_F(PasteBackTest, ATextThatAListCutIsCopiedWhole)
{
    ScreenshotRecord record = stored(QString(100'000, u'x'));
    record.textContent.truncate(200);
    copy(record, false);
    EXPECT_EQ(pasteboard.text().size(), 100'000);
    const ScreenshotRecord gone = textRecord(QStringLiteral("no longer in the library"));
    copy(gone, false);
    EXPECT_EQ(pasteboard.text(), gone.textContent);
}

TEST_F(PasteBackTest, OurOwnWindowInFrontIsNotTheProgramToPasteInto)
{
    const ScreenshotRecord record = stored(QStringLiteral("text"));
    workspace.activate(kEditor);
    ASSERT_TRUE(eventually([&] { return workspace.frontmostApplication() == kEditor; }));
    RunningApplication ourselves;
    ourselves.processIdentifier = QCoreApplication::applicationPid();
    ourselves.bundleIdentifier = applicationIdentifier();
    workspace.activate(ourselves);
    ASSERT_TRUE(eventually([&] { return workspace.frontmostApplication() == ourselves; }));
    runtime.toggleQuickSearch();
    copy(record, true);
    EXPECT_EQ(workspace.activationRequests(), QList{kEditor});
}

TEST_F(PasteBackTest, WithNothingInFrontBeforeThereIsNowhereToPaste)
{
    const ScreenshotRecord record = stored(QStringLiteral("text"));
    showPanelOver(std::nullopt);
    copy(record, true);
    EXPECT_TRUE(runtime.lastError()->startsWith(QStringLiteral("内容已复制，但无法切回")));
    EXPECT_TRUE(workspace.activationRequests().isEmpty());
    EXPECT_TRUE(windows.isVisible);
}

TEST_F(PasteBackTest, OurOwnCopyIsSeenAgainAndCountedWithItsItem)
{
    const ScreenshotRecord record = stored(QStringLiteral("text"));
    copy(record, false);
    clock.advance(450ms);
    EXPECT_TRUE(eventually([&] {
        return await(runtime.store()->record(record.id))->duplicateCount == record.duplicateCount + 1;
    }));
}

TEST_F(PasteBackTest, TheEndOfTheProgramHandsTheClipboardOver)
{
    await(runtime.shutDown());
    EXPECT_EQ(pasteboard.handOvers(), 1);
}

} // namespace
} // namespace tessary
