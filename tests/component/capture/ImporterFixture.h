#pragma once

#include "capture/ScreenshotImporter.h"
#include "platform/testing/FakeApplicationIcons.h"
#include "platform/testing/FakeClock.h"
#include "platform/testing/FakeImageCodec.h"
#include "store/Projection.h"
#include "store/RecordColumns.h"
#include "tests/support/Await.h"
#include "tests/support/TemporaryFolder.h"

#include <QDir>
#include <QFile>

namespace tessary::testing {

/// An importer on a real library, with a fake clock, codec and icons.
class ImporterFixture : public ::testing::Test {
protected:
    /// Runs the task to its end, moving time whenever somebody sleeps.
    template <typename Value>
    Value run(QCoro::Task<Value> task)
    {
        std::optional<Value> value;
        std::exception_ptr error;
        const auto follow = [](QCoro::Task<Value> running, std::optional<Value>& into,
                               std::exception_ptr& failure) -> QCoro::Task<> {
            try {
                into.emplace(co_await running);
            } catch (...) {
                failure = std::current_exception();
            }
        };
        const QCoro::Task<> following = follow(std::move(task), value, error);
        const bool ended = eventually([&] {
            letTimePass();
            return value || error;
        });
        EXPECT_TRUE(ended) << "the import did not end";
        if (error)
            std::rethrow_exception(error);
        return std::move(*value);
    }
    void letTimePass()
    {
        if (clock.sleeping() > 0)
            clock.advance(std::chrono::milliseconds(250));
    }
    std::optional<ScreenshotRecord> importText(const QString& text,
                                               const std::optional<SourceApplicationSnapshot>& source = {})
    {
        return run(importer.importClipboardPayload(ClipboardPayload(text), source));
    }
    std::optional<ScreenshotRecord> importPicture(const QByteArray& bytes)
    {
        return run(importer.importClipboardPayload(ClipboardPayload(bytes), std::nullopt));
    }
    std::optional<ScreenshotRecord> importFile(const QString& path,
                                               CountDuplicate count = CountDuplicate::Yes)
    {
        return run(importer.importFile(path, std::nullopt, count));
    }
    TakenFile takeFile(const QByteArray& path, std::stop_token giveUp = {})
    {
        const auto lane = std::make_shared<ExpendableLane>(QStringLiteral("test.reading"));
        return run(importer.takeFile({path, lane, giveUp}, std::nullopt, CountDuplicate::Yes));
    }
    QString write(const QString& name, const QByteArray& bytes)
    {
        QFile file(folder.file(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }
    QList<ScreenshotRecord> listed() const
    {
        Projection projection(SQLiteStore::projectionPath(paths.database));
        return projection.records("SELECT " + columnList(kProjectionColumns) +
                                  " FROM screenshots ORDER BY captured_at");
    }
    static QStringList filesIn(const QString& path)
    {
        return QDir(path).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    /// The root's files but for the databases.
    QStringList strayFiles() const
    {
        QStringList names = filesIn(paths.root);
        names.removeIf([](const QString& name) { return name.startsWith(QStringLiteral("Tessary.")); });
        return names;
    }
    static QByteArray contents(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    TemporaryFolder folder;
    AppPaths paths = AppPaths::create(folder.file(QStringLiteral("Tessary")));
    FakeClock clock{Date::fromDateTime(QDateTime(QDate(2026, 3, 5), QTime(9, 7, 3)))};
    FakeImageCodec codec;
    FakeApplicationIcons icons;
    std::unique_ptr<SQLiteStore> store = await(SQLiteStore::open(paths.database));
    ScreenshotImporter importer{paths, *store, codec, icons, clock};
    const SourceApplicationSnapshot editor{QStringLiteral("编辑器"), QStringLiteral("org.example.Editor"),
                                           QUrl(QStringLiteral("file:///apps/editor.desktop"))};
};

} // namespace tessary::testing
