#include "tests/component/capture/ImporterFixture.h"

#include "base/ContentHash.h"
#include "store/StoreError.h"

namespace tessary {
namespace {

class ScreenshotImporterTest : public testing::ImporterFixture {};

TEST_F(ScreenshotImporterTest, ATextBecomesAnItem)
{
    icons.add(*editor.bundleURL, Qt::blue);
    const auto record = importText(QStringLiteral("  第一行 \n第二行"), editor);
    ASSERT_TRUE(record);
    EXPECT_EQ(listed(), QList{*record});
    EXPECT_EQ(record->contentHash, contentHash(QStringLiteral("  第一行 \n第二行").toUtf8()));
    EXPECT_EQ(record->filename, QStringLiteral("第一行"));
    EXPECT_EQ(record->generatedTitle, QStringLiteral("第一行"));
    EXPECT_EQ(record->fileType, QStringLiteral("text"));
    EXPECT_EQ(record->textContent, QStringLiteral("  第一行 \n第二行"));
    EXPECT_EQ(record->fileSize, 22);
    EXPECT_TRUE(record->originalPath.isEmpty());
    EXPECT_TRUE(record->libraryPath.isEmpty());
    EXPECT_EQ(record->capturedAt, clock.now());
    EXPECT_EQ(record->importedAt, record->capturedAt);
    EXPECT_EQ(record->ocrStatus, OCRStatus::Complete);
    EXPECT_EQ(record->contentType, ClipboardContentType::Text);
    EXPECT_EQ(record->duplicateCount, 1);
    EXPECT_EQ(record->lastUsedAt, std::nullopt);
    EXPECT_EQ(record->sourceAppName, editor.localizedName);
    EXPECT_EQ(record->sourceBundleIdentifier, editor.bundleIdentifier);
    const QImage icon(record->sourceAppIconPath.value_or(QString()));
    EXPECT_EQ(icon.size(), QSize(128, 128));
    EXPECT_EQ(*record->sourceAppIconPath,
              paths.appIcons + u'/' + identifierText(record->id) + QStringLiteral(".png"));
    EXPECT_TRUE(strayFiles().isEmpty());
}

TEST_F(ScreenshotImporterTest, TheTitleIsTheFirstLineThatIsNotBlank)
{
    const auto record = importText(QStringLiteral("\n\n   hello world  "));
    EXPECT_EQ(record->filename, QStringLiteral("hello world"));
    EXPECT_EQ(record->generatedTitle, QStringLiteral("hello world"));
}

TEST_F(ScreenshotImporterTest, ABlankTextIsStoredWithoutATitle)
{
    const auto record = importText(QStringLiteral("   \n "));
    ASSERT_TRUE(record);
    EXPECT_EQ(record->filename, QStringLiteral("剪贴板文字"));
    EXPECT_EQ(record->generatedTitle, std::nullopt);
    EXPECT_EQ(listed().size(), 1);
}

TEST_F(ScreenshotImporterTest, ALongFirstLineGivesItsFirstEightyCharacters)
{
    EXPECT_EQ(importText(QString(100, u'a'))->filename, QString(80, u'a'));
}

TEST_F(ScreenshotImporterTest, ARepeatedTextIsCounted)
{
    const auto first = importText(QStringLiteral("again"));
    clock.advance(std::chrono::seconds(5));
    EXPECT_EQ(importText(QStringLiteral("again")), std::nullopt);
    ASSERT_EQ(listed().size(), 1);
    EXPECT_EQ(listed().first().id, first->id);
    EXPECT_EQ(listed().first().duplicateCount, 2);
    EXPECT_EQ(listed().first().lastUsedAt, clock.now());
}

TEST_F(ScreenshotImporterTest, TheSameTextTwiceAtOnceIsOneItemCountedTwice)
{
    auto first = importer.importClipboardPayload(ClipboardPayload(QStringLiteral("twice")), std::nullopt);
    auto second = importer.importClipboardPayload(ClipboardPayload(QStringLiteral("twice")), std::nullopt);
    EXPECT_TRUE(run(std::move(first)));
    EXPECT_FALSE(run(std::move(second)));
    ASSERT_EQ(listed().size(), 1);
    EXPECT_EQ(listed().first().duplicateCount, 2);
}

TEST_F(ScreenshotImporterTest, ACopiedPictureIsKeptByteForByteUnderItsPrescribedName)
{
    codec.defaultSize = QSize(1200, 800);
    const auto record = importPicture("picture bytes");
    ASSERT_TRUE(record);
    const QString id = identifierText(record->id);
    EXPECT_EQ(record->filename, QStringLiteral("剪贴板图片 2026-03-05 09.07.03.png"));
    EXPECT_EQ(record->originalPath, paths.root + u'/' + record->filename);
    EXPECT_EQ(record->libraryPath, paths.originals + u'/' + id + QStringLiteral(".png"));
    EXPECT_EQ(record->thumbnailPath, paths.thumbnails + u'/' + id + QStringLiteral(".jpg"));
    EXPECT_EQ(contents(record->libraryPath), "picture bytes");
    EXPECT_EQ(QImage(*record->thumbnailPath).size(), QSize(480, 320));
    EXPECT_EQ(record->contentHash, contentHash("picture bytes"));
    EXPECT_EQ(record->pixelWidth, 1200);
    EXPECT_EQ(record->pixelHeight, 800);
    EXPECT_EQ(record->fileSize, 13);
    EXPECT_EQ(record->fileType, QStringLiteral("png"));
    EXPECT_TRUE(strayFiles().isEmpty()) << qPrintable(strayFiles().join(u' '));
    ASSERT_EQ(listed().size(), 1);
    EXPECT_EQ(listed().first().lastUsedAt, clock.now());
}

TEST_F(ScreenshotImporterTest, TwoPicturesOfOneSecondAreBothKeptUnderTheSameName)
{
    auto first = importer.importClipboardPayload(ClipboardPayload(QByteArray("one")), std::nullopt);
    auto second = importer.importClipboardPayload(ClipboardPayload(QByteArray("two")), std::nullopt);
    const auto firstRecord = run(std::move(first));
    const auto secondRecord = run(std::move(second));
    ASSERT_TRUE(firstRecord && secondRecord);
    EXPECT_EQ(firstRecord->filename, secondRecord->filename);
    EXPECT_EQ(firstRecord->originalPath, secondRecord->originalPath);
    EXPECT_EQ(contents(firstRecord->libraryPath), "one");
    EXPECT_EQ(contents(secondRecord->libraryPath), "two");
    EXPECT_TRUE(strayFiles().isEmpty());
}

TEST_F(ScreenshotImporterTest, TheSamePictureTwiceRaisesTheCount)
{
    importPicture("same");
    EXPECT_EQ(importPicture("same"), std::nullopt);
    ASSERT_EQ(listed().size(), 1);
    EXPECT_EQ(listed().first().duplicateCount, 2);
    EXPECT_EQ(filesIn(paths.originals).size(), 1);
}

TEST_F(ScreenshotImporterTest, AFileMetInTheFirstScanAgainChangesNothing)
{
    const QString path = write(QStringLiteral("shot.png"), "pixels");
    const auto record = importFile(path, CountDuplicate::No);
    ASSERT_TRUE(record);
    EXPECT_EQ(importFile(path, CountDuplicate::No), std::nullopt);
    EXPECT_EQ(listed(), QList{*record});
    EXPECT_EQ(importFile(path, CountDuplicate::Yes), std::nullopt);
    EXPECT_EQ(listed().first().duplicateCount, 2);
}

TEST_F(ScreenshotImporterTest, ExtensionsAreComparedInLowerCase)
{
    const QString path = write(QStringLiteral("shot.PNG"), "pixels");
    const auto record = importFile(path);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->fileType, QStringLiteral("png"));
    EXPECT_EQ(record->filename, QStringLiteral("shot.PNG"));
    EXPECT_EQ(record->originalPath, path);
    EXPECT_TRUE(record->libraryPath.endsWith(identifierText(record->id) + QStringLiteral(".png")));
    EXPECT_TRUE(QFile::exists(path));
    EXPECT_EQ(importFile(write(QStringLiteral("shot.gif"), "frames")), std::nullopt);
}

TEST_F(ScreenshotImporterTest, AFileThatIsNoPictureIsAnErrorAndLeavesNothing)
{
    codec.defaultSize = QSize();
    try {
        importFile(write(QStringLiteral("shot.png"), "text"));
        FAIL();
    } catch (const FileError& error) {
        EXPECT_EQ(error.which(), FileError::Case::ReadCorruptFile);
    }
    EXPECT_TRUE(filesIn(paths.originals).isEmpty());
    EXPECT_TRUE(listed().isEmpty());
}

TEST_F(ScreenshotImporterTest, ACopiedPictureThatIsNoneLeavesNoTemporary)
{
    codec.defaultSize = QSize();
    EXPECT_THROW(importPicture("not a png"), FileError);
    EXPECT_TRUE(strayFiles().isEmpty());
}

TEST_F(ScreenshotImporterTest, ADecoderThatCrashesCostsTheThumbnailOnly)
{
    codec.pixelSizeFailure = ImageError::Case::WorkerFailed;
    codec.thumbnailFailure = ImageError::Case::WorkerTimedOut;
    const auto record = importPicture("too much");
    ASSERT_TRUE(record);
    EXPECT_EQ(record->thumbnailPath, std::nullopt);
    EXPECT_EQ(record->pixelWidth, 0);
    EXPECT_EQ(contents(record->libraryPath), "too much");
}

TEST_F(ScreenshotImporterTest, AnEmptyFileIsRefusedAfterTwelveRounds)
{
    const Date start = clock.now();
    EXPECT_THROW(importFile(write(QStringLiteral("shot.png"), "")), FileError);
    EXPECT_EQ(clock.now(), start.addingSeconds(3));
}

TEST_F(ScreenshotImporterTest, AMissingFileIsRefused)
{
    EXPECT_THROW(importFile(folder.file(QStringLiteral("gone.png"))), FileError);
}

TEST_F(ScreenshotImporterTest, AFileThatStaysAsItIsIsTakenAfterHalfASecond)
{
    const Date start = clock.now();
    EXPECT_TRUE(importFile(write(QStringLiteral("shot.png"), "still")));
    EXPECT_EQ(clock.now(), start.addingSeconds(0.5));
}

TEST_F(ScreenshotImporterTest, AFileThatKeepsGrowingIsTakenAfterTwelveRounds)
{
    const QString path = write(QStringLiteral("shot.png"), "0");
    const Date start = clock.now();
    auto task = importer.importFile(path, std::nullopt, CountDuplicate::Yes);
    int rounds = 0;
    ASSERT_TRUE(testing::eventually([&] {
        if (clock.sleeping() == 0)
            return rounds == 12;
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::Append));
        file.write("more");
        file.close();
        ++rounds;
        clock.advance(std::chrono::milliseconds(250));
        return rounds == 12;
    }));
    const auto record = run(std::move(task));
    ASSERT_TRUE(record);
    EXPECT_EQ(clock.now(), start.addingSeconds(3));
    EXPECT_EQ(record->fileSize, 1 + 12 * 4);
}

TEST_F(ScreenshotImporterTest, OtherImportsGoOnWhileOneWaits)
{
    auto waiting =
        importer.importFile(write(QStringLiteral("shot.png"), "slow"), std::nullopt, CountDuplicate::Yes);
    ASSERT_TRUE(testing::eventually([&] { return clock.sleeping() == 1; }));
    EXPECT_TRUE(testing::await(
        importer.importClipboardPayload(ClipboardPayload(QStringLiteral("text")), std::nullopt)));
    EXPECT_TRUE(run(std::move(waiting)));
}

TEST_F(ScreenshotImporterTest, APictureThatCannotBeCopiedLeavesNoThumbnailEither)
{
    ASSERT_TRUE(QDir().rmdir(paths.originals));
    EXPECT_THROW(importPicture("homeless"), FileError);
    EXPECT_TRUE(codec.requests.last().startsWith(QStringLiteral("writeThumbnail")));
    EXPECT_TRUE(filesIn(paths.thumbnails).isEmpty());
    EXPECT_TRUE(strayFiles().isEmpty());
    EXPECT_TRUE(listed().isEmpty());
}

TEST_F(ScreenshotImporterTest, WhenTheStoreRefusesTheItemItsFilesAreRemoved)
{
    icons.add(*editor.bundleURL, Qt::blue);
    // The content is in the projection only: the record store does not know it, the insertion fails.
    ScreenshotRecord stray;
    stray.id = QUuid::createUuid();
    stray.contentHash = contentHash("known after all");
    Projection(SQLiteStore::projectionPath(paths.database)).insertProjection(stray);
    EXPECT_EQ(run(importer.importClipboardPayload(ClipboardPayload(QByteArray("known after all")), editor)),
              std::nullopt);
    EXPECT_TRUE(filesIn(paths.originals).isEmpty());
    EXPECT_TRUE(filesIn(paths.thumbnails).isEmpty());
    EXPECT_TRUE(filesIn(paths.appIcons).isEmpty());
    EXPECT_TRUE(strayFiles().isEmpty());
}

TEST_F(ScreenshotImporterTest, WhenTheStoreFailsTheFilesAreRemovedAndTheErrorHandedOn)
{
    SQLiteConnection(SQLiteStore::projectionPath(paths.database)).run("DROP TABLE screenshots_fts_v5");
    EXPECT_THROW(importPicture("lost"), StoreError);
    EXPECT_TRUE(filesIn(paths.originals).isEmpty());
    EXPECT_TRUE(filesIn(paths.thumbnails).isEmpty());
    EXPECT_TRUE(strayFiles().isEmpty());
}

TEST_F(ScreenshotImporterTest, AProgramWithoutAnIconLeavesNone)
{
    const auto record = importText(QStringLiteral("iconless"), editor);
    EXPECT_EQ(record->sourceAppIconPath, std::nullopt);
    const SourceApplicationSnapshot nameless{QStringLiteral("Terminal"), QStringLiteral("xterm"),
                                             std::nullopt};
    EXPECT_EQ(importText(QStringLiteral("without a file"), nameless)->sourceAppIconPath, std::nullopt);
    EXPECT_EQ(icons.asked().size(), 1);
}

} // namespace
} // namespace tessary
