#include "app/FileIntake.h"

#include "app/AppSettings.h"
#include "base/FlowSet.h"
#include "capture/FrontmostAppTracker.h"
#include "platform/testing/FakeScreenshotToolDefaults.h"
#include "platform/testing/FakeStandardFolders.h"
#include "platform/testing/FakeUserDefaults.h"
#include "platform/testing/FakeWorkspace.h"
#include "tests/component/capture/ImporterFixture.h"

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
    EXPECT_TRUE(changes.isEmpty());
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
