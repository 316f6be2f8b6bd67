#include "base/Error.h"
#include "bench/tools/SampleLibrary.h"
#include "bench/tools/WrittenBytes.h"
#include "store/Projection.h"
#include "store/RecordColumns.h"
#include "store/SQLiteStore.h"
#include "store/TagsCoding.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

/// gram_index_table ITEMS: what the gram index of a new library of so many items takes to build, and what
/// changes of the projection cost before it exists and after. Each change is a transaction of its own; the
/// indexing of new items, which is done later in batches, is told beside them. The library lies in the folder
/// for temporary files.
namespace tessary::bench {
namespace {

constexpr qsizetype kChanges = 1000;
constexpr qint64 kRowsIndexedAtOnce = 256;

struct Cost {
    double milliseconds = 0;
    double kilobytes = 0;
};

template <typename Work>
Cost costOf(Work work)
{
    const double before = writtenBytes().handedOver;
    QElapsedTimer timer;
    timer.start();
    work();
    return {static_cast<double>(timer.nsecsElapsed()) / 1e6, (writtenBytes().handedOver - before) / 1024};
}

class GramIndexTable {
public:
    explicit GramIndexTable(qint64 items) : m_paths(AppPaths::create(m_folder.path())), m_items(m_paths)
    {
        m_items.fill(items);
        m_projection = std::make_unique<Projection>(SQLiteStore::projectionPath(m_paths.database));
    }

    void print()
    {
        std::puts("| of 1,000 | ms each | kB written each |\n|---|--:|--:|");
        printChanges("without the index");
        const qint64 before = pagesInUse();
        const Cost building = costOf([this] { index(); });
        const qint64 size = pagesInUse() - before;
        printChanges("with the index");
        std::printf("\nbuilt in %.1f s, %.0f MB larger\n", building.milliseconds / 1000,
                    static_cast<double>(size * integer("PRAGMA page_size")) / 1e6);
    }

private:
    [[nodiscard]] qint64 integer(const char* sql) { return m_projection->connection().integerResult(sql); }
    [[nodiscard]] qint64 pagesInUse()
    {
        return integer("PRAGMA page_count") - integer("PRAGMA freelist_count");
    }

    void index()
    {
        while (m_projection->indexGrams(kRowsIndexedAtOnce))
            ;
    }

    static void printCost(const char* change, const char* when, const Cost& cost)
    {
        std::printf("| %s, %s | %.3f | %.1f |\n", change, when, cost.milliseconds / kChanges,
                    cost.kilobytes / kChanges);
    }

    void printChanges(const char* when)
    {
        QList<ScreenshotRecord> added;
        for (qsizetype i = 0; i < kChanges; ++i)
            added.append(m_items.next());
        QList<ScreenshotRecord> old = someOldOnes();
        printCost("insertion", when, costOf([&] { insert(added); }));
        const bool isIndexed = qstrcmp(when, "with the index") == 0;
        if (isIndexed)
            printCost("indexing of what was inserted", when, costOf([this] { index(); }));
        printCost("edit of an old item's note", when, costOf([&] { edit(old); }));
        printCost("removal of an old item", when, costOf([&] { remove(old); }));
    }

    /// Spread over the library.
    QList<ScreenshotRecord> someOldOnes()
    {
        QList<ScreenshotRecord> records;
        SQLiteStatement rows = m_projection->rowsInStoredOrder();
        const qint64 step = std::max<qint64>(1, m_projection->rowCount() / kChanges);
        for (qint64 row = 0; records.size() < kChanges && rows.nextRow(); ++row)
            if (row % step == 0)
                records.append(decodeProjectionRow(rows));
        return records;
    }

    void insert(const QList<ScreenshotRecord>& records)
    {
        for (const ScreenshotRecord& record : records) {
            SQLiteTransaction transaction(m_projection->connection());
            if (m_projection->insertProjection(record))
                m_projection->updateSearchIndex(record);
            transaction.commit();
        }
    }

    void edit(QList<ScreenshotRecord>& records)
    {
        for (ScreenshotRecord& record : records) {
            record.note = record.note + QStringLiteral("记得再看一遍 read this again");
            SQLiteTransaction transaction(m_projection->connection());
            m_projection->update("tags_json = ?, note = ?",
                                 {QString::fromUtf8(encodeTags(record.tags)), record.note}, record.id);
            m_projection->updateSearchIndex(record);
            transaction.commit();
        }
    }

    void remove(const QList<ScreenshotRecord>& records)
    {
        for (const ScreenshotRecord& record : records) {
            SQLiteTransaction transaction(m_projection->connection());
            m_projection->remove(identifierText(record.id));
            transaction.commit();
        }
    }

    QTemporaryDir m_folder;
    AppPaths m_paths;
    SampleLibrary m_items;
    std::unique_ptr<Projection> m_projection;
};

} // namespace
} // namespace tessary::bench

int main(int argc, char** argv)
{
    const long items = argc == 2 ? std::strtol(argv[1], nullptr, 10) : 0;
    if (items <= 0) {
        std::fputs("usage: gram_index_table ITEMS\n", stderr);
        return 2;
    }
    try {
        tessary::bench::GramIndexTable(items).print();
    } catch (const tessary::Error& error) {
        std::fprintf(stderr, "gram_index_table: %s\n", error.what());
        return 1;
    }
    return 0;
}
