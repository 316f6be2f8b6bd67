#pragma once

#include "ui/quicksearch/PicturePreview.h"
#include "ui/quicksearch/TileImages.h"

#include <QBasicTimer>
#include <QWidget>

class QStackedWidget;

namespace tessary {

class AppRuntime;
class Banner;
class DetailPane;
class EmptyState;
class Menu;
class NarrowingChips;
class PanelFooter;
class ResultList;
class ResultListModel;
class ScreenshotSearchViewModel;
class SearchBar;
class SearchField;
class Theme;
struct Narrowing;

/// What the panel shows: search bar, chips, error banner, results beside the selected item, footer.
class QuickSearchView : public QWidget {
    Q_OBJECT
public:
    QuickSearchView(const Theme& theme, AppRuntime& runtime, ScreenshotSearchViewModel& model,
                    QWidget* parent = nullptr);

    [[nodiscard]] SearchField& field() const;
    /// Puts the caret into the empty field; what could not be loaded is tried again.
    void prepareToShow();
    /// Lets go of what only a visible panel needs.
    void releaseMemory();
    /// Menus with transparent corners.
    void setComposited(bool isComposited) { m_isComposited = isComposited; }

Q_SIGNALS:
    /// One of our menus is gone; the focus may have moved elsewhere meanwhile.
    void menuClosed();

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void layOut();
    void applyTheme();
    void observeModel();
    void observeRuntime();
    void observeControls();
    void followKeywords();
    void followResults();
    void followSelection();
    void followNarrowing();
    void followEmptyState();
    void startAtTop();
    void remove(const Narrowing& narrowing);
    void open(Menu& menu, const QPoint& place);
    void openFilterMenu();
    void openRowMenu(int row, const QPoint& place);

    const Theme& m_theme;
    AppRuntime& m_runtime;
    ScreenshotSearchViewModel& m_model;
    bool m_isComposited = false;
    TileImages m_tiles;
    ResultListModel* m_rows;
    SearchBar* m_bar;
    NarrowingChips* m_chips;
    Banner* m_banner;
    ResultList* m_list;
    EmptyState* m_empty;
    QStackedWidget* m_left;
    DetailPane* m_detail;
    PanelFooter* m_footer;
    QBasicTimer m_patience; // until an empty list says that it is being searched
};

} // namespace tessary
