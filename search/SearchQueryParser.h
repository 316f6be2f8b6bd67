#pragma once

#include "base/Calendar.h"
#include "search/SearchQuery.h"

namespace tessary::SearchQueryParser {

/// Takes the text apart: `app:`, `tag:`, `before:`, `after:` and `is:` with their values, the rest is
/// keywords. Any thread.
[[nodiscard]] SearchQuery parse(const QString& text, const Calendar& calendar);

} // namespace tessary::SearchQueryParser
