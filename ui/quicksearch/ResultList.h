#pragma once

#include <QElapsedTimer>
#include <QListView>

namespace tessary {

class ResultListModel;
class ResultRowDelegate;
class Theme;
class TileImages;

/// The list of results. The selection is the search model's; this only shows it and says what was
/// clicked.
class ResultList : public QListView {
    Q_OBJECT
public:
    /// With the person's text size; the panel does not grow, and the selected item wants room beside it.
    [[nodiscard]] static int widthFor(const Theme& theme);

    ResultList(const Theme& theme, ResultListModel& model, TileImages& tiles, QWidget* parent = nullptr);

    void setKeywords(const QStringList& keywords);
    /// Selects the row and brings it into view; fewer than 0 selects none.
    void select(int row);

    /// Whether the row is an item; else it loads more.
    [[nodiscard]] bool isItem(int row) const;
    /// As if it had been double-clicked; selects it first.
    void activate(int row);
    /// Where a menu for that row opens when no pointer says so; global.
    [[nodiscard]] QPoint placeOfMenu(int row) const;

Q_SIGNALS:
    void rowClicked(int row);
    void rowActivated(int row); ///< Double click.
    void loadMoreRequested();
    void rowMenuRequested(int row, const QPoint& globalPosition);

protected:
    bool viewportEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    [[nodiscard]] QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                                       const QEvent* event) const override;

private:
    void applyTheme();

    const Theme& m_theme;
    ResultListModel& m_rows;
    ResultRowDelegate* m_delegate;
    int m_selected = -1;
    QElapsedTimer m_sinceSelected;
};

} // namespace tessary
