#include "search/ScreenshotSearchViewModel.h"

#include "base/Error.h"

#include <QLoggingCategory>
#include <QPointer>

Q_LOGGING_CATEGORY(lcSearch, "tessary.search", QtInfoMsg)

namespace tessary {
namespace {

using namespace std::chrono_literals;

constexpr auto kDebounce = 180ms;

/// Keeps the flows of a model that is gone until they have ended, since nothing may wait for them.
QCoro::Task<> retire(std::unique_ptr<FlowSet> flows)
{
    co_await flows->drained();
}

} // namespace

ScreenshotSearchViewModel::ScreenshotSearchViewModel(LibraryActions& actions, QObject* parent)
    : QObject(parent),
      m_actions(actions),
      m_self(std::make_shared<ScreenshotSearchViewModel*>(this))
{
    // What a person asked for is told of even after the panel has gone.
    m_flows = std::make_unique<FlowSet>([listener = QPointer(&m_actions)](const std::exception& error) {
        if (listener)
            listener->reportFailure(localizedDescription(error));
    });
    connect(&m_actions, &LibraryActions::libraryChanged, this, [this] {
        const Self self = m_self;
        scheduleRefresh(Refresh::Immediate);
        if (*self != nullptr)
            keep(self, refreshFacets());
    });
    m_flows->add(refreshFacets());
}

ScreenshotSearchViewModel::~ScreenshotSearchViewModel()
{
    *m_self = nullptr;
    m_refreshStop.request_stop();
    m_flows->cancel();
    retire(std::move(m_flows));
}

// --- what is chosen ---------------------------------------------------------

void ScreenshotSearchViewModel::setQuery(const QString& query)
{
    if (m_query == query)
        return;
    m_query = query;
    const Self self = m_self;
    scheduleRefresh(Refresh::Debounced);
    if (*self != nullptr)
        Q_EMIT queryChanged();
}

void ScreenshotSearchViewModel::setScope(ScreenshotScope scope)
{
    if (m_scope == scope)
        return;
    m_scope = scope;
    const Self self = m_self;
    scheduleRefresh(Refresh::Immediate);
    if (*self != nullptr)
        Q_EMIT scopeChanged();
}

void ScreenshotSearchViewModel::setSort(ScreenshotSort sort)
{
    if (m_sort == sort)
        return;
    m_sort = sort;
    const Self self = m_self;
    scheduleRefresh(Refresh::Immediate);
    if (*self != nullptr)
        Q_EMIT sortChanged();
}

std::optional<ScreenshotRecord> ScreenshotSearchViewModel::selectedRecord() const
{
    if (m_selectedIndex >= m_results.size())
        return std::nullopt;
    return m_results.at(m_selectedIndex);
}

void ScreenshotSearchViewModel::setSelectedIndex(int index)
{
    const auto last = static_cast<int>(m_results.size()) - 1;
    const int nearest = std::max(0, std::min(index, last));
    if (m_selectedIndex == nearest)
        return;
    m_selectedIndex = nearest;
    Q_EMIT selectedIndexChanged();
}

void ScreenshotSearchViewModel::moveSelection(int step)
{
    const qint64 wanted = qint64{m_selectedIndex} + step;
    setSelectedIndex(static_cast<int>(std::clamp<qint64>(wanted, 0, std::numeric_limits<int>::max())));
}

// --- the first page ---------------------------------------------------------

std::stop_token ScreenshotSearchViewModel::replaceRefresh()
{
    // In this order: whoever hears of the stop may ask for yet another refresh.
    std::stop_source former = std::exchange(m_refreshStop, std::stop_source());
    m_isRefreshDue = true;
    const std::stop_token token = m_refreshStop.get_token();
    former.request_stop();
    return token;
}

void ScreenshotSearchViewModel::scheduleRefresh(Refresh when)
{
    const Self self = m_self;
    const std::stop_token stop = replaceRefresh();
    if (!stop.stop_requested())
        keep(self, refreshing(self, when, stop));
}

void ScreenshotSearchViewModel::keep(const Self& self, QCoro::Task<> flow)
{
    // A flow begins before anybody holds it, and who hears of what it does may destroy the model.
    if (*self != nullptr)
        (*self)->m_flows->add(std::move(flow));
}

QCoro::Task<> ScreenshotSearchViewModel::refresh()
{
    const Self self = m_self;
    const std::stop_token stop = replaceRefresh();
    return refreshing(self, Refresh::Immediate, stop);
}

ListRequest ScreenshotSearchViewModel::request(qsizetype offset) const
{
    ListRequest request;
    request.rawQuery = m_query;
    request.scope = m_scope;
    request.sort = m_sort;
    request.limit = kPageSize + 1;
    request.offset = static_cast<int>(offset);
    request.now = m_actions.clock().now();
    request.calendar = Calendar::current();
    request.maximumTextLength = kListTextLimit;
    return request;
}

QCoro::Task<> ScreenshotSearchViewModel::refreshing(Self self, Refresh when, std::stop_token stop)
{
    if (stop.stop_requested())
        co_return;
    if (when == Refresh::Debounced) {
        const QCoro::Task<> pause = (*self)->m_actions.clock().sleep(kDebounce);
        co_await pause;
    }
    if (stop.stop_requested())
        co_return;
    (*self)->setSearching(true);
    if (stop.stop_requested())
        co_return;
    QList<ScreenshotRecord> page;
    try {
        const QCoro::Task<QList<ScreenshotRecord>> search =
            (*self)->m_actions.search((*self)->request(0), stop);
        page = co_await search;
    } catch (const std::exception& error) {
        if (!stop.stop_requested())
            (*self)->fail(error);
        co_return;
    }
    if (!stop.stop_requested())
        (*self)->show(page);
}

void ScreenshotSearchViewModel::show(const QList<ScreenshotRecord>& page)
{
    const QList<ScreenshotRecord> rows = page.first(std::min<qsizetype>(page.size(), kPageSize));
    const bool hadMore = std::exchange(m_hasMore, page.size() > kPageSize);
    const bool areOthers = rows != m_results;
    m_results = rows;
    const int last = std::max(0, static_cast<int>(rows.size()) - 1);
    const int selectedBefore = std::exchange(m_selectedIndex, std::min(m_selectedIndex, last));
    m_isRefreshDue = false;
    m_isSearching = false;
    qCDebug(lcSearch, "%d results in the list", static_cast<int>(rows.size()));
    announce({areOthers ? &ScreenshotSearchViewModel::resultsReset : nullptr,
              selectedBefore != m_selectedIndex ? &ScreenshotSearchViewModel::selectedIndexChanged : nullptr,
              hadMore != m_hasMore ? &ScreenshotSearchViewModel::hasMoreChanged : nullptr,
              &ScreenshotSearchViewModel::isSearchingChanged});
}

void ScreenshotSearchViewModel::fail(const std::exception& error)
{
    LibraryActions& actions = m_actions;
    m_isRefreshDue = false;
    // The rows may be those of another query now; they have no next page that would fit.
    const bool hadMore = std::exchange(m_hasMore, false);
    m_isSearching = false;
    announce({hadMore ? &ScreenshotSearchViewModel::hasMoreChanged : nullptr,
              &ScreenshotSearchViewModel::isSearchingChanged});
    actions.reportFailure(localizedDescription(error));
}

void ScreenshotSearchViewModel::setSearching(bool isSearching)
{
    if (m_isSearching == isSearching)
        return;
    m_isSearching = isSearching;
    Q_EMIT isSearchingChanged();
}

void ScreenshotSearchViewModel::announce(std::initializer_list<Signal> changes)
{
    const Self self = m_self;
    for (const Signal change : changes)
        if (change != nullptr && *self != nullptr)
            Q_EMIT((*self)->*change)();
}

// --- further pages and facets -----------------------------------------------

QCoro::Task<> ScreenshotSearchViewModel::loadMore()
{
    return loadingMore(m_self, m_refreshStop.get_token());
}

QCoro::Task<> ScreenshotSearchViewModel::loadingMore(Self self, std::stop_token stop)
{
    ScreenshotSearchViewModel& model = **self;
    if (model.m_isLoadingMore || model.m_isRefreshDue || !model.m_hasMore)
        co_return;
    model.m_isLoadingMore = true;
    std::optional<QList<ScreenshotRecord>> page;
    try {
        const QCoro::Task<QList<ScreenshotRecord>> search =
            model.m_actions.search(model.request(model.m_results.size()), stop);
        page = co_await search;
    } catch (const std::exception& error) {
        // A stop is a newer refresh: other rows, which have pages of their own.
        if (!stop.stop_requested())
            model.m_actions.reportFailure(localizedDescription(error));
    }
    if (*self == nullptr)
        co_return;
    model.m_isLoadingMore = false;
    if (page && !stop.stop_requested())
        model.append(*page);
}

void ScreenshotSearchViewModel::append(const QList<ScreenshotRecord>& page)
{
    const QList<ScreenshotRecord> rows = page.first(std::min<qsizetype>(page.size(), kPageSize));
    const auto first = static_cast<int>(m_results.size());
    const bool hadMore = std::exchange(m_hasMore, page.size() > kPageSize);
    m_results.append(rows);
    const Self self = m_self;
    if (!rows.isEmpty())
        Q_EMIT resultsAppended(first, first + static_cast<int>(rows.size()) - 1);
    if (*self != nullptr)
        announce({hadMore != m_hasMore ? &ScreenshotSearchViewModel::hasMoreChanged : nullptr});
}

QCoro::Task<> ScreenshotSearchViewModel::refreshFacets()
{
    return loadingFacets(m_self);
}

QCoro::Task<> ScreenshotSearchViewModel::loadingFacets(Self self)
{
    ScreenshotSearchViewModel& model = **self;
    model.m_facetsAreStale = true;
    if (model.m_isLoadingFacets)
        co_return; // the flow that is loading them looks again
    model.m_isLoadingFacets = true;
    while (*self != nullptr && model.m_facetsAreStale) {
        model.m_facetsAreStale = false;
        try {
            const QCoro::Task<LibraryFacets> loading = model.m_actions.facets();
            const LibraryFacets facets = co_await loading;
            if (*self != nullptr)
                model.showFacets(facets);
        } catch (const std::exception& error) {
            if (*self != nullptr)
                model.m_actions.reportFailure(localizedDescription(error));
        }
    }
    if (*self != nullptr)
        model.m_isLoadingFacets = false;
}

void ScreenshotSearchViewModel::showFacets(const LibraryFacets& facets)
{
    if (m_facets == facets)
        return;
    m_facets = facets;
    Q_EMIT facetsChanged();
}

// --- what a person does to the selected item --------------------------------

void ScreenshotSearchViewModel::useSelected(std::optional<bool> directPaste)
{
    const Self self = m_self;
    if (const std::optional<ScreenshotRecord> record = selectedRecord())
        keep(self, m_actions.copy(*record, directPaste.value_or(true)));
}

void ScreenshotSearchViewModel::favoriteSelected()
{
    const Self self = m_self;
    if (const std::optional<ScreenshotRecord> record = selectedRecord())
        keep(self, m_actions.toggleFavorite(*record));
}

void ScreenshotSearchViewModel::pinSelected()
{
    const Self self = m_self;
    if (const std::optional<ScreenshotRecord> record = selectedRecord())
        keep(self, m_actions.togglePinned(*record));
}

void ScreenshotSearchViewModel::deleteSelected()
{
    const Self self = m_self;
    if (const std::optional<ScreenshotRecord> record = selectedRecord())
        keep(self, m_actions.moveToTrash(*record));
}

} // namespace tessary
