#include "tests/component/capture/ImporterFixture.h"

#include "capture/ClipboardImageName.h"
#include "capture/ImportJournal.h"

namespace tessary {
namespace {

/// What is found at start-up after the program was killed.
class ImportRecoveryTest : public testing::ImporterFixture {
protected:
    bool recover()
    {
        const std::function<std::optional<SourceApplicationSnapshot>(Date)> sourceAt = [this](Date) {
            return std::optional(editor);
        };
        return run(importer.recover(sourceAt));
    }
    QString leave(const QString& fileName, const QByteArray& bytes)
    {
        return write(QStringLiteral("Tessary/") + fileName, bytes);
    }
    const QString name = clipboardImageName(QDateTime(QDate(2026, 3, 5), QTime(9, 7, 2)));
};

TEST_F(ImportRecoveryTest, WithNothingLeftItChangesNothing)
{
    EXPECT_FALSE(recover());
}

TEST_F(ImportRecoveryTest, APictureWhoseImportHadNotBegunIsImported)
{
    leave(name, "half imported");
    EXPECT_TRUE(recover());
    ASSERT_EQ(listed().size(), 1);
    EXPECT_EQ(listed().first().filename, name);
    EXPECT_EQ(listed().first().originalPath, paths.root + u'/' + name);
    EXPECT_EQ(listed().first().sourceAppName, editor.localizedName);
    EXPECT_TRUE(listed().first().lastUsedAt.has_value());
    EXPECT_TRUE(strayFiles().isEmpty());
}

TEST_F(ImportRecoveryTest, TheSecondPictureOfASecondKeepsThePrescribedName)
{
    leave(name, "one");
    leave(numberedImageName(name, 2), "two");
    EXPECT_TRUE(recover());
    ASSERT_EQ(listed().size(), 2);
    for (const ScreenshotRecord& record : listed())
        EXPECT_EQ(record.originalPath, paths.root + u'/' + name);
    EXPECT_TRUE(strayFiles().isEmpty());
}

TEST_F(ImportRecoveryTest, APictureThatWasListedAlreadyOnlyLosesItsTemporary)
{
    const auto record = importPicture("listed");
    leave(name, "listed");
    EXPECT_FALSE(recover());
    ASSERT_EQ(listed().size(), 1);
    EXPECT_EQ(listed().first().duplicateCount, 1);
    EXPECT_TRUE(QFile::exists(record->libraryPath));
    EXPECT_TRUE(strayFiles().isEmpty());
}

TEST_F(ImportRecoveryTest, ATemporaryThatIsNoPictureIsRemoved)
{
    codec.defaultSize = QSize();
    leave(name, "garbage");
    EXPECT_FALSE(recover());
    EXPECT_TRUE(strayFiles().isEmpty());
}

TEST_F(ImportRecoveryTest, FilesOfAnItemThatNeverCameToBeAreRemoved)
{
    const QUuid id = QUuid::createUuid();
    ImportJournal(paths).begin(id);
    leave(QStringLiteral("Originals/") + identifierText(id) + QStringLiteral(".png"), "orphan");
    leave(QStringLiteral("Originals/.half.tmp"), "or");
    recover();
    EXPECT_TRUE(filesIn(paths.originals).isEmpty());
    EXPECT_TRUE(strayFiles().isEmpty());
}

TEST_F(ImportRecoveryTest, FilesOfAnItemThatIsListedStay)
{
    const auto record = importPicture("kept");
    ImportJournal(paths).begin(record->id);
    recover();
    EXPECT_EQ(contents(record->libraryPath), "kept");
    EXPECT_TRUE(QFile::exists(*record->thumbnailPath));
    EXPECT_TRUE(strayFiles().isEmpty());
}

TEST_F(ImportRecoveryTest, OtherPicturesInTheRootAreNotTouched)
{
    leave(QStringLiteral("holiday.png"), "mine");
    EXPECT_FALSE(recover());
    EXPECT_EQ(strayFiles(), QStringList{QStringLiteral("holiday.png")});
}

} // namespace
} // namespace tessary
