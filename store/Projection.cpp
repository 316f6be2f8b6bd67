#include "store/Projection.h"

#include "search/SearchQueryParser.h"
#include "store/FacetQueries.h"
#include "store/FullTextIdentifiers.h"
#include "store/LocalizedOrder.h"
#include "store/ProjectionSchema.h"
#include "store/RecordColumns.h"
#include "store/StoreError.h"
#include "store/TagsCoding.h"
#include "store/sqlite/LikeFunction.h"
#include "store/sqlite/SQLiteInterruption.h"

namespace tessary {

SQLiteConnection Projection::openedWriter(const QString& path)
{
    SQLiteConnection writer(path);
    writer.run("PRAGMA page_size = " + QByteArray::number(kDatabasePageSize));
    writer.run("PRAGMA journal_mode = WAL");
    writer.run("PRAGMA foreign_keys = ON");
    writer.run("PRAGMA busy_timeout = 5000");
    // Not mapped into memory: in a library that lies in the order of arrival a search through everything
    // gains nothing by it, and all that it looked at would count as this process's memory.
    // What a power cut takes from here, the store of record gives back at the next start.
    writer.run("PRAGMA synchronous = NORMAL");
    // A page that many copies change is written back once for all of them; a log of 8 MB is still modest. One
    // that grew with a rebuild is cut.
    constexpr qint64 kLog = 8 * 1024 * 1024;
    const qint64 pageSize = writer.integerResult("PRAGMA page_size");
    writer.run("PRAGMA wal_autocheckpoint = " + QByteArray::number(kLog / std::max<qint64>(pageSize, 1)));
    writer.run("PRAGMA journal_size_limit = 16777216");
    createProjectionSchema(writer);
    return writer;
}

SQLiteConnection Projection::openedReader(const QString& path)
{
    SQLiteConnection reader(path);
    reader.run("PRAGMA busy_timeout = 5000");
    installLikeFunction(reader.handle());
    installFullTextIdentifiers(reader);
    GramIndex::prepare(reader);
    reader.run("PRAGMA query_only = ON");
    return reader;
}

Projection::Projection(const QString& path, const SearchLimits& limits)
    : m_connection(openedWriter(path)),
      m_reader(openedReader(path)),
      m_grams(m_connection),
      m_tokenizer(m_reader.handle()),
      m_orders(m_reader),
      m_limits(limits)
{
}

bool Projection::insertProjection(const ScreenshotRecord& record)
{
    static const QByteArray sql = "INSERT OR IGNORE INTO screenshots (" + columnList(kProjectionColumns) +
                                  ") VALUES (?" + QByteArray(", ?").repeated(kRecordColumnCount - 1) + ")";
    m_connection.execute(sql, recordBindings(record));
    return m_connection.changes() > 0;
}

void Projection::updateSearchIndex(const ScreenshotRecord& record)
{
    const QString id = identifierText(record.id);
    m_connection.execute("DELETE FROM screenshots_fts_v5 WHERE rowid = "
                         "(SELECT rowid FROM screenshots WHERE id = ?)",
                         {id});
    m_connection.execute("INSERT INTO screenshots_fts_v5 (rowid, id, source_app_name, tags, note, filename, "
                         "content_text, pinyin) SELECT rowid, ?1, ?2, ?3, ?4, ?5, ?6, ?7 FROM screenshots "
                         "WHERE id = ?1",
                         {id, record.sourceAppName.value_or(QString()), record.tags.join(QLatin1Char(' ')),
                          record.note, record.filename, record.textContent,
                          m_pinyin.searchText(record.searchableText())});
}

void Projection::update(const QByteArray& assignments, QList<SQLiteValue> values, const QUuid& id)
{
    values.append(identifierText(id));
    m_connection.execute("UPDATE screenshots SET " + assignments + " WHERE id = ?", values);
}

void Projection::remove(const QString& idText)
{
    m_connection.execute("DELETE FROM screenshots_fts_v5 WHERE rowid = "
                         "(SELECT rowid FROM screenshots WHERE id = ?)",
                         {idText});
    m_connection.execute("DELETE FROM screenshots WHERE id = ?", {idText});
}

void Projection::removeAll()
{
    SQLiteTransaction transaction(m_connection);
    removeRows();
    transaction.commit();
}

void Projection::removeRows()
{
    recreateSearchTable(m_connection);
    m_grams.clear();
    m_connection.run("DELETE FROM screenshots");
}

LibraryCounts Projection::counts()
{
    const auto count = [this](const char* condition) {
        return m_connection.integerResult(QByteArray("SELECT count(*) FROM screenshots WHERE ") + condition);
    };
    constexpr const char* kText = "is_deleted = 0 AND content_type = 1";
    LibraryCounts counts;
    counts.texts = count(kText);
    counts.images = count("is_deleted = 0") - counts.texts;
    counts.inTrash = count("is_deleted = 1");
    return counts;
}

qint64 Projection::rowCount()
{
    return m_connection.integerResult("SELECT count(*) FROM screenshots");
}

qint64 Projection::searchRowCount()
{
    return tessary::searchRowCount(m_connection);
}

SQLiteStatement Projection::rowsInIdentifierOrder()
{
    static const QByteArray sql =
        "SELECT " + columnList(kProjectionColumns) + " FROM screenshots ORDER BY id";
    return m_connection.query(sql);
}

SQLiteStatement Projection::rowsInStoredOrder()
{
    static const QByteArray sql =
        "SELECT " + columnList(kProjectionColumns) + " FROM screenshots ORDER BY rowid";
    return m_connection.query(sql);
}

QList<ScreenshotRecord> Projection::records(const QByteArray& sql, const QList<SQLiteValue>& bindings)
{
    SQLiteStatement rows = m_connection.query(sql, bindings);
    QList<ScreenshotRecord> found;
    while (rows.nextRow())
        found.append(decodeProjectionRow(rows));
    return found;
}

QList<ScreenshotRecord> Projection::page(const ListRequest& request, const std::stop_token& stop)
{
    const SearchQuery query = SearchQueryParser::parse(request.rawQuery, request.calendar);
    if (PageSearch::isFor(request, query)) {
        try {
            std::optional<QList<ScreenshotRecord>> found = quickPage(request, query, stop);
            if (found)
                return *std::move(found);
        } catch (const StoreError& error) {
            if (stop.stop_requested())
                throw;
            qWarning("The index of the library cannot be searched: %s", error.what());
            m_grams.invalidate();
        }
    }
    return prescribedPage(request, stop);
}

std::optional<QList<ScreenshotRecord>>
Projection::quickPage(const ListRequest& request, const SearchQuery& query, const std::stop_token& stop)
{
    static const QByteArray itemQuery =
        "SELECT " + columnList(kProjectionColumns) + " FROM screenshots WHERE rowid = ?";
    const SQLiteReadTransaction transaction(m_reader);
    const SQLiteInterruption interruption(m_reader.handle(), stop);
    PageSearch search(m_reader, m_orders, m_tokenizer, m_limits);
    const std::optional<QList<qint64>> rows = search.rows(request, query, stop);
    m_wayOfPage = search.way();
    if (!rows)
        return std::nullopt;
    QList<ScreenshotRecord> found;
    SQLiteStatement item = m_reader.query(itemQuery);
    for (const qint64 row : *rows) {
        item.reset();
        item.bindInteger(1, row);
        if (item.nextRow())
            found.append(decodeProjectionRow(item, request.maximumTextLength));
    }
    return found;
}

QList<ScreenshotRecord> Projection::prescribedPage(const ListRequest& request, const std::stop_token& stop)
{
    m_wayOfPage = PageSearch::Way::Prescribed;
    const ListQuery query = listQuery(request);
    const SQLiteInterruption interruption(m_reader.handle(), stop);
    SQLiteStatement rows = m_reader.queryOnce(query.sql, query.bindings);
    QList<ScreenshotRecord> found;
    while (rows.nextRow())
        found.append(decodeProjectionRow(rows, request.maximumTextLength));
    return found;
}

bool Projection::indexGrams(qint64 mostRows, std::chrono::milliseconds longest)
{
    return m_grams.indexMore(mostRows, longest);
}

bool Projection::isIndexingDue()
{
    return GramIndex::unindexedRows(m_connection) >= m_limits.rowsIndexedAtOnce;
}

void Projection::forgetGrams()
{
    m_grams.invalidate();
}

bool Projection::hasRightGrams(qint64 row)
{
    return m_grams.isRightAbout(row);
}

bool Projection::hasRightSearchRow(qint64 row)
{
    return m_connection.integerResult("SELECT EXISTS (SELECT 1 FROM screenshots s "
                                      "LEFT JOIN screenshots_fts_v5_content f ON f.id = s.rowid "
                                      "WHERE s.rowid = ? AND f.c0 IS NOT s.id)",
                                      {row}) == 0;
}

qint64 Projection::lastRow()
{
    return m_connection.integerResult("SELECT max(rowid) FROM screenshots");
}

LibraryFacets Projection::facets()
{
    LibraryFacets facets;
    facets.sourceApps = m_reader.stringResults(kSourceAppNamesQuery);
    SQLiteStatement rows = m_reader.query(kTagListsQuery);
    QSet<QString> tags;
    while (rows.nextRow()) {
        for (const QString& tag : decodeTags(rows.bytes(0).toByteArray()))
            tags.insert(tag);
    }
    facets.tags = localizedOrder(tags.values());
    return facets;
}

} // namespace tessary
