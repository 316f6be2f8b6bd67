#include "store/grams/GramIndex.h"

#include "store/StoreError.h"
#include "store/grams/GramTokenizer.h"
#include "store/grams/TextGrams.h"
#include "store/search/SearchedColumns.h"

#include <QElapsedTimer>

#include <algorithm>

namespace tessary {
namespace {

/// Grows with every change of what a gram is and of what is indexed.
constexpr qint64 kRules = 1;
constexpr qsizetype kMostAsked = 6;

/// The full-text engine drops no table that it cannot read. With these, its own in their first state, it can.
constexpr char kEmptyTables[] = R"(
DROP TABLE IF EXISTS screenshots_grams_data;
DROP TABLE IF EXISTS screenshots_grams_idx;
DROP TABLE IF EXISTS screenshots_grams_config;
CREATE TABLE screenshots_grams_data(id INTEGER PRIMARY KEY, block BLOB);
CREATE TABLE screenshots_grams_idx(segid, term, pgno, PRIMARY KEY(segid, term)) WITHOUT ROWID;
CREATE TABLE screenshots_grams_config(k PRIMARY KEY, v) WITHOUT ROWID;
INSERT INTO screenshots_grams_data VALUES (1, x''), (10, x'00000000000000');
INSERT INTO screenshots_grams_config VALUES ('version', 4);
)";

QByteArray searchedColumns()
{
    QByteArrayList columns;
    for (const char* column : kSearchedColumns)
        columns.append(column);
    return columns.join(", ");
}

/// The row's texts, with `TextGrams::kBorder` between them.
QByteArray joinedTexts()
{
    QByteArrayList columns;
    for (const char* column : kSearchedColumns)
        columns.append(QByteArray("coalesce(") + column + ", '')");
    return columns.join(" || x'FF' || ");
}

QByteArray quoted(QByteArray gram)
{
    return '"' + gram.replace("\"", "\"\"") + '"';
}

/// So many of them, from everywhere.
QList<QByteArray> some(const QList<QByteArray>& grams, qsizetype most)
{
    if (grams.size() <= most)
        return grams;
    QList<QByteArray> chosen;
    for (qsizetype i = 0; i < most; ++i)
        chosen.append(grams.at(i * (grams.size() - 1) / (most - 1)));
    return chosen;
}

QByteArray allOf(QList<QByteArray> grams, qsizetype most)
{
    grams.removeIf([seen = QSet<QByteArray>()](const QByteArray& gram) mutable {
        const bool isKnown = seen.contains(gram);
        seen.insert(gram);
        return isKnown;
    });
    QByteArrayList pieces;
    for (const QByteArray& gram : some(grams, most))
        pieces.append(quoted(gram));
    return pieces.join(" AND ");
}

/// The text between what LIKE takes for any character or any run of them.
QList<QByteArray> literalPieces(const QString& keyword)
{
    QByteArray text = keyword.toUtf8();
    return text.replace('_', '%').split('%');
}

/// A letter alone is in most texts.
bool isSelective(const QByteArray& beginning)
{
    return beginning.size() > 1;
}

} // namespace

void GramIndex::prepare(const SQLiteConnection& connection)
{
    installGramTokenizer(connection.handle());
}

GramIndex::GramIndex(SQLiteConnection& connection) : m_connection(connection)
{
    prepare(m_connection);
    const bool isThere = m_connection.integerResult("SELECT count(*) FROM sqlite_schema WHERE name IN "
                                                    "('screenshots_grams', 'gram_state', 'gram_pending', "
                                                    "'gram_changes', 'gram_inserted', 'gram_updated')") == 6;
    if (isThere && isValid())
        return;
    SQLiteTransaction transaction(m_connection);
    clear();
    transaction.commit();
}

void GramIndex::create()
{
    m_connection.run(QByteArray("CREATE VIRTUAL TABLE screenshots_grams USING fts5(texts, content = '', "
                                "columnsize = 0, detail = none, tokenize = '") +
                     kGramTokenizer + "')");
    // Everything is written once more for each merge; searches want few segments all the same.
    m_connection.run("INSERT INTO screenshots_grams (screenshots_grams, rank) VALUES ('automerge', 8)");
    m_connection.run("CREATE TABLE gram_state (rules INTEGER NOT NULL, indexed_through INTEGER NOT NULL)");
    m_connection.execute("INSERT INTO gram_state VALUES (?, 0)", {kRules});
    m_connection.run("CREATE TABLE gram_pending (row INTEGER PRIMARY KEY);"
                     "CREATE TABLE gram_changes (row INTEGER PRIMARY KEY);");
    // One by one: what a statement does about conflicts holds in its triggers as well.
    const QByteArray isIndexed = " WHEN NEW.rowid <= (SELECT indexed_through FROM gram_state) ";
    const QByteArray note = "BEGIN DELETE FROM gram_pending WHERE row = NEW.rowid; "
                            "INSERT INTO gram_pending VALUES (NEW.rowid); END";
    m_connection.run("CREATE TRIGGER gram_inserted AFTER INSERT ON screenshots" + isIndexed + note);
    m_connection.run("CREATE TRIGGER gram_updated AFTER UPDATE OF " + searchedColumns() + " ON screenshots" +
                     isIndexed + note);
}

void GramIndex::clear()
{
    try {
        m_connection.run("DROP TABLE IF EXISTS screenshots_grams");
    } catch (const StoreError&) {
        m_connection.run(kEmptyTables);
        m_connection.run("DROP TABLE screenshots_grams");
    }
    m_connection.run("DROP TRIGGER IF EXISTS gram_inserted; DROP TRIGGER IF EXISTS gram_updated;"
                     "DROP TABLE IF EXISTS gram_state; DROP TABLE IF EXISTS gram_pending;"
                     "DROP TABLE IF EXISTS gram_changes;");
    create();
}

GramIndex::Query GramIndex::query(const QString& keyword)
{
    const QList<QByteArray> pieces = literalPieces(keyword);
    QList<QByteArray> grams;
    QByteArray beginning; // the longest, if no piece has a whole gram
    for (const QByteArray& piece : pieces) {
        const TextGrams::Wanted wanted = TextGrams::wantedBy(piece);
        grams += wanted.grams;
        if (wanted.beginningOfGram.size() > beginning.size())
            beginning = wanted.beginningOfGram;
    }
    const auto isWhole = [&pieces](const QByteArray& found) {
        return pieces.size() == 1 && pieces.first().size() == found.size();
    };
    if (!grams.isEmpty())
        return {allOf(grams, kMostAsked), grams.size() == 1 && isWhole(grams.first())};
    if (isSelective(beginning))
        return {quoted(beginning) + " *", isWhole(beginning)};
    return {};
}

SQLiteStatement GramIndex::pendingRows(SQLiteConnection& connection)
{
    return connection.query("SELECT row FROM gram_pending");
}

SQLiteStatement GramIndex::changedRows(SQLiteConnection& connection)
{
    return connection.query("SELECT row FROM gram_changes");
}

qint64 GramIndex::indexedThrough(SQLiteConnection& connection)
{
    return connection.integerResult("SELECT indexed_through FROM gram_state WHERE rules = ?", {kRules});
}

bool GramIndex::isValid()
{
    return m_connection.integerResult("SELECT rules FROM gram_state") == kRules;
}

void GramIndex::invalidate()
{
    m_connection.run("UPDATE gram_state SET rules = 0");
}

void GramIndex::indexRow(qint64 row)
{
    static const QByteArray sql = "INSERT INTO screenshots_grams (rowid, texts) SELECT rowid, " +
                                  joinedTexts() + " FROM screenshots WHERE rowid = ?";
    m_connection.execute(sql, {row});
}

qint64 GramIndex::unindexedRows(SQLiteConnection& connection)
{
    return connection.integerResult("SELECT max(rowid) FROM screenshots") - indexedThrough(connection) +
           connection.integerResult("SELECT count(*) FROM gram_pending");
}

/// The next row that is to be indexed; 0 for none. @param through the last one of the new rows that is.
qint64 GramIndex::nextRow(qint64 through)
{
    const qint64 pending = m_connection.integerResult("SELECT min(row) FROM gram_pending");
    if (pending > 0)
        return pending;
    return m_connection.integerResult("SELECT min(rowid) FROM screenshots WHERE rowid > ?", {through});
}

bool GramIndex::indexMore(qint64 mostRows, std::chrono::milliseconds longest)
{
    try {
        return indexPiece(mostRows, longest);
    } catch (const StoreError& error) {
        qWarning("The index of the library could not be continued: %s", error.what());
        invalidate(); // it may be damaged; next time it is begun anew
        return false;
    }
}

bool GramIndex::indexPiece(qint64 mostRows, std::chrono::milliseconds longest)
{
    QElapsedTimer elapsed;
    elapsed.start();
    SQLiteTransaction transaction(m_connection);
    if (!isValid())
        clear();
    qint64 through = indexedThrough(m_connection);
    qint64 row = nextRow(through);
    for (qint64 count = 0; row > 0 && count < mostRows && !elapsed.hasExpired(longest.count()); ++count) {
        indexRow(row);
        if (row > through) {
            through = row;
        } else {
            m_connection.execute("INSERT OR IGNORE INTO gram_changes VALUES (?)", {row});
            m_connection.execute("DELETE FROM gram_pending WHERE row = ?", {row});
        }
        row = nextRow(through);
    }
    m_connection.execute("UPDATE gram_state SET indexed_through = ?", {through});
    transaction.commit();
    return row > 0;
}

bool GramIndex::isRightAbout(qint64 row)
{
    constexpr qsizetype kMostCompared = 30;
    static const QByteArray texts = "SELECT " + joinedTexts() + " FROM screenshots WHERE rowid = ?";
    if (row > indexedThrough(m_connection) ||
        m_connection.integerResult("SELECT count(*) FROM gram_pending WHERE row = ?", {row}) > 0)
        return true;
    std::vector<TextGrams::Gram> held;
    {
        SQLiteStatement statement = m_connection.query(texts, {row});
        if (statement.nextRow())
            TextGrams::append(statement.bytes(0), held);
    }
    QList<QByteArray> grams;
    for (const TextGrams::Gram gram : held)
        grams.append(TextGrams::GramBytes(gram).toByteArray());
    if (grams.isEmpty())
        return true;
    SQLiteStatement found =
        m_connection.query("SELECT 1 FROM screenshots_grams WHERE screenshots_grams MATCH ? AND rowid = ?");
    const QByteArray all = allOf(grams, kMostCompared);
    found.bindText(1, all);
    found.bindInteger(2, row);
    return found.nextRow();
}

} // namespace tessary
