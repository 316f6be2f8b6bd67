#pragma once

#include "store/sqlite/LikePattern.h"

#include <QByteArrayView>
#include <QList>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

struct sqlite3;
struct fts5_tokenizer;
struct Fts5Tokenizer;

namespace tessary {

/// Takes texts apart into words as the projection's full-text table does.
class FullTextTokenizer {
public:
    /// @throws StoreError.
    explicit FullTextTokenizer(sqlite3* database);

    /// Hands over the words in order, until the function returns false.
    void tokenize(QByteArrayView text, const std::function<bool(QByteArrayView)>& use) const;

private:
    std::shared_ptr<fts5_tokenizer> m_module;
    std::shared_ptr<Fts5Tokenizer> m_tokenizer;
};

/// What the full-text query for one keyword asks for, put to single rows: the keyword's words side by side,
/// where the last one may go on.
class FullTextPhrase {
public:
    /// @param expression of `fullTextQuery`.
    FullTextPhrase(const QString& expression, const FullTextTokenizer& tokenizer);

    /// Whether one of the texts of a full-text row has it.
    [[nodiscard]] bool isIn(QByteArrayView text, const FullTextTokenizer& tokenizer) const;

private:
    [[nodiscard]] bool mayBeIn(QByteArrayView text) const;

    QList<QByteArray> m_words;            ///< Without any, it is nowhere.
    std::vector<LikePattern> m_wordTexts; ///< What a plain text has that has these words.
};

} // namespace tessary
