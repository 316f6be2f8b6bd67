#pragma once

#include "bench/search/SampleWords.h"
#include "search/ListRequest.h"

namespace tessary::bench {

/// One line of the table.
struct SearchCase {
    QString name;
    ListRequest request;
};

/// What the table is about, in the library at hand.
class SearchCases {
public:
    /// @param newest when the newest item was captured.
    SearchCases(const SampleWords& words, qint64 items, Date oldest, Date newest);

    [[nodiscard]] QList<SearchCase> searches() const;
    /// Without a keyword: far down in the list.
    [[nodiscard]] QList<SearchCase> farPages() const;
    [[nodiscard]] ListRequest list(ScreenshotScope scope, ScreenshotSort sort, int offset = 0) const;

private:
    [[nodiscard]] ListRequest search(const QString& text) const;
    /// The day before which that share of the items was captured.
    [[nodiscard]] QString day(double share) const;

    SampleWords m_words;
    qint64 m_items;
    Date m_oldest;
    Date m_newest;
};

} // namespace tessary::bench
