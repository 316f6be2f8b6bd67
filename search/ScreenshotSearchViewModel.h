#pragma once

#include "base/FlowSet.h"
#include "search/LibraryActions.h"

#include <initializer_list>
#include <memory>
#include <optional>

namespace tessary {

/// Longer contents are cut to that many UTF-16 units in a list; see `ListRequest::maximumTextLength`.
inline constexpr qsizetype kListTextLimit = 20'000;

/// What the quick-search panel shows: what was typed, the chosen scope and order, the rows found so far and
/// the selected one. Main thread only; may be destroyed while a query runs.
///
/// Typing is answered 180 ms after the last key, everything else at once. Only the newest refresh counts: it
/// stops the older query, whose answer nobody sees. What fails is told through `LibraryActions`, and the rows
/// stay as they were. When a signal comes, all properties have their new values.
class ScreenshotSearchViewModel : public QObject {
    Q_OBJECT
public:
    static constexpr int kPageSize = 100; ///< Rows that are loaded at a time.
    enum class Refresh {
        Debounced, ///< After the pause that ends typing.
        Immediate,
    };

    /// @param actions must outlive the model.
    explicit ScreenshotSearchViewModel(LibraryActions& actions, QObject* parent = nullptr);
    ~ScreenshotSearchViewModel() override;

    [[nodiscard]] const QString& query() const { return m_query; } ///< As typed.
    [[nodiscard]] ScreenshotScope scope() const { return m_scope; }
    [[nodiscard]] ScreenshotSort sort() const { return m_sort; }
    [[nodiscard]] const QList<ScreenshotRecord>& results() const { return m_results; }
    /// Of the selected row; 0 when there is none.
    [[nodiscard]] int selectedIndex() const { return m_selectedIndex; }
    [[nodiscard]] std::optional<ScreenshotRecord> selectedRecord() const;
    /// A query for the first page is running, or stopped in favour of one that is about to.
    [[nodiscard]] bool isSearching() const { return m_isSearching; }
    /// A refresh waits or runs: the rows may still be those of what was typed before.
    [[nodiscard]] bool isRefreshDue() const { return m_isRefreshDue; }
    [[nodiscard]] bool hasMore() const { return m_hasMore; } ///< There are rows after the last one loaded.
    [[nodiscard]] const QStringList& sourceApps() const { return m_facets.sourceApps; }
    [[nodiscard]] const QStringList& availableTags() const { return m_facets.tags; }

    void setQuery(const QString& query);
    void setScope(ScreenshotScope scope);
    void setSort(ScreenshotSort sort);
    /// Selects the row, or the nearest there is.
    void setSelectedIndex(int index);
    /// That many rows on, or back; stops at the first and the last.
    void moveSelection(int step);

    /// Asks for the first page anew, in the place of any refresh that waits or runs.
    void scheduleRefresh(Refresh when);
    /// The same at once; ends when the answer is shown, told or of no use any more.
    [[nodiscard]] QCoro::Task<> refresh();
    /// Appends the next page. Never fails, no more than the others: an error is told. Does nothing while one
    /// is on its way, while the rows are about to be replaced, or when there are no more.
    [[nodiscard]] QCoro::Task<> loadMore();
    /// Loads the source applications and tags anew; once more when asked meanwhile.
    [[nodiscard]] QCoro::Task<> refreshFacets();

    /// The selected item to the clipboard, and, unless `directPaste` is false, into the program that was in
    /// front before. Without a selected item these four do nothing.
    void useSelected(std::optional<bool> directPaste = std::nullopt);
    void favoriteSelected();
    void pinSelected();
    void deleteSelected();

Q_SIGNALS:
    void queryChanged();
    void scopeChanged();
    void sortChanged();
    /// All rows are other ones.
    void resultsReset();
    /// Rows `first` to `last` are new, behind the others.
    void resultsAppended(int first, int last);
    void selectedIndexChanged();
    void isSearchingChanged();
    void hasMoreChanged();
    void facetsChanged(); ///< Source applications or tags.

private:
    /// Null inside once the model is being destroyed: what flows look at after each await.
    using Self = std::shared_ptr<ScreenshotSearchViewModel*>;
    using Signal = void (ScreenshotSearchViewModel::*)();

    static QCoro::Task<> refreshing(Self self, Refresh when, std::stop_token stop);
    static QCoro::Task<> loadingMore(Self self, std::stop_token stop);
    static QCoro::Task<> loadingFacets(Self self);
    /// Holds a flow that has begun, unless the model went with what it did first.
    static void keep(const Self& self, QCoro::Task<> flow);
    /// A token for the newest refresh; that of the one before is stopped.
    std::stop_token replaceRefresh();
    [[nodiscard]] ListRequest request(qsizetype offset) const;
    void show(const QList<ScreenshotRecord>& page);
    void append(const QList<ScreenshotRecord>& page);
    void showFacets(const LibraryFacets& facets);
    void setSearching(bool isSearching);
    void fail(const std::exception& error);
    /// Emits the signals in order, as far as the model survives them.
    void announce(std::initializer_list<Signal> changes);

    LibraryActions& m_actions;
    QString m_query;
    ScreenshotScope m_scope = ScreenshotScope::All;
    ScreenshotSort m_sort = ScreenshotSort::Relevance;
    QList<ScreenshotRecord> m_results;
    int m_selectedIndex = 0;
    bool m_isSearching = false;
    bool m_hasMore = false;
    LibraryFacets m_facets;
    bool m_isRefreshDue = false; // waits or runs
    bool m_isLoadingMore = false;
    bool m_isLoadingFacets = false;
    bool m_facetsAreStale = false; // the library changed while they were being loaded
    std::stop_source m_refreshStop;
    Self m_self;
    std::unique_ptr<FlowSet> m_flows;
};

} // namespace tessary
