#pragma once

#include "base/FlowSet.h"
#include "search/LibraryActions.h"

#include <stop_token>

namespace tessary {

/// The state behind the quick-search panel: what was typed, the rows found, which one is selected. Turns
/// typing into queries, pages through their results, and hands actions on the selected item to the runtime.
/// Main thread only.
class ScreenshotSearchViewModel : public QObject {
    Q_OBJECT
public:
    static constexpr int kPageSize = 100;
    /// Longer texts are cut to so many UTF-16 units in `results`.
    static constexpr qsizetype kListTextLimit = 20'000;

    /// @param library outlives the model.
    explicit ScreenshotSearchViewModel(LibraryActions& library, QObject* parent = nullptr);
    ~ScreenshotSearchViewModel() override;

    [[nodiscard]] const QString& query() const { return m_query; }
    void setQuery(const QString& query);
    [[nodiscard]] ScreenshotScope scope() const { return m_scope; }
    void setScope(ScreenshotScope scope);
    [[nodiscard]] ScreenshotSort sort() const { return m_sort; }
    void setSort(ScreenshotSort sort);
    [[nodiscard]] const QList<ScreenshotRecord>& results() const { return m_results; }
    [[nodiscard]] int selectedIndex() const { return m_selectedIndex; }
    void setSelectedIndex(int index);
    [[nodiscard]] bool isSearching() const { return m_isSearching; }
    [[nodiscard]] bool hasMore() const { return m_hasMore; }
    [[nodiscard]] const QStringList& sourceApps() const { return m_facets.sourceApps; }
    [[nodiscard]] const QStringList& availableTags() const { return m_facets.tags; }
    [[nodiscard]] std::optional<ScreenshotRecord> selectedRecord() const;

    void scheduleRefresh(bool immediate);
    [[nodiscard]] QCoro::Task<> loadMore();
    void moveSelection(int step);
    void useSelected(std::optional<bool> directPaste = std::nullopt);
    void favoriteSelected();
    void pinSelected();
    void deleteSelected();

Q_SIGNALS:
    void queryChanged();
    void scopeChanged();
    void sortChanged();
    void resultsChanged(); ///< `results` or `hasMore`; emitted before a changed `selectedIndex`.
    void selectedIndexChanged();
    void isSearchingChanged();
    void facetsChanged();
