#include "ui/quicksearch/QuickSearchView.h"

#include "app/AppRuntime.h"
#include "search/ScreenshotSearchViewModel.h"
#include "search/SearchQueryParser.h"
#include "store/FileImageCache.h"
#include "ui/kit/Banner.h"
#include "ui/kit/EmptyState.h"
#include "ui/kit/Hairline.h"
#include "ui/kit/SymbolButton.h"
#include "ui/kit/Theme.h"
#include "ui/quicksearch/DetailPane.h"
#include "ui/quicksearch/FilterMenu.h"
#include "ui/quicksearch/NarrowingChips.h"
#include "ui/quicksearch/PanelFooter.h"
#include "ui/quicksearch/ResultList.h"
#include "ui/quicksearch/ResultListModel.h"
#include "ui/quicksearch/RowMenu.h"
#include "ui/quicksearch/SearchBar.h"
#include "ui/quicksearch/SearchField.h"

#include <QContextMenuEvent>
#include <QStackedWidget>
#include <QTimerEvent>
#include <QVBoxLayout>

namespace tessary {
namespace {

constexpr int kPatience = 150; // milliseconds until something is seen to go on

} // namespace

QuickSearchView::QuickSearchView(const Theme& theme, AppRuntime& runtime, ScreenshotSearchViewModel& model,
                                 QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_runtime(runtime),
      m_model(model),
      m_tiles(FileImageCache::sharedImage),
      m_rows(new ResultListModel(runtime.clock(), this)),
      m_bar(new SearchBar(theme)),
      m_chips(new NarrowingChips(theme)),
      m_banner(new Banner(theme, QStringLiteral("exclamationmark.triangle.fill"))),
      m_list(new ResultList(theme, *m_rows, m_tiles)),
      m_empty(new EmptyState(theme)),
      m_left(new QStackedWidget),
      m_detail(new DetailPane(theme, m_tiles, FileImageCache::sharedImage)),
      m_footer(new PanelFooter(theme))
{
    layOut();
    m_chips->setTabbedAfter(m_bar->lastButton());
    applyTheme();
    connect(&theme, &Theme::changed, this, &QuickSearchView::applyTheme);
    observeModel();
    observeRuntime();
    observeControls();
    followResults();
    followNarrowing();
}

void QuickSearchView::layOut()
{
    auto* split = new QHBoxLayout;
    split->setSpacing(0);
    m_left->addWidget(m_list);
    m_left->addWidget(m_empty);
    split->addWidget(m_left);
    split->addWidget(new Hairline(m_theme, Qt::Vertical));
    split->addWidget(m_detail, 1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_bar);
    column->addWidget(m_chips);
    column->addWidget(new Hairline(m_theme, Qt::Horizontal));
    column->addWidget(m_banner);
    column->addLayout(split, 1);
    column->addWidget(new Hairline(m_theme, Qt::Horizontal));
    column->addWidget(m_footer);
}

void QuickSearchView::applyTheme()
{
    QPalette palette = m_theme.palette();
    palette.setColor(QPalette::Window, m_theme.colours().surface);
    m_left->setFixedWidth(ResultList::widthFor(m_theme));
    m_left->setPalette(palette);
    m_left->setAutoFillBackground(true);
}

void QuickSearchView::observeModel()
{
    using Model = ScreenshotSearchViewModel;
    connect(&m_model, &Model::queryChanged, this, [this] {
        if (field().text() != m_model.query())
            field().setText(m_model.query());
        followNarrowing();
    });
    connect(&m_model, &Model::scopeChanged, this, &QuickSearchView::followNarrowing);
    connect(&m_model, &Model::sortChanged, this, &QuickSearchView::followNarrowing);
    connect(&m_model, &Model::resultsReset, this, &QuickSearchView::followResults);
    connect(&m_model, &Model::resultsAppended, this, &QuickSearchView::followResults);
    connect(&m_model, &Model::hasMoreChanged, this, &QuickSearchView::followResults);
    connect(&m_model, &Model::selectedIndexChanged, this, &QuickSearchView::followSelection);
    connect(&m_model, &Model::isSearchingChanged, this, [this] {
        if (!m_model.isSearching())
            followKeywords(); // another text may have found the same rows
        followEmptyState();
    });
}

void QuickSearchView::observeRuntime()
{
    const auto followError = [this] { m_banner->setMessage(m_runtime.lastError().value_or(QString())); };
    const auto followPin = [this] { m_bar->setPinned(m_runtime.settings().quickSearchPinned()); };
    connect(&m_runtime, &AppRuntime::lastErrorChanged, this, followError);
    connect(&m_runtime, &AppRuntime::isMonitoringChanged, this, &QuickSearchView::followEmptyState);
    connect(&m_runtime.settings(), &AppSettings::quickSearchPinnedChanged, this, followPin);
    followError();
    followPin();
}

void QuickSearchView::observeControls()
{
    connect(&field(), &QLineEdit::textChanged, &m_model, &ScreenshotSearchViewModel::setQuery);
    connect(&field(), &QLineEdit::textEdited, this, &QuickSearchView::startAtTop);
    connect(m_bar, &SearchBar::filterRequested, this, &QuickSearchView::openFilterMenu);
    connect(m_bar, &SearchBar::pinToggled, this,
            [this](bool isPinned) { m_runtime.settings().setQuickSearchPinned(isPinned); });
    connect(m_bar, &SearchBar::settingsRequested, &m_runtime, &AppRuntime::openSettings);
    connect(m_chips, &NarrowingChips::removed, this, &QuickSearchView::remove);
    connect(m_banner, &Banner::closed, &m_runtime, &AppRuntime::clearLastError);
    connect(m_list, &ResultList::rowClicked, &m_model, &ScreenshotSearchViewModel::setSelectedIndex);
    connect(m_list, &ResultList::rowActivated, this, [this] { m_model.useSelected(); });
    connect(m_list, &ResultList::loadMoreRequested, this,
            [this] { QCoro::connect(m_model.loadMore(), this, [] {}); });
    connect(m_list, &ResultList::rowMenuRequested, this, &QuickSearchView::openRowMenu);
}

SearchField& QuickSearchView::field() const
{
    return m_bar->field();
}

void QuickSearchView::prepareToShow()
{
    m_tiles.clear();
    field().setFocus(Qt::OtherFocusReason);
    followSelection();
}

void QuickSearchView::releaseMemory()
{
    m_tiles.clear();
    m_detail->clear();
}

void QuickSearchView::followKeywords()
{
    m_list->setKeywords(SearchQueryParser::parse(m_model.query(), Calendar::current()).keywords);
}

void QuickSearchView::followResults()
{
    followKeywords();
    m_rows->update(m_model.results(), m_model.hasMore());
    m_footer->setCount(m_model.results().size());
    followSelection();
    followEmptyState();
}

void QuickSearchView::followSelection()
{
    m_list->select(m_model.selectedIndex());
    m_detail->set(m_model.selectedRecord());
}

void QuickSearchView::followNarrowing()
{
    m_chips->set(narrowings(m_model.query(), m_model.scope(), Calendar::current()));
    m_bar->filterButton().setTinted(m_model.scope() != ScreenshotScope::All ||
                                    m_model.sort() != ScreenshotSort::Relevance);
}

void QuickSearchView::followEmptyState()
{
    m_left->setCurrentWidget(m_model.results().isEmpty() ? static_cast<QWidget*>(m_empty) : m_list);
    if (!m_model.results().isEmpty()) {
        m_patience.stop();
        return;
    }
    if (m_model.isSearching()) {
        if (!m_patience.isActive())
            m_patience.start(kPatience, this);
        return;
    }
    m_patience.stop();
    if (!m_model.query().trimmed().isEmpty()) {
        m_empty->set(QStringLiteral("magnifyingglass"), tr("没有匹配的内容"),
                     tr("尝试减少关键词或更改筛选条件"));
    } else {
        m_empty->set(QStringLiteral("clipboard"), tr("还没有剪贴板记录"),
                     m_runtime.isMonitoring() ? tr("复制文字或图片后，内容会自动出现在这里")
                                              : tr("剪贴板记录已暂停，可在设置中恢复"));
    }
}

void QuickSearchView::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_patience.timerId())
        return;
    m_patience.stop();
    m_empty->set({}, {}, tr("正在搜索剪贴板"));
}

void QuickSearchView::remove(const Narrowing& narrowing)
{
    if (narrowing.operatorKey.isEmpty())
        m_model.setScope(ScreenshotScope::All);
    else
        m_model.setQuery(SearchQueryParser::removingOperator(m_model.query(), narrowing.operatorKey));
    field().setFocus(Qt::OtherFocusReason);
}

/// Another list than before: what was selected in it or scrolled to means nothing.
void QuickSearchView::startAtTop()
{
    m_model.setSelectedIndex(0);
    m_list->scrollToTop();
}

void QuickSearchView::openFilterMenu()
{
    constexpr int kBelow = 6;
    auto* menu = new FilterMenu(m_theme, m_isComposited, m_model.scope(), m_model.sort(), this);
    SymbolButton& button = m_bar->filterButton();
    connect(menu, &FilterMenu::scopeChosen, &m_model, &ScreenshotSearchViewModel::setScope);
    connect(menu, &FilterMenu::sortChosen, &m_model, &ScreenshotSearchViewModel::setSort);
    connect(menu, &FilterMenu::scopeChosen, this, &QuickSearchView::startAtTop);
    connect(menu, &FilterMenu::sortChosen, this, &QuickSearchView::startAtTop);
    connect(menu, &QMenu::aboutToHide, &button, [&button] { button.setHeld(false); });
    button.setHeld(true);
    const QPoint corner = button.mapToGlobal(QPoint(button.width(), button.height() + kBelow));
    open(*menu, corner - QPoint(menu->sizeHint().width(), 0));
}

void QuickSearchView::openRowMenu(int row, const QPoint& place)
{
    m_model.setSelectedIndex(row);
    const std::optional<ScreenshotRecord> record = m_model.selectedRecord();
    if (!record)
        return;
    auto* menu = new RowMenu(m_theme, m_isComposited, *record, this);
    // The list may have changed by the time something is chosen: it concerns the item, not the row.
    const auto run = [this](QCoro::Task<> task) { m_runtime.perform(std::move(task)); };
    connect(menu, &RowMenu::copyRequested, this,
            [this, run, record] { run(m_runtime.copy(*record, false)); });
    connect(menu, &RowMenu::pasteRequested, this,
            [this, run, record] { run(m_runtime.copy(*record, true)); });
    connect(menu, &RowMenu::previewRequested, this, [this, record] { m_runtime.preview(*record); });
    connect(menu, &RowMenu::revealRequested, this, [this, record] { m_runtime.revealInFinder(*record); });
    connect(menu, &RowMenu::favoriteRequested, this,
            [this, run, record] { run(m_runtime.toggleFavorite(*record)); });
    connect(menu, &RowMenu::pinRequested, this,
            [this, run, record] { run(m_runtime.togglePinned(*record)); });
    connect(menu, &RowMenu::deletionRequested, this,
            [this, run, record] { run(m_runtime.moveToTrash(*record)); });
    open(*menu, place);
}

void QuickSearchView::open(Menu& menu, const QPoint& place)
{
    menu.setAttribute(Qt::WA_DeleteOnClose);
    connect(&menu, &QMenu::aboutToHide, this, &QuickSearchView::menuClosed, Qt::QueuedConnection);
    menu.popup(place);
}

/// The menu key, wherever the focus is.
void QuickSearchView::contextMenuEvent(QContextMenuEvent* event)
{
    if (event->reason() == QContextMenuEvent::Keyboard)
        openRowMenu(m_model.selectedIndex(), m_list->placeOfMenu(m_model.selectedIndex()));
}

} // namespace tessary
