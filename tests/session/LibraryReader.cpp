#include "tests/session/LibraryReader.h"

#include <QFile>

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <functional>
#include <memory>

namespace tessary::testing {

namespace {

using Connection = std::unique_ptr<sqlite3, decltype([](sqlite3* database) { sqlite3_close_v2(database); })>;
using Statement =
    std::unique_ptr<sqlite3_stmt, decltype([](sqlite3_stmt* statement) { sqlite3_finalize(statement); })>;

QString textAt(sqlite3_stmt* row, int column)
{
    return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(row, column)));
}

/// Calls `take` for every row of the query. A table that does not exist yet has no rows.
void forEachRow(const QString& path, const char* sql, const std::function<void(sqlite3_stmt*)>& take)
{
    sqlite3* opened = nullptr;
    const int status =
        sqlite3_open_v2(QFile::encodeName(path).constData(), &opened, SQLITE_OPEN_READONLY, nullptr);
    const Connection connection(opened);
    if (status != SQLITE_OK)
        return;
    sqlite3_busy_timeout(opened, 5000);
    sqlite3_stmt* prepared = nullptr;
    if (sqlite3_prepare_v2(opened, sql, -1, &prepared, nullptr) != SQLITE_OK)
        return;
    const Statement statement(prepared);
    int step = sqlite3_step(prepared);
    for (; step == SQLITE_ROW; step = sqlite3_step(prepared))
        take(prepared);
    EXPECT_EQ(step, SQLITE_DONE) << qPrintable(path) << ": " << sqlite3_errmsg(opened);
}

QSet<QString> idsOf(const QString& path, const char* sql)
{
    QSet<QString> ids;
    forEachRow(path, sql, [&](sqlite3_stmt* row) { ids.insert(textAt(row, 0)); });
    return ids;
}

} // namespace

LibraryReader::LibraryReader(QString root) : m_root(std::move(root)) {}

std::vector<LibraryItem> LibraryReader::items() const
{
    std::vector<LibraryItem> items;
    constexpr const char* kQuery =
        "SELECT id, content_hash, filename, original_path, library_path, thumbnail_path, source_app_name, "
        "source_bundle_id, file_type, content_text, note, pixel_width, pixel_height, file_size, "
        "duplicate_count, "
        "content_type, captured_at, last_used_at, is_favorite, is_pinned, is_deleted FROM screenshots ORDER "
        "BY captured_at, rowid";
    forEachRow(m_root + QStringLiteral("/Tessary.metadata.sqlite3"), kQuery, [&](sqlite3_stmt* row) {
        LibraryItem item;
        QString* const texts[] = {
            &item.id,          &item.contentHash,   &item.filename, &item.originalPath,
            &item.libraryPath, &item.thumbnailPath, &item.appName,  &item.bundleIdentifier,
            &item.fileType,    &item.text,          &item.note};
        int column = 0;
        for (QString* text : texts)
            *text = textAt(row, column++);
        qint64* const numbers[] = {&item.pixelWidth, &item.pixelHeight, &item.fileSize, &item.duplicateCount,
                                   &item.contentType};
        for (qint64* number : numbers)
            *number = sqlite3_column_int64(row, column++);
        item.capturedAt = sqlite3_column_double(row, column++);
        item.lastUsedAt = sqlite3_column_double(row, column++);
        for (bool* state : {&item.isFavorite, &item.isPinned, &item.isDeleted})
            *state = sqlite3_column_int(row, column++) != 0;
        items.push_back(std::move(item));
    });
    return items;
}

std::vector<QString> LibraryReader::texts() const
{
    std::vector<QString> texts;
    for (const LibraryItem& item : items()) {
        if (item.contentType == 1)
            texts.push_back(item.text);
    }
    return texts;
}

std::optional<LibraryItem> LibraryReader::text(const QString& text) const
{
    for (const LibraryItem& item : items()) {
        if (item.contentType == 1 && item.text == text)
            return item;
    }
    return std::nullopt;
}

std::vector<LibraryItem> LibraryReader::pictures() const
{
    std::vector<LibraryItem> pictures = items();
    std::erase_if(pictures, [](const LibraryItem& item) { return item.contentType != 0; });
    return pictures;
}

QSet<QString> LibraryReader::projectionIds() const
{
    return idsOf(m_root + QStringLiteral("/Tessary.metadata.sqlite3"), "SELECT id FROM screenshots");
}

QSet<QString> LibraryReader::searchIds() const
{
    return idsOf(m_root + QStringLiteral("/Tessary.metadata.sqlite3"), "SELECT id FROM screenshots_fts_v5");
}

QSet<QString> LibraryReader::recordIds() const
{
    return idsOf(m_root + QStringLiteral("/Tessary.sqlite3"), "SELECT id FROM ScreenshotEntity");
}

} // namespace tessary::testing
