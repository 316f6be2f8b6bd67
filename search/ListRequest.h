#pragma once

#include "base/Calendar.h"
#include "search/ScreenshotScope.h"
#include "search/ScreenshotSort.h"

#include <optional>

namespace tessary {

/// One page of one list of the library.
struct ListRequest {
    QString rawQuery; ///< As typed; see SearchQueryParser.
    ScreenshotScope scope = ScreenshotScope::All;
    ScreenshotSort sort = ScreenshotSort::Relevance;
    int limit = 100;
    int offset = 0;
    Date now;
    Calendar calendar;
    /// Longer contents of text items are cut to that many UTF-16 units in the answer, so that a page of
    /// huge texts stays small. Which items match does not depend on it.
    std::optional<qsizetype> maximumTextLength;
};

/// What the library can be narrowed to.
struct LibraryFacets {
    QStringList sourceApps;
    QStringList tags;

    friend bool operator==(const LibraryFacets&, const LibraryFacets&) = default;
};

} // namespace tessary
