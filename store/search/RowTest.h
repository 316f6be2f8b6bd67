#pragma once

#include "search/SearchQuery.h"
#include "store/search/FullTextPhrase.h"
#include "store/search/RowSet.h"
#include "store/sqlite/LikePattern.h"
#include "store/sqlite/SQLiteConnection.h"

#include <optional>
#include <vector>

namespace tessary {

/// Whether a single row has all the texts that a query asks for: the last word on every finding.
class RowTest {
public:
    /// @param reader, tokenizer have to outlive this. @throws StoreError.
    RowTest(SQLiteConnection& reader, const FullTextTokenizer& tokenizer, const SearchQuery& query);

    [[nodiscard]] bool matches(qint64 row);
    /// All rows in which the full-text table finds the keyword are known: what it says counts, and no row
    /// has to be taken apart for that.
    void setFullTextRows(qsizetype keyword, RowSet rows);

private:
    struct Keyword {
        LikePattern pattern;
        FullTextPhrase phrase;
        std::optional<RowSet> fullTextRows;
    };

    [[nodiscard]] bool holds(const LikePattern& pattern, size_t column) const;
    [[nodiscard]] bool isInAnyColumn(const LikePattern& pattern) const;
    [[nodiscard]] bool isInFullText(const Keyword& keyword, qint64 row);

    const FullTextTokenizer& m_tokenizer;
    std::vector<Keyword> m_keywords;
    std::optional<LikePattern> m_app;
    std::optional<LikePattern> m_tags;
    SQLiteStatement m_texts;
    SQLiteStatement m_fullTexts;
};

} // namespace tessary
