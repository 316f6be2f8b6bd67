#include "app/archive/LibraryArchive.h"

#include "app/archive/ArchiveError.h"
#include "base/FileError.h"
#include "store/SQLiteStore.h"
#include "tests/support/Await.h"
#include "tests/support/RecordSamples.h"
#include "tests/support/TemporaryFolder.h"

#include <QDir>
#include <QDirIterator>
#include <QJsonDocument>

#include <csignal>
#include <sys/resource.h>

namespace tessary {
namespace {

using testing::await;
using testing::fullRecord;
using testing::textRecord;

/// Files may grow no further than that, as on a disk that is full.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &m_before); }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_before{};
};

/// A library in a folder of its own.
struct Library {
    explicit Library(const QString& root)
        : paths(AppPaths::create(root)),
          store(await(SQLiteStore::open(paths.database))),
          archive(paths, *store, epochs)
    {
    }

    [[nodiscard]] QList<ScreenshotRecord> items() const { return await(store->page({}, 10'000)); }
    void add(const ScreenshotRecord& record) { ASSERT_TRUE(await(store->insert(record))); }
    /// A picture with files of its own.
    ScreenshotRecord addPicture(const QByteArray& bytes)
    {
        ScreenshotRecord record = fullRecord();
        record.id = QUuid::createUuid();
        record.contentHash = contentHash(bytes);
        record.contentType = ClipboardContentType::Image;
        record.textContent.clear();
        const QString name = QLatin1Char('/') + identifierText(record.id) + QLatin1Char('.');
        record.libraryPath = paths.originals + name + QStringLiteral("png");
        record.thumbnailPath = paths.thumbnails + name + QStringLiteral("jpg");
        record.sourceAppIconPath = paths.appIcons + name + QStringLiteral("png");
        write(record.libraryPath, bytes);
        write(*record.thumbnailPath, "thumbnail");
        write(*record.sourceAppIconPath, "icon");
        add(record);
        return record;
    }
    static void write(const QString& path, const QByteArray& bytes)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    AppPaths paths;
    std::unique_ptr<SQLiteStore> store;
    ImportEpochs epochs;
    LibraryArchive archive;
};

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

/// Names below the folder, hidden ones too, sorted.
QStringList filesBelow(const QString& folder)
{
    QStringList files;
    QDirIterator each(folder, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (each.hasNext())
        files.append(each.next().mid(folder.size() + 1));
    files.sort();
    return files;
}

class LibraryArchiveTest : public ::testing::Test {
protected:
    testing::TemporaryFolder m_folder;

    [[nodiscard]] QString exported() const { return m_folder.file(QStringLiteral("exported")); }
    [[nodiscard]] QString root() const { return m_folder.file(QStringLiteral("library")); }
    [[nodiscard]] std::unique_ptr<Library> emptied()
    {
        EXPECT_TRUE(QDir(root()).removeRecursively());
        return std::make_unique<Library>(root());
    }
    void appendLine(const QByteArray& line)
    {
        QFile list(exported() + QStringLiteral("/items.jsonl"));
        ASSERT_TRUE(list.open(QIODevice::Append));
        list.write(line + '\n');
    }
};

TEST_F(LibraryArchiveTest, WhatWasExportedIsRestoredToTheLastFieldAndByte)
{
    auto library = std::make_unique<Library>(root());
    ScreenshotRecord odd = textRecord(QStringLiteral("\u0001\t\"quoted\"\\ 😀\r\n\u2028 中文") + QChar(0));
    odd.capturedAt = Date{1772701623.0000001};
    library->add(odd);
    library->add(textRecord(QString(3'000'000, u'长')));
    const ScreenshotRecord picture = library->addPicture(QByteArray(300'000, '\x7f'));
    const QList<ScreenshotRecord> before = library->items();
    const LibraryArchive::Exported result = await(library->archive.exportTo(exported(), {}));
    EXPECT_EQ(result.items, 3);
    EXPECT_EQ(result.files, 3);
    EXPECT_EQ(result.missingFiles, 0);
    library = emptied();
    const LibraryArchive::Restored restored = await(library->archive.restoreFrom(exported(), {}));
    EXPECT_EQ(restored.added, 3);
    EXPECT_EQ(restored.repeated, 0);
    EXPECT_EQ(restored.unreadable, 0);
    EXPECT_EQ(library->items(), before);
    EXPECT_EQ(contentsOf(picture.libraryPath), QByteArray(300'000, '\x7f'));
    EXPECT_EQ(contentsOf(*picture.thumbnailPath), "thumbnail");
    EXPECT_EQ(contentsOf(*picture.sourceAppIconPath), "icon");
    EXPECT_TRUE(
        QDir(root()).entryList({QStringLiteral(".importing-*")}, QDir::Files | QDir::Hidden).isEmpty());
}

TEST_F(LibraryArchiveTest, ALibraryElsewhereGetsPathsOfItsOwn)
{
    Library library(root());
    const ScreenshotRecord picture = library.addPicture("bytes");
    await(library.archive.exportTo(exported(), {}));
    Library other(m_folder.file(QStringLiteral("other")));
    await(other.archive.restoreFrom(exported(), {}));
    const ScreenshotRecord restored = other.items().constFirst();
    EXPECT_EQ(restored.libraryPath,
              other.paths.originals + QLatin1Char('/') + identifierText(picture.id) + QStringLiteral(".png"));
    EXPECT_EQ(contentsOf(restored.libraryPath), "bytes");
    EXPECT_EQ(restored.originalPath, picture.originalPath);
}

TEST_F(LibraryArchiveTest, RepeatsArePassedOverByIdentityAndByContent)
{
    auto library = std::make_unique<Library>(root());
    library->add(textRecord(QStringLiteral("same identity")));
    library->add(textRecord(QStringLiteral("same content")));
    await(library->archive.exportTo(exported(), {}));
    EXPECT_EQ(await(library->archive.restoreFrom(exported(), {})).repeated, 2);
    library = emptied();
    library->add(textRecord(QStringLiteral("same content"))); // under another identifier
    const LibraryArchive::Restored restored = await(library->archive.restoreFrom(exported(), {}));
    EXPECT_EQ(restored.added, 1);
    EXPECT_EQ(restored.repeated, 1);
    EXPECT_EQ(library->items().size(), 2);
}

TEST_F(LibraryArchiveTest, TwoRestoresAtOnceAddEachItemOnceWithItsFiles)
{
    auto library = std::make_unique<Library>(root());
    QList<ScreenshotRecord> pictures;
    for (int i = 0; i < 20; ++i)
        pictures.append(library->addPicture("picture " + QByteArray::number(i)));
    await(library->archive.exportTo(exported(), {}));
    library = emptied();
    auto first = library->archive.restoreFrom(exported(), {});
    auto second = library->archive.restoreFrom(exported(), {});
    const LibraryArchive::Restored one = await(std::move(first));
    const LibraryArchive::Restored two = await(std::move(second));
    EXPECT_EQ(one.added + two.added, 20);
    EXPECT_EQ(one.repeated + two.repeated, 20);
    for (const ScreenshotRecord& picture : pictures)
        EXPECT_TRUE(contentsOf(picture.libraryPath).startsWith("picture "));
}

TEST_F(LibraryArchiveTest, ADiskThatFillsUpLeavesNothingOfTheExport)
{
    Library library(root());
    library.add(textRecord(QStringLiteral("small")));
    library.addPicture(QByteArray(400'000, 'x'));
    QDir().mkpath(exported()); // a folder that was there stays there
    {
        const FullDisk full(100'000);
        try {
            await(library.archive.exportTo(exported(), {}));
            FAIL();
        } catch (const FileError& error) {
            EXPECT_EQ(error.which(), FileError::Case::WriteOutOfSpace);
        }
    }
    EXPECT_TRUE(
        QDir(exported()).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot));
    EXPECT_EQ(await(library.archive.exportTo(exported(), {})).items, 2);
}

TEST_F(LibraryArchiveTest, ADiskThatFillsUpWhileRestoringKeepsWhatCameBeforeAndCanBeGoneOnWith)
{
    auto library = std::make_unique<Library>(root());
    const ScreenshotRecord picture = library->addPicture(QByteArray(4'000'000, 'x'));
    library->add(textRecord(QStringLiteral("text")));
    await(library->archive.exportTo(exported(), {}));
    library = emptied();
    {
        const FullDisk full(3'000'000); // the databases have room
        EXPECT_THROW(await(library->archive.restoreFrom(exported(), {})), FileError);
    }
    EXPECT_FALSE(QFile::exists(picture.libraryPath));
    EXPECT_FALSE(QFile::exists(*picture.thumbnailPath));
    await(library->archive.restoreFrom(exported(), {}));
    EXPECT_EQ(library->items().size(), 2);
    EXPECT_EQ(contentsOf(picture.libraryPath).size(), 4'000'000);
}

TEST_F(LibraryArchiveTest, OnlyANewOrEmptyFolderIsExportedInto)
{
    Library library(root());
    QDir().mkpath(exported());
    Library::write(exported() + QStringLiteral("/.hidden"), "of somebody else");
    EXPECT_THROW(await(library.archive.exportTo(exported(), {})), ArchiveError);
    EXPECT_EQ(filesBelow(exported()), QStringList{QStringLiteral(".hidden")});
    EXPECT_THROW(await(library.archive.exportTo(exported() + QStringLiteral("/no/where"), {})), FileError);
}

TEST_F(LibraryArchiveTest, TwoExportsIntoOneFolderDoNotMix)
{
    Library library(root());
    for (int i = 0; i < 50; ++i)
        library.add(textRecord(QString::number(i)));
    auto first = library.archive.exportTo(exported(), {});
    auto second = library.archive.exportTo(exported(), {});
    EXPECT_EQ(await(std::move(first)).items, 50);
    EXPECT_THROW(await(std::move(second)), ArchiveError);
    EXPECT_EQ(contentsOf(exported() + QStringLiteral("/items.jsonl")).count('\n'), 50);
}

TEST_F(LibraryArchiveTest, AFolderWithoutAListIsNoExport)
{
    Library library(root());
    EXPECT_THROW(await(library.archive.restoreFrom(m_folder.path(), {})), ArchiveError);
    EXPECT_THROW(await(library.archive.restoreFrom(exported(), {})), ArchiveError);
}

TEST_F(LibraryArchiveTest, LinesThatHoldNoItemAreCountedAndTheOthersRestored)
{
    auto library = std::make_unique<Library>(root());
    library->add(textRecord(QStringLiteral("good")));
    await(library->archive.exportTo(exported(), {}));
    for (const char* line : {"", "{", "[]", "{\"id\":\"x\"}", "\xff\xfe", "null"})
        appendLine(line);
    library = emptied();
    const LibraryArchive::Restored restored = await(library->archive.restoreFrom(exported(), {}));
    EXPECT_EQ(restored.added, 1);
    EXPECT_EQ(restored.unreadable, 5); // a blank line is no item that is missing
    EXPECT_EQ(restored.unreadableLines, (QList<qint64>{3, 4, 5, 6, 7}));
}

TEST_F(LibraryArchiveTest, AListThatPointsElsewhereReadsAndWritesNothingThere)
{
    Library library(root());
    const QString secret = m_folder.file(QStringLiteral("secret.png"));
    Library::write(secret, "secret");
    await(library.archive.exportTo(exported(), {}));
    ScreenshotRecord hostile = fullRecord();
    hostile.contentType = ClipboardContentType::Image;
    hostile.thumbnailPath = QStringLiteral("Thumbnails/../../secret.png");
    hostile.sourceAppIconPath = secret;
    for (const QString& path : {QStringLiteral("../secret.png"), QStringLiteral("Originals/.."), secret,
                                QStringLiteral("Originals/link.png")}) {
        hostile.id = QUuid::createUuid();
        hostile.contentHash = contentHash(path.toUtf8());
        hostile.libraryPath = path;
        appendLine(QJsonDocument(encodeWholeRecord(hostile)).toJson(QJsonDocument::Compact));
    }
    ASSERT_TRUE(QFile::link(secret, exported() + QStringLiteral("/Originals/link.png")));
    const LibraryArchive::Restored restored = await(library.archive.restoreFrom(exported(), {}));
    EXPECT_EQ(restored.added, 4);
    EXPECT_EQ(restored.missingFiles, 12);
    for (const ScreenshotRecord& record : library.items()) {
        EXPECT_TRUE(record.libraryPath.startsWith(library.paths.originals + QLatin1Char('/')));
        EXPECT_FALSE(QFile::exists(record.libraryPath));
        EXPECT_TRUE(record.sourceAppIconPath->startsWith(library.paths.appIcons));
    }
    EXPECT_EQ(contentsOf(secret), "secret");
}

TEST_F(LibraryArchiveTest, AFileThatIsMissingInTheLibraryIsCountedAndBroughtBackOnceItIsThere)
{
    Library library(root());
    const ScreenshotRecord picture = library.addPicture("bytes");
    await(library.archive.exportTo(exported(), {}));
    ASSERT_TRUE(QFile::remove(picture.libraryPath));
    const QString second = m_folder.file(QStringLiteral("second"));
    EXPECT_EQ(await(library.archive.exportTo(second, {})).missingFiles, 1);
    EXPECT_EQ(await(library.archive.restoreFrom(exported(), {})).repeated, 1);
    EXPECT_EQ(contentsOf(picture.libraryPath), "bytes");
}

TEST_F(LibraryArchiveTest, ClearingWhileRestoringEndsItWithoutLeavings)
{
    auto library = std::make_unique<Library>(root());
    for (int i = 0; i < 50; ++i)
        library->addPicture("picture " + QByteArray::number(i));
    await(library->archive.exportTo(exported(), {}));
    library = emptied();
    auto restoring = library->archive.restoreFrom(exported(), {});
    ASSERT_TRUE(testing::eventually([&] { return library->items().size() >= 3; }));
    {
        const ImportEpochs::Hold cleared = library->epochs.end();
    }
    EXPECT_THROW(await(std::move(restoring)), ArchiveError);
    EXPECT_EQ(QDir(library->paths.originals).entryList(QDir::Files).size(), library->items().size());
    EXPECT_LT(library->items().size(), 50);
}

TEST_F(LibraryArchiveTest, AnEndingProgramTakesBackItsExport)
{
    Library library(root());
    library.add(textRecord(QStringLiteral("text")));
    std::stop_source ending;
    ending.request_stop();
    EXPECT_THROW(await(library.archive.exportTo(exported(), ending.get_token())), ArchiveError);
    EXPECT_FALSE(QFile::exists(exported()));
}

} // namespace
} // namespace tessary
