#include "store/grams/GramTokenizer.h"

#include "store/StoreError.h"
#include "store/grams/TextGrams.h"
#include "store/sqlite/FullTextApi.h"

#include <sqlite3.h>

#include <algorithm>
#include <new>

namespace tessary {
namespace {

using TokenFunction = int (*)(void*, int, const char*, int, int, int);

/// A long text is taken in pieces, since its grams take eight times its size. Each reaches into the next one
/// as far as a gram that begins in it may.
constexpr qsizetype kPiece = 1024 * 1024;
constexpr qsizetype kOverlap = 3 * 4; // bytes of three characters

int report(void* context, TokenFunction token, TextGrams::Gram gram)
{
    const TextGrams::GramBytes bytes(gram);
    return token(context, 0, bytes.data(), bytes.size(), 0, bytes.size());
}

int reportGrams(void* context, TokenFunction token, QByteArrayView text)
{
    std::vector<TextGrams::Gram> grams;
    TextGrams::append(text, grams);
    std::sort(grams.begin(), grams.end());
    grams.erase(std::unique(grams.begin(), grams.end()), grams.end());
    int result = SQLITE_OK;
    for (auto gram = grams.begin(); gram != grams.end() && result == SQLITE_OK; ++gram)
        result = report(context, token, *gram);
    return result;
}

int tokenize(Fts5Tokenizer*, void* context, int flags, const char* text, int length, TokenFunction token)
{
    try {
        const QByteArrayView all(text, length);
        if ((flags & FTS5_TOKENIZE_QUERY) != 0)
            return token(context, 0, text, length, 0, length);
        int result = SQLITE_OK;
        for (qsizetype start = 0; start < all.size() && result == SQLITE_OK; start += kPiece) {
            const qsizetype end = std::min(all.size(), start + kPiece + kOverlap);
            result = reportGrams(context, token, all.sliced(start, end - start));
        }
        return result;
    } catch (const std::bad_alloc&) {
        return SQLITE_NOMEM;
    }
}

int create(void*, const char**, int, Fts5Tokenizer** made)
{
    static char nothing = 0; // it has no state, and the engine wants some address
    *made = reinterpret_cast<Fts5Tokenizer*>(&nothing);
    return SQLITE_OK;
}

void destroy(Fts5Tokenizer*) {}

} // namespace

void installGramTokenizer(sqlite3* database)
{
    fts5_api& api = fullTextApi(database);
    fts5_tokenizer tokenizer{&create, &destroy, &tokenize};
    if (api.xCreateTokenizer(&api, kGramTokenizer, nullptr, &tokenizer, nullptr) != SQLITE_OK)
        throw StoreError(StoreError::Case::OpenDatabase, QStringLiteral("no tokenizer for grams"));
}

} // namespace tessary
