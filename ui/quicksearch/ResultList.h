#pragma once

#include <QListView>

namespace tessary {

class ResultListModel;
class ResultRowDelegate;
class Theme;
class TileImages;

/// The list of results, 320 wide. The selection is the search model's; this only shows it and says what was
/// clicked.
class ResultList : public QListView {
    Q_OBJECT
public:
    static constexpr int kWidth = 320;

    ResultList(const Theme& theme, ResultListModel& model, TileImages& tiles, QWidget* parent = nullptr);

    void setKeywords(const QStringList& keywords);
    /// Selects the row and brings it into view; fewer than 0 selects none.
    void select(int row);

    /// Where a menu for that row opens when no pointer says so; global.
    [[nodiscard]] QPoint placeOfMenu(int row) const;

Q_SIGNALS:
    void rowClicked(int row);
    void rowActivated(int row); ///< Double click.
    void loadMoreRequested();
    void rowMenuRequested(int row, const QPoint& globalPosition);

protected:
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
};

} // namespace tessary
