#include "app/FileIntake.h"

#include "app/AppSettings.h"
#include "base/FlowSet.h"
#include "capture/FrontmostAppTracker.h"
#include "platform/testing/FakeScreenshotToolDefaults.h"
#include "platform/testing/FakeStandardFolders.h"
#include "platform/testing/FakeUserDefaults.h"
#include "platform/testing/FakeWorkspace.h"
#include "tests/component/capture/ImporterFixture.h"
#include "tests/support/HungFolder.h"

#include <sys/stat.h>

namespace tessary {
namespace {

using namespace std::chrono_literals;
using testing::await;
using Outcome = FileImport::Outcome;
using Report = ScreenshotDirectoryMonitor::Report;

class FileIntakeTest : public testing::ImporterFixture {
protected:
    FileIntakeTest()
    {
        QObject::connect(&intake, &FileIntake::libraryChanged, &intake,
                         [this](const LibraryChange& change) { changes.append(change); });
        QObject::connect(&intake, &FileIntake::imported, &intake, [this] { ++imports; });
        QObject::connect(&intake, &FileIntake::failed, &intake,
                         [this](const QString& message) { failures.append(message); });
    }
    FileImport take(const QString& path) { return run(intake.importFile(QFile::encodeName(path))); }
    void discoverAgain(const QString& path)
    {
        intake.importDiscoveredFile(QFile::encodeName(path), Report::Change);
    }
    void discover(const QString& path, Report report = Report::Change)
    {
        intake.importDiscoveredFile(QFile::encodeName(path), report);
        EXPECT_TRUE(settled());
    }
    bool settled()
    {
        return testing::eventually([this] {
            letTimePass();
            return flows.isEmpty();
        });
    }
    /// That program is in front as from now; files that tests write are made at the real time.
    void bringToFront(const QString& identifier)
    {
        clock.setNow(Date::fromDateTime(QDateTime::currentDateTimeUtc()));
        workspace.activate({identifier, identifier, std::nullopt, 1, 7});
        ASSERT_TRUE(testing::eventually([&] { return !tracker->samples().isEmpty(); }));
    }

    testing::FakeUserDefaults defaults;
    testing::FakeScreenshotToolDefaults screenshotTool;
    testing::FakeStandardFolders folders{folder.path(), folder.path()};
    AppSettings settings{defaults, screenshotTool, folders};
    testing::FakeWorkspace workspace;
    std::unique_ptr<FrontmostAppTracker> tracker =
        await(FrontmostAppTracker::open(folder.file(QStringLiteral("FrontmostApps.json")), workspace, clock));
    FlowSet flows{[](const std::exception& error) { ADD_FAILURE() << error.what(); }};
    FileIntake intake{settings, *tracker, importer, flows};
    QList<LibraryChange> changes;
    QStringList failures;
    int imports = 0;
};

TEST_F(FileIntakeTest, AFileThatAPersonNamesIsTakenUnderWhateverName)
{
    bringToFront(QStringLiteral("editor"));
    const QString path = write(QStringLiteral("holiday.JPG"), "pixels");
    const FileImport result = take(path);
    EXPECT_EQ(result.outcome, Outcome::Added);
    ASSERT_EQ(listed().size(), 1);
    EXPECT_EQ(result.id, listed().first().id);
    EXPECT_EQ(listed().first().originalPath, path);
    EXPECT_EQ(listed().first().sourceBundleIdentifier, QStringLiteral("editor"));
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes.first().kind, LibraryChange::Kind::Added);
    EXPECT_EQ(changes.first().items, QList{*result.id});
    EXPECT_EQ(imports, 1);
}

TEST_F(FileIntakeTest, ContentThatIsKnownIsCountedAndNamesItsItem)
{
    const FileImport first = take(write(QStringLiteral("a.png"), "pixels"));
    const FileImport second = take(write(QStringLiteral("b.png"), "pixels"));
    EXPECT_EQ(second.outcome, Outcome::Known);
    EXPECT_EQ(second.id, first.id);
    EXPECT_EQ(listed().first().duplicateCount, 2);
    ASSERT_EQ(changes.size(), 2);
    EXPECT_EQ(changes.last().kind, LibraryChange::Kind::Repeated);
    EXPECT_EQ(imports, 2);
}

TEST_F(FileIntakeTest, AKnownScreenshotOfTheFirstScanIsNoChange)
{
    const QString path = write(QStringLiteral("Screenshot.png"), "pixels");
    ASSERT_EQ(take(path).outcome, Outcome::Added);
    discover(path, Report::InitialScan);
    EXPECT_EQ(listed().first().duplicateCount, 1);
    EXPECT_EQ(changes.size(), 1);
}

TEST_F(FileIntakeTest, ExcludedFoldersAndProgramsAreLeftOut)
{
    bringToFront(QStringLiteral("vault"));
    settings.setExcludedDirectories({folder.file(QStringLiteral("private/"))});
    ASSERT_TRUE(QDir().mkpath(folder.file(QStringLiteral("private/inner"))));
    const QString path = write(QStringLiteral("private/inner/a.png"), "pixels");
    EXPECT_EQ(take(path).outcome, Outcome::Excluded);
    EXPECT_EQ(take(folder.file(QStringLiteral("x/../private/./inner/a.png"))).outcome, Outcome::Excluded);
    settings.setExcludedBundleIdentifiers({QStringLiteral("vault")});
    EXPECT_EQ(take(write(QStringLiteral("b.png"), "more")).outcome, Outcome::Excluded);
    discover(path);
    EXPECT_TRUE(listed().isEmpty());
    EXPECT_TRUE(changes.isEmpty());
    EXPECT_EQ(imports, 0);
}

TEST_F(FileIntakeTest, WhatIsNoPictureFileIsNotAccepted)
{
    EXPECT_EQ(take(write(QStringLiteral("notes.txt"), "text")).outcome, Outcome::NotAccepted);
    ASSERT_TRUE(QDir().mkpath(folder.file(QStringLiteral("folder.png"))));
    EXPECT_EQ(take(folder.file(QStringLiteral("folder.png"))).outcome, Outcome::NotAccepted);
    const QString pipe = folder.file(QStringLiteral("pipe.png"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_EQ(take(pipe).outcome, Outcome::NotAccepted);
    EXPECT_TRUE(changes.isEmpty());
}

TEST_F(FileIntakeTest, AScreenshotThatIsReportedAgainWhileItIsImportedIsOneCapture)
{
    const QString path = write(QStringLiteral("Screenshot.png"), "half");
    discoverAgain(path);
    discoverAgain(path);
    ASSERT_TRUE(testing::eventually([&] { return clock.sleeping() == 1; }));
    write(QStringLiteral("Screenshot.png"), "and the rest");
    discoverAgain(path);
    discoverAgain(path);
    ASSERT_TRUE(settled());
    ASSERT_EQ(listed().size(), 1);
    EXPECT_EQ(listed().first().duplicateCount, 1);
    EXPECT_EQ(contents(listed().first().libraryPath), "and the rest");
    discover(path);
    EXPECT_EQ(listed().first().duplicateCount, 1);
    EXPECT_EQ(changes.size(), 1);
}

TEST_F(FileIntakeTest, AScreenshotThatChangedAfterItWasReadIsTakenAgain)
{
    const QString path = write(QStringLiteral("Screenshot.png"), "first");
    discover(path);
    write(QStringLiteral("Screenshot.png"), "second, longer");
    discover(path);
    EXPECT_EQ(listed().size(), 2);
}

TEST_F(FileIntakeTest, AScreenshotThatVanishesIsPassedOverInSilence)
{
    const QString path = write(QStringLiteral("Screenshot.png"), "pixels");
    discoverAgain(path);
    ASSERT_TRUE(testing::eventually([&] { return clock.sleeping() == 1; }));
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_TRUE(settled());
    discover(path);
    EXPECT_TRUE(failures.isEmpty());
    EXPECT_TRUE(listed().isEmpty());
    EXPECT_TRUE(filesIn(paths.originals).isEmpty());
    EXPECT_TRUE(strayFiles().isEmpty());
}

TEST_F(FileIntakeTest, NeverMoreThanThirtyTwoDiscoveredFilesAreImportedAtOnce)
{
    for (int i = 0; i < 200; ++i)
        discoverAgain(write(QStringLiteral("Screenshot %1.png").arg(i), QByteArray::number(i)));
    int most = 0;
    ASSERT_TRUE(testing::eventually([&] {
        most = std::max(most, clock.sleeping());
        if (clock.sleeping() == std::min(32, 200 - static_cast<int>(listed().size())))
            letTimePass();
        return flows.isEmpty();
    }));
    EXPECT_EQ(most, 32);
    EXPECT_EQ(listed().size(), 200);
}

TEST_F(FileIntakeTest, WhatWaitsIsForgottenWhenTheFolderIsNoLongerWatched)
{
    for (int i = 0; i < 100; ++i)
        discoverAgain(write(QStringLiteral("Screenshot %1.png").arg(i), QByteArray::number(i)));
    intake.forgetDiscovered();
    ASSERT_TRUE(settled());
    EXPECT_EQ(listed().size(), 32);
    for (int i = 0; i < 100; ++i)
        discoverAgain(folder.file(QStringLiteral("Screenshot %1.png").arg(i)));
    ASSERT_TRUE(settled());
    EXPECT_EQ(listed().size(), 100);
    EXPECT_EQ(changes.size(), 100) << "what was read is not read again";
}

TEST_F(FileIntakeTest, AFolderThatHangsHoldsUpNeitherAnotherOneNorTheEnd)
{
    ASSERT_TRUE(QDir().mkpath(folder.file(QStringLiteral("hung"))));
    const testing::HungFolder hung(folder.file(QStringLiteral("hung")));
    if (!hung.isHanging())
        GTEST_SKIP() << "no file system that hangs can be mounted here: " << qPrintable(hung.reason());
    discoverAgain(folder.file(QStringLiteral("hung/Screenshot 1.png")));
    intake.forgetDiscovered();
    discoverAgain(write(QStringLiteral("Screenshot 2.png"), "pixels"));
    EXPECT_TRUE(testing::eventually([&] {
        letTimePass();
        return listed().size() == 1;
    }));
    EXPECT_EQ(take(write(QStringLiteral("named.png"), "more")).outcome, Outcome::Added);
    EXPECT_FALSE(flows.isEmpty());
    intake.giveUp();
    EXPECT_TRUE(settled());
    EXPECT_TRUE(failures.isEmpty());
}

TEST_F(FileIntakeTest, ANamedFileThatIsMissingOrBrokenIsAnErrorOfItsCaller)
{
    try {
        take(folder.file(QStringLiteral("missing.png")));
        FAIL();
    } catch (const FileError& error) {
        EXPECT_EQ(error.which(), FileError::Case::ReadNoSuchFile);
    }
    codec.defaultSize = QSize();
    EXPECT_THROW(take(write(QStringLiteral("broken.png"), "text")), FileError);
    EXPECT_TRUE(failures.isEmpty());
    discover(folder.file(QStringLiteral("broken.png")));
    ASSERT_EQ(failures.size(), 1);
    EXPECT_TRUE(failures.first().startsWith(QStringLiteral("无法导入截图：")));
}

} // namespace
} // namespace tessary
