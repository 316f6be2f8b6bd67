#pragma once

#include "store/CoreDataScreenshotStore.h"
#include "store/ItemRemover.h"
#include "store/Projection.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/unit/store/differential/LibraryGenerator.h"
#include "tests/unit/store/differential/SearchQueryGenerator.h"

namespace tessary::testing {

/// A generated library in both its databases, which chance changes in all the ways in which the store does.
class ExercisedLibrary {
public:
    /// How much of it is findable by grams.
    enum class Indexing {
        Never,
        Now, ///< After each change.
        Partly,
    };

    ExercisedLibrary(Dice& dice, GeneratedTexts& texts, SearchQueryGenerator& queries,
                     const SearchLimits& limits, Indexing indexing);

    [[nodiscard]] Projection& projection() { return *m_projection; }
    [[nodiscard]] QString projectionPath() const;
    /// Does something to it, once to a few times.
    void change();
    /// What was done last, for a person.
    [[nodiscard]] const char* lastChange() const { return m_lastChange; }

private:
    void fill(qsizetype items);
    void insertOne();
    void insert(qsizetype items);
    void editMetadata();
    void editElsewhere();
    void editMarks();
    void trash();
    void purge();
    void startOver();
    void damageAndReconcile();
    void reopen();
    void forgetGrams();
    void index();
    void change(const QByteArray& assignments, const QList<SQLiteValue>& values,
                const std::function<void(ScreenshotRecord&)>& edit);
    [[nodiscard]] std::optional<ScreenshotRecord> anyRecord();

    Dice& m_dice;
    SearchQueryGenerator& m_queries;
    LibraryGenerator m_items;
    SearchLimits m_limits;
    Indexing m_indexing;
    TemporaryFolder m_folder;
    CoreDataScreenshotStore m_records;
    ItemRemover m_remover;
    std::optional<Projection> m_projection;
    QList<QUuid> m_ids; ///< Of items that are or were there.
    const char* m_lastChange = "nothing";
};

} // namespace tessary::testing
