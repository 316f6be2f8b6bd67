#include "store/search/FullTextPhrase.h"

#include "store/StoreError.h"
#include "store/search/PlainText.h"
#include "store/sqlite/FullTextApi.h"

#include <QVarLengthArray>

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <limits>

namespace tessary {
namespace {

struct Words {
    const std::function<bool(QByteArrayView)>& use;
};

int takeWord(void* context, int, const char* word, int length, int, int)
{
    return static_cast<Words*>(context)->use({word, length}) ? SQLITE_OK : SQLITE_ABORT;
}

/// What stands between the quotes of an expression for one term.
QByteArray phraseOf(const QString& expression)
{
    const qsizetype first = expression.indexOf(u'"') + 1;
    const qsizetype last = expression.lastIndexOf(u'"');
    return expression.mid(first, last - first).replace(QStringLiteral("\"\""), QStringLiteral("\"")).toUtf8();
}

} // namespace

FullTextTokenizer::FullTextTokenizer(sqlite3* database) : m_module(std::make_shared<fts5_tokenizer>())
{
    fts5_api& api = fullTextApi(database);
    void* userData = nullptr;
    Fts5Tokenizer* made = nullptr;
    std::array<const char*, 2> options{"remove_diacritics", "2"};
    if (api.xFindTokenizer(&api, "unicode61", &userData, m_module.get()) != SQLITE_OK ||
        m_module->xCreate(userData, options.data(), static_cast<int>(options.size()), &made) != SQLITE_OK)
        throw StoreError(StoreError::Case::OpenDatabase, QStringLiteral("no tokenizer for words"));
    m_tokenizer.reset(made, m_module->xDelete);
}

void FullTextTokenizer::tokenize(QByteArrayView text, const std::function<bool(QByteArrayView)>& use) const
{
    Words words{use};
    const auto size = static_cast<int>(std::min<qsizetype>(text.size(), std::numeric_limits<int>::max()));
    m_module->xTokenize(m_tokenizer.get(), &words, FTS5_TOKENIZE_DOCUMENT, text.data(), size, &takeWord);
}

FullTextPhrase::FullTextPhrase(const QString& expression, const FullTextTokenizer& tokenizer)
{
    tokenizer.tokenize(phraseOf(expression), [this](QByteArrayView word) {
        m_words.append(word.toByteArray());
        return true;
    });
    constexpr qsizetype kMostLookedFor = 3; // which is as telling as all
    for (const QByteArray& word : m_words.first(std::min(m_words.size(), kMostLookedFor)))
        m_wordTexts.emplace_back('%' + word + '%');
}

/// Tells most texts without the phrase, in a fraction of the time that it takes to take them apart.
bool FullTextPhrase::mayBeIn(QByteArrayView text) const
{
    const bool hasWords = std::all_of(m_wordTexts.begin(), m_wordTexts.end(),
                                      [text](const LikePattern& word) { return word.matches(text); });
    return hasWords || !isPlainText(text);
}

bool FullTextPhrase::isIn(QByteArrayView text, const FullTextTokenizer& tokenizer) const
{
    if (m_words.isEmpty() || text.isEmpty() || !mayBeIn(text))
        return false;
    bool isFound = false;
    // Of the places where the phrase may stand, how many of its words were met.
    QVarLengthArray<qsizetype> begun;
    QVarLengthArray<qsizetype> goingOn;
    tokenizer.tokenize(text, [&](QByteArrayView word) {
        goingOn.clear();
        begun.append(0);
        for (const qsizetype met : std::as_const(begun)) {
            const QByteArray& wanted = m_words.at(met);
            const bool isLast = met + 1 == m_words.size();
            isFound = isFound || (isLast && word.startsWith(wanted));
            if (!isLast && word == wanted)
                goingOn.append(met + 1);
        }
        std::swap(begun, goingOn);
        return !isFound;
    });
    return isFound;
}

} // namespace tessary
