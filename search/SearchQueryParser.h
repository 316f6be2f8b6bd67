#pragma once

#include "base/Calendar.h"
#include "search/SearchQuery.h"

namespace tessary::SearchQueryParser {

/// Takes the text apart: `app:`, `tag:`, `before:`, `after:` and `is:` (in any letter case, with no space
/// around the colon) and their values, which are a word or words between double quotes. Such an operator
/// counts even within a word, the last of its kind decides, and one whose value means nothing is passed
/// over. The rest is keywords, separated by white space. Never fails; any thread.
[[nodiscard]] SearchQuery parse(const QString& text, const Calendar& calendar);

/// The text without its operators of that key ("app", "tag", "before", "after", "is") and the white space
/// that stood between them and the rest.
[[nodiscard]] QString removingOperator(const QString& text, const QString& key);

} // namespace tessary::SearchQueryParser
