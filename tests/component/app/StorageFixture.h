#pragma once

#include "app/AppSettings.h"
#include "app/LibraryFiles.h"
#include "app/StorageMaintenance.h"
#include "capture/FrontmostAppTracker.h"
#include "platform/testing/FakeScreenshotToolDefaults.h"
#include "platform/testing/FakeStandardFolders.h"
#include "platform/testing/FakeUserDefaults.h"
#include "platform/testing/FakeWorkspace.h"
#include "store/CoreDataScreenshotStore.h"
#include "tests/component/capture/ImporterFixture.h"
#include "tests/support/RecordSamples.h"

namespace tessary::testing {

/// The upkeep of a real library, with a fake clock, codec and settings.
class StorageFixture : public ImporterFixture {
protected:
    StorageFixture()
    {
        storage.setPaths(paths);
        storage.setLibrary(*store, importer, *tracker);
        QObject::connect(&storage, &StorageMaintenance::failed, &storage,
                         [this](const QString& message) { failures.append(message); });
        QObject::connect(&storage, &StorageMaintenance::libraryChanged, &storage,
                         [this](const LibraryChange& change) { changes.append(change.kind); });
    }
    ~StorageFixture() override { settle(); }

    /// Lets everything that runs come to its end.
    void settle()
    {
        EXPECT_TRUE(eventually([this] {
            letTimePass();
            return flows.isEmpty();
        }));
    }
    /// The record with its three files, in the library.
    ScreenshotRecord add(const ScreenshotRecord& record) { return addAll({record}).first(); }
    /// So many pictures, captured at 0, 1, 2 and so on.
    QList<ScreenshotRecord> addPictures(int count, qint64 fileSize)
    {
        QList<ScreenshotRecord> records;
        for (int i = 0; i < count; ++i)
            records.append(pictureRecord(i, fileSize));
        return addAll(records);
    }
    /// In one transaction, which the store's own insertions are not.
    QList<ScreenshotRecord> addAll(QList<ScreenshotRecord> records)
    {
        CoreDataScreenshotStore structured(paths.database);
        Projection projection(SQLiteStore::projectionPath(paths.database));
        SQLiteTransaction structuredRows(structured.connection());
        SQLiteTransaction rows(projection.connection());
        for (ScreenshotRecord& record : records) {
            addFiles(record);
            EXPECT_TRUE(structured.insert(record));
            EXPECT_TRUE(projection.insertProjection(record));
            projection.updateSearchIndex(record);
        }
        rows.commit();
        structuredRows.commit();
        return records;
    }
    void addFiles(ScreenshotRecord& record)
    {
        const QString id = identifierText(record.id);
        if (record.contentType == ClipboardContentType::Image) {
            record.libraryPath = paths.originals + u'/' + id + QStringLiteral(".png");
            record.thumbnailPath = paths.thumbnails + u'/' + id + QStringLiteral(".jpg");
        }
        record.sourceAppIconPath = paths.appIcons + u'/' + id + QStringLiteral(".png");
        for (const QString& path :
             {record.libraryPath, record.thumbnailPath.value_or(QString()), *record.sourceAppIconPath}) {
            if (!path.isEmpty())
                writeTo(path, id.toUtf8());
        }
    }
    QList<ScreenshotRecord> addTrashed(int count, Date deletedAt)
    {
        QList<ScreenshotRecord> records;
        for (int i = 0; i < count; ++i) {
            records.append(textRecord(QString::number(i)));
            records.last().isDeleted = true;
            records.last().deletedAt = deletedAt;
        }
        return addAll(records);
    }
    ScreenshotRecord addTrashed(const QString& text, Date deletedAt)
    {
        const ScreenshotRecord record = add(textRecord(text));
        await(store->moveToTrash(record.id, deletedAt));
        return record;
    }
    static void writeTo(const QString& path, const QByteArray& bytes)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(path);
        file.write(bytes);
    }
    void limitTo(int gigabytes)
    {
        settings.setAutomaticStorageCleanup(true);
        settings.setMaxStorageGB(gigabytes);
    }
    QList<QUuid> left() const
    {
        QList<QUuid> ids;
        for (const ScreenshotRecord& record : listed())
            ids.append(record.id);
        return ids;
    }
    QStringList itemFiles() const
    {
        return filesIn(paths.originals) + filesIn(paths.thumbnails) + filesIn(paths.appIcons);
    }
    QString logPath() const { return paths.root + QStringLiteral("/FrontmostApps.json"); }
    /// Makes the removal of every row at that time of capture fail.
    void refuseRemovalAt(double capturedAt) const
    {
        SQLiteConnection(SQLiteStore::projectionPath(paths.database))
            .run("CREATE TRIGGER refusal BEFORE DELETE ON screenshots WHEN old.captured_at = " +
                 QByteArray::number(capturedAt, 'f', 3) + " BEGIN SELECT raise(ABORT, 'no'); END");
    }

    FakeUserDefaults defaults;
    FakeScreenshotToolDefaults screenshotTool;
    FakeStandardFolders folders{folder.path(), folder.path()};
    AppSettings settings{defaults, screenshotTool, folders};
    FakeWorkspace workspace;
    std::unique_ptr<FrontmostAppTracker> tracker =
        await(FrontmostAppTracker::open(logPath(), workspace, clock));
    LibraryFiles files;
    FlowSet flows{[](const std::exception& error) { ADD_FAILURE() << error.what(); }};
    StorageMaintenance storage{settings, clock, files, flows};
    QStringList failures;
    QList<LibraryChange::Kind> changes;
};

} // namespace tessary::testing
