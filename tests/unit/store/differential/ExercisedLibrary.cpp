#include "tests/unit/store/differential/ExercisedLibrary.h"

#include "store/ProjectionReconciler.h"
#include "store/TagsCoding.h"

#include <array>

namespace tessary::testing {
namespace {

constexpr qsizetype kFewestItems = 100;
constexpr qsizetype kMostItems = 400;
constexpr int kAll = 1 << 20;

} // namespace

ExercisedLibrary::ExercisedLibrary(Dice& dice, GeneratedTexts& texts, SearchQueryGenerator& queries,
                                   const SearchLimits& limits, Indexing indexing)
    : m_dice(dice),
      m_queries(queries),
      m_items(dice, texts),
      m_limits(limits),
      m_indexing(indexing),
      m_records(m_folder.file(QStringLiteral("Tessary.sqlite3"))),
      m_remover(m_records)
{
    m_records.connection().run("PRAGMA synchronous = OFF"); // no test pulls the plug
    m_projection.emplace(projectionPath(), m_limits);
    fill(m_dice.between(kFewestItems, kMostItems));
}

QString ExercisedLibrary::projectionPath() const
{
    return m_folder.file(QStringLiteral("Tessary.metadata.sqlite3"));
}

void ExercisedLibrary::fill(qsizetype items)
{
    m_records.adopt([&]() -> std::optional<ScreenshotRecord> {
        if (items-- == 0)
            return std::nullopt;
        ScreenshotRecord record = m_items.next();
        m_ids.append(record.id);
        m_queries.learn(record);
        return record;
    });
    ProjectionReconciler(m_records, *m_projection).reconcile();
    index();
}

void ExercisedLibrary::insertOne()
{
    const ScreenshotRecord record = m_items.next();
    if (!m_records.insert(record))
        return;
    SQLiteTransaction transaction(m_projection->connection());
    if (m_projection->insertProjection(record))
        m_projection->updateSearchIndex(record);
    transaction.commit();
    m_ids.append(record.id);
    m_queries.learn(record);
}

void ExercisedLibrary::insert(qsizetype items)
{
    for (; items > 0; --items)
        insertOne();
}

std::optional<ScreenshotRecord> ExercisedLibrary::anyRecord()
{
    return m_ids.isEmpty() ? std::nullopt : m_records.record(m_dice.anyOf(m_ids));
}

void ExercisedLibrary::editMetadata()
{
    std::optional<ScreenshotRecord> record = anyRecord();
    if (!record)
        return;
    if (m_dice.oneIn(2))
        record->tags = m_items.tags();
    if (m_dice.oneIn(2))
        record->note = m_items.note();
    m_records.upsert(*record);
    m_projection->update("tags_json = ?, note = ?",
                         {QString::fromUtf8(encodeTags(record->tags)), record->note}, record->id);
    m_projection->updateSearchIndex(*record);
    m_queries.learn(*record);
}

/// In both stores, by a program that has never heard of grams.
void ExercisedLibrary::editElsewhere()
{
    std::optional<ScreenshotRecord> record = anyRecord();
    if (!record)
        return;
    record->note = m_items.note();
    m_records.upsert(*record);
    SQLiteConnection stranger(projectionPath());
    const QString id = identifierText(record->id);
    stranger.execute("UPDATE screenshots_fts_v5 SET note = ?1 WHERE rowid = "
                     "(SELECT rowid FROM screenshots WHERE id = ?2)",
                     {record->note, id});
    stranger.execute("UPDATE screenshots SET note = ?1 WHERE id = ?2", {record->note, id});
    m_queries.learn(*record);
}

void ExercisedLibrary::change(const QByteArray& assignments, const QList<SQLiteValue>& values,
                              const std::function<void(ScreenshotRecord&)>& edit)
{
    std::optional<ScreenshotRecord> record = anyRecord();
    if (!record)
        return;
    edit(*record);
    m_records.upsert(*record);
    m_projection->update(assignments, values, record->id);
}

void ExercisedLibrary::editMarks()
{
    const bool isMarked = m_dice.oneIn(2);
    const Date used = m_items.time();
    switch (m_dice.below(3)) {
    case 0:
        return change("is_favorite = ?", {sqliteValue(isMarked)},
                      [&](ScreenshotRecord& record) { record.isFavorite = isMarked; });
    case 1:
        return change("is_pinned = ?", {sqliteValue(isMarked)},
                      [&](ScreenshotRecord& record) { record.isPinned = isMarked; });
    default:
        return change("last_used_at = ?", {sqliteValue(used)},
                      [&](ScreenshotRecord& record) { record.lastUsedAt = used; });
    }
}

void ExercisedLibrary::trash()
{
    const Date now = m_items.time();
    change("is_deleted = 1, deleted_at = ?", {sqliteValue(now)}, [&](ScreenshotRecord& record) {
        record.isDeleted = true;
        record.deletedAt = now;
    });
}

void ExercisedLibrary::purge()
{
    constexpr int kMost = 50;
    if (m_dice.oneIn(3))
        m_remover.removeOldestPictures(*m_projection, m_records.totalFileSize() * 9 / 10, kMost);
    else if (m_dice.oneIn(2))
        m_remover.removeTrash(*m_projection, m_items.time(), kMost);
    else
        m_remover.removeTrash(*m_projection, std::nullopt, kMost);
}

void ExercisedLibrary::startOver()
{
    m_remover.removeEverything(*m_projection);
    reopen();
    m_ids.clear();
    insert(m_dice.between(0, kFewestItems));
}

void ExercisedLibrary::damageAndReconcile()
{
    m_projection.reset();
    {
        SQLiteConnection stranger(projectionPath());
        const auto one = [&](const char* table) {
            return stranger.integerResult(QByteArray("SELECT rowid FROM ") + table + " LIMIT 1 OFFSET " +
                                          QByteArray::number(m_dice.below(kFewestItems)));
        };
        for (qsizetype times = m_dice.between(1, 5); times > 0; --times) {
            const qint64 row = one("screenshots");
            switch (m_dice.below(8)) {
            case 0:
                stranger.execute("DELETE FROM screenshots_fts_v5 WHERE rowid = ?", {row});
                break;
            case 1:
            case 2:
                stranger.execute("DELETE FROM screenshots WHERE rowid = ?", {row});
                break;
            case 3:
                stranger.execute(
                    "UPDATE screenshots SET content_text = 'zq damaged', note = '' WHERE rowid = ?", {row});
                break;
            case 4:
                stranger.execute("UPDATE screenshots SET is_deleted = 1 - is_deleted WHERE rowid = ?", {row});
                break;
            default:
                stranger.execute("UPDATE screenshots SET note = 'damaged by a stranger', ocr_text = 'xyz' "
                                 "WHERE rowid = ?",
                                 {row});
            }
        }
    }
    m_projection.emplace(projectionPath(), m_limits);
    ProjectionReconciler(m_records, *m_projection).reconcile();
}

void ExercisedLibrary::reopen()
{
    m_projection.reset();
    m_projection.emplace(projectionPath(), m_limits);
}

/// As after a check that found them damaged.
void ExercisedLibrary::forgetGrams()
{
    m_projection->forgetGrams();
}

void ExercisedLibrary::index()
{
    constexpr qsizetype kMostAtOnce = 60;
    if (m_indexing == Indexing::Never)
        return;
    if (m_indexing == Indexing::Partly) {
        for (qsizetype times = m_dice.below(4); times > 0; --times)
            m_projection->indexGrams(m_dice.between(1, kMostAtOnce));
        return;
    }
    int times = 0;
    while (m_projection->indexGrams(kMostAtOnce))
        ASSERT_LT(++times, kAll) << "the index is never done";
}

void ExercisedLibrary::change()
{
    struct Way {
        qsizetype share; ///< Of all changes.
        const char* name;
        void (ExercisedLibrary::*change)();
        qsizetype mostTimes;
    };
    static constexpr std::array kWays{
        Way{20, "insert", &ExercisedLibrary::insertOne, 8},
        Way{20, "edit of note or tags", &ExercisedLibrary::editMetadata, 6},
        Way{5, "edit by another program", &ExercisedLibrary::editElsewhere, 4},
        Way{15, "edit of marks", &ExercisedLibrary::editMarks, 6},
        Way{10, "trash", &ExercisedLibrary::trash, 4},
        Way{6, "purge", &ExercisedLibrary::purge, 1},
        Way{2, "damage and reconciliation", &ExercisedLibrary::damageAndReconcile, 1},
        Way{2, "reopening", &ExercisedLibrary::reopen, 1},
        Way{1, "forgetting the grams", &ExercisedLibrary::forgetGrams, 1},
        Way{1, "clearing and starting over", &ExercisedLibrary::startOver, 1},
    };
    constexpr qsizetype kShares = 82;
    qsizetype chosen = m_dice.below(kShares);
    const auto* way = kWays.begin();
    while (chosen >= way->share)
        chosen -= (way++)->share;
    m_lastChange = way->name;
    for (qsizetype times = m_dice.between(1, way->mostTimes); times > 0; --times)
        (this->*way->change)();
    if (m_indexing == Indexing::Now || m_dice.oneIn(3))
        index();
}

} // namespace tessary::testing
