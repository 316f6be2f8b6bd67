#include "capture/ImportJournal.h"

#include "store/ScreenshotRecord.h"
#include "tests/support/TemporaryFolder.h"

#include <QDir>
#include <QFile>

namespace tessary {
namespace {

class ImportJournalTest : public ::testing::Test {
protected:
    static void touch(const QString& path)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    QStringList filesIn(const QString& path) const
    {
        return QDir(path).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    testing::TemporaryFolder folder;
    AppPaths paths = AppPaths::create(folder.file(QStringLiteral("Tessary")));
    ImportJournal journal{paths};
};

TEST_F(ImportJournalTest, RemembersWhatWasBegunUntilItEnds)
{
    const QUuid first = QUuid::createUuid();
    const QUuid second = QUuid::createUuid();
    journal.begin(first);
    journal.begin(first);
    journal.begin(second);
    journal.end(second);
    EXPECT_EQ(ImportJournal(paths).interrupted(), QList{first});
    journal.end(first);
    EXPECT_TRUE(journal.interrupted().isEmpty());
    EXPECT_TRUE(filesIn(paths.root).isEmpty());
}

TEST_F(ImportJournalTest, DiscardingRemovesTheFilesOfThatItemOnly)
{
    const QUuid gone = QUuid::createUuid();
    const QUuid kept = QUuid::createUuid();
    for (const QUuid& id : {gone, kept}) {
        journal.begin(id);
        touch(paths.originals + u'/' + identifierText(id) + QStringLiteral(".jpeg"));
        touch(paths.thumbnails + u'/' + identifierText(id) + QStringLiteral(".jpg"));
        touch(paths.appIcons + u'/' + identifierText(id) + QStringLiteral(".png"));
    }
    journal.discard(gone);
    EXPECT_EQ(journal.interrupted(), QList{kept});
    EXPECT_EQ(filesIn(paths.originals), QStringList{identifierText(kept) + QStringLiteral(".jpeg")});
    EXPECT_EQ(filesIn(paths.thumbnails).size(), 1);
    EXPECT_EQ(filesIn(paths.appIcons).size(), 1);
}

TEST_F(ImportJournalTest, SweepsHalfWrittenTemporariesAndNothingElse)
{
    touch(paths.originals + QStringLiteral("/.a.tmp"));
    touch(paths.root + QStringLiteral("/.b.tmp"));
    touch(paths.root + QStringLiteral("/c.tmp"));
    journal.sweepItemFolders();
    EXPECT_TRUE(filesIn(paths.originals).isEmpty());
    EXPECT_EQ(filesIn(paths.root).size(), 2);
    journal.sweepRoot();
    EXPECT_EQ(filesIn(paths.root), QStringList{QStringLiteral("c.tmp")});
}

} // namespace
} // namespace tessary
