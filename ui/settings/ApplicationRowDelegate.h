#pragma once

#include <QStyledItemDelegate>

namespace tessary {

class Theme;

/// Draws a program: its icon and name, and secondary at the right the identifier (Qt::ToolTipRole).
class ApplicationRowDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    explicit ApplicationRowDelegate(const Theme& theme, QObject* parent);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    const Theme& m_theme;
};

} // namespace tessary
