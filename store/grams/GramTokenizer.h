#pragma once

struct sqlite3;

namespace tessary {

/// The tokenizer's name in `tokenize = '…'`.
inline constexpr char kGramTokenizer[] = "tessary_grams";

/// Lets the full-text engine of that connection take texts apart into grams (see TextGrams), each once a
/// text, and in queries every string for one gram. @throws StoreError.
void installGramTokenizer(sqlite3* database);

} // namespace tessary
