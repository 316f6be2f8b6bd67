#include "platform/testing/FakeApplicationIcons.h"
#include "platform/testing/FakeClock.h"
#include "platform/testing/FakeDirectoryWatcher.h"
#include "platform/testing/FakeGlobalHotKeyFacility.h"
#include "platform/testing/FakeKeystrokeSender.h"
#include "platform/testing/FakePasteboard.h"
#include "platform/testing/FakePermissions.h"
#include "platform/testing/FakeScreenshotToolDefaults.h"
#include "platform/testing/FakeStandardFolders.h"
#include "platform/testing/FakeUserDefaults.h"
#include "platform/testing/FakeWorkspace.h"

#include "tests/support/Await.h"

namespace tessary::testing {
namespace {

using namespace std::chrono_literals;

QCoro::Task<> sleepAndNote(FakeClock& clock, std::chrono::milliseconds duration, QList<double>& notes,
                           Date start)
{
    co_await clock.sleep(duration);
    notes.append(clock.now().secondsSince1970 - start.secondsSince1970);
}

TEST(FakeClockTest, ResumesSleepersInTheOrderOfTheirTimes)
{
    FakeClock clock;
    const Date start = clock.now();
    QList<double> notes;
    const auto late = sleepAndNote(clock, 2s, notes, start);
    const auto early = sleepAndNote(clock, 1s, notes, start);
    EXPECT_EQ(clock.sleeping(), 2);
    clock.advance(1500ms);
    EXPECT_EQ(notes, QList<double>{1.0});
    clock.advance(500ms);
    EXPECT_EQ(notes, (QList<double>{1.0, 2.0}));
    EXPECT_EQ(clock.now().secondsSince1970 - start.secondsSince1970, 2.0);
}

TEST(FakeClockTest, RepeatsUntilTheTimerIsDestroyed)
{
    FakeClock clock;
    int calls = 0;
    auto timer = clock.repeat(450ms, [&] { ++calls; });
    clock.advance(449ms);
    EXPECT_EQ(calls, 0);
    clock.advance(1ms);
    EXPECT_EQ(calls, 1);
    clock.advance(900ms);
    EXPECT_EQ(calls, 3);
    timer.reset();
    EXPECT_EQ(clock.timers(), 0);
    clock.advance(10s);
    EXPECT_EQ(calls, 3);
}

TEST(FakeClockTest, ATimerMayBeDestroyedInItsOwnCallback)
{
    FakeClock clock;
    std::unique_ptr<RepeatingTimer> timer;
    int calls = 0;
    timer = clock.repeat(1s, [&] {
        ++calls;
        timer.reset();
    });
    clock.advance(5s);
    EXPECT_EQ(calls, 1);
}

TEST(FakeClockTest, SettingTheDateMakesNothingFallDue)
{
    FakeClock clock;
    int calls = 0;
    const auto timer = clock.repeat(1s, [&] { ++calls; });
    clock.setNow(Date{2'000'000'000});
    EXPECT_EQ(clock.now(), Date{2'000'000'000});
    EXPECT_EQ(calls, 0);
}

TEST(FakePasteboardTest, AnswersForTheCurrentChangeOnlyAndNotAtOnce)
{
    FakePasteboard pasteboard;
    pasteboard.setText(QStringLiteral("一"));
    pasteboard.setText(QStringLiteral("二"));
    EXPECT_EQ(pasteboard.changeCount(), 2);
    auto reading = pasteboard.data(2, PasteboardType::Text);
    EXPECT_FALSE(reading.isReady());
    EXPECT_EQ(await(std::move(reading)), QStringLiteral("二").toUtf8());
    EXPECT_EQ(await(pasteboard.data(1, PasteboardType::Text)), std::nullopt);
    EXPECT_EQ(await(pasteboard.data(2, PasteboardType::Png)), std::nullopt);
}

TEST(FakePasteboardTest, KeepsWhatSomebodyWaitsForAcrossAChange)
{
    FakePasteboard pasteboard;
    pasteboard.hold();
    pasteboard.setText(QStringLiteral("old"));
    auto reading = pasteboard.data(1, PasteboardType::Text);
    EXPECT_TRUE(eventually([&] { return pasteboard.waiting() == 1; }));
    pasteboard.setText(QStringLiteral("new"));
    pasteboard.letGo();
    EXPECT_EQ(await(std::move(reading)), QByteArray("old"));
}

TEST(FakePasteboardTest, HasNothingLeftAfterARelease)
{
    FakePasteboard pasteboard;
    pasteboard.setText(QStringLiteral("gone"));
    pasteboard.release(1);
    EXPECT_EQ(await(pasteboard.data(1, PasteboardType::Text)), std::nullopt);
    EXPECT_EQ(pasteboard.released(), QList<qint64>{1});
}

TEST(FakePasteboardTest, AWriteIsAChangeThatCanBeReadAgain)
{
    FakePasteboard pasteboard;
    EXPECT_TRUE(await(pasteboard.writeText(QStringLiteral("ours"), PasteboardReach::Clipboard)));
    EXPECT_EQ(pasteboard.changeCount(), 1);
    EXPECT_EQ(await(pasteboard.data(1, PasteboardType::Text)), "ours");
    EXPECT_TRUE(pasteboard.selection().isEmpty());
    EXPECT_FALSE(await(pasteboard.writeImage(QStringLiteral("/nowhere.png"), PasteboardReach::Clipboard)));
    pasteboard.refuseWrites();
    EXPECT_FALSE(
        await(pasteboard.writeText(QStringLiteral("refused"), PasteboardReach::ClipboardAndSelection)));
    EXPECT_EQ(pasteboard.text(), QStringLiteral("ours"));
    EXPECT_EQ(pasteboard.changeCount(), 1);
}

TEST(FakeKeystrokeSenderTest, TypesWhatTheProgramTakes)
{
    FakeKeystrokeSender keystrokes;
    RunningApplication terminal;
    terminal.isTerminal = true;
    EXPECT_EQ(await(keystrokes.pasteKeystroke({})), PasteKeystroke::ControlV);
    EXPECT_EQ(await(keystrokes.pasteKeystroke(terminal)), PasteKeystroke::ShiftInsert);
    EXPECT_TRUE(await(keystrokes.send(PasteKeystroke::ShiftInsert, terminal)));
    keystrokes.stopTyping();
    EXPECT_FALSE(await(keystrokes.send(PasteKeystroke::ShiftInsert, terminal)));
    EXPECT_EQ(keystrokes.sent().size(), 1);
}

TEST(FakeWorkspaceTest, BringsAWindowToTheFrontUnlessToldOtherwise)
{
    FakeWorkspace workspace;
    RunningApplication application;
    application.window = 7;
    EXPECT_FALSE(await(workspace.isActive(application)));
    workspace.delayActivation();
    EXPECT_TRUE(await(workspace.requestActivation(application)));
    EXPECT_FALSE(await(workspace.isActive(application)));
    workspace.setFrontmost(application);
    EXPECT_TRUE(await(workspace.isActive(application)));
    workspace.refuseActivation();
    EXPECT_FALSE(await(workspace.requestActivation(application)));
    EXPECT_EQ(workspace.activationRequests().size(), 2);
}

TEST(FakeWorkspaceTest, TellsOfAnActivationInTheNextTurn)
{
    FakeWorkspace workspace;
    RunningApplication editor;
    editor.bundleIdentifier = QStringLiteral("org.example.Editor");
    QList<RunningApplication> told;
    QObject::connect(&workspace, &Workspace::applicationActivated,
                     [&](const RunningApplication& application) { told.append(application); });
    workspace.activate(editor);
    EXPECT_TRUE(told.isEmpty());
    EXPECT_TRUE(eventually([&] { return told == QList{editor}; }));
    EXPECT_EQ(workspace.frontmostApplication(), editor);
}

TEST(FakeGlobalHotKeyFacilityTest, RefusesACombinationThatIsTakenByOthersOrByOurselves)
{
    FakeGlobalHotKeyFacility facility;
    facility.take({31, 6144});
    EXPECT_EQ(await(facility.registerHotKey(31, 6144, {1, 2})), std::nullopt);
    const auto reference = await(facility.registerHotKey(49, 2048, {1, 1}));
    ASSERT_TRUE(reference);
    EXPECT_EQ(await(facility.registerHotKey(49, 2048, {1, 3})), std::nullopt);
    facility.unregister(*reference);
    EXPECT_TRUE(await(facility.registerHotKey(49, 2048, {1, 3})));
}

TEST(FakeGlobalHotKeyFacilityTest, HandsOverAPressLater)
{
    FakeGlobalHotKeyFacility facility;
    QList<quint32> pressed;
    facility.setHandler([&](HotKeyIdentifier identifier) { pressed.append(identifier.id); });
    ASSERT_TRUE(await(facility.registerHotKey(49, 2048, {1, 7})));
    facility.press({49, 2048});
    facility.press({50, 2048});
    EXPECT_TRUE(pressed.isEmpty());
    EXPECT_TRUE(eventually([&] { return !pressed.isEmpty(); }));
    EXPECT_EQ(pressed, QList<quint32>{7});
}

TEST(FakeDirectoryWatcherTest, AnnouncesChangesToLivingWatchesAndFailsOnDemand)
{
    FakeDirectoryWatcher watcher;
    int first = 0;
    int second = 0;
    const QString folder = QStringLiteral("/shots");
    const auto counting = [&](int& count) {
        DirectoryWatchRequest request;
        request.folder = folder;
        request.changed = [&count](DirectoryChange) { ++count; };
        return request;
    };
    auto gone = await(watcher.watch(counting(first)));
    const auto kept = await(watcher.watch(counting(second)));
    watcher.announceChange(folder);
    gone.reset();
    EXPECT_TRUE(eventually([&] { return second == 1; }));
    EXPECT_EQ(first, 0);
    EXPECT_EQ(watcher.watched(), QStringList{folder});
    watcher.failWith(folder, FileError::Case::ReadNoSuchFile);
    EXPECT_THROW(await(watcher.watch(counting(first))), FileError);
}

TEST(FakesTest, AnswerAsTold)
{
    FakeApplicationIcons icons;
    const QUrl entry(QStringLiteral("file:///apps/editor.desktop"));
    icons.add(entry, Qt::red);
    EXPECT_EQ(await(icons.icon(entry, 128)).size(), QSize(128, 128));
    EXPECT_TRUE(await(icons.icon(QUrl(), 128)).isNull());

    FakePermissions permissions;
    permissions.setState({.screenRecording = true});
    EXPECT_EQ(await(permissions.probe()), (PermissionState{.screenRecording = true}));

    FakeStandardFolders folders;
    folders.failWith(FileError::Case::ReadNoPermission);
    EXPECT_THROW((void)folders.applicationSupport(), FileError);

    FakeScreenshotToolDefaults tool;
    EXPECT_EQ(tool.location(), std::nullopt);

    FakeUserDefaults defaults;
    defaults.set(QStringLiteral("key"), 3);
    EXPECT_EQ(defaults.integer(QStringLiteral("key")), 3);
    EXPECT_EQ(defaults.written(), QStringList{QStringLiteral("key")});
}

} // namespace
} // namespace tessary::testing
