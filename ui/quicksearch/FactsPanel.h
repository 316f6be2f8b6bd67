#pragma once

#include "ui/quicksearch/ItemFacts.h"

#include <QWidget>

namespace tessary {

class Theme;
class TileImages;

/// The facts about an item, in two rows of two; below each other where the words are too large for that.
class FactsPanel : public QWidget {
    Q_OBJECT
public:
    FactsPanel(const Theme& theme, TileImages& tiles, QWidget* parent = nullptr);

    /// @param iconPath the source application's icon; may be empty.
    void set(const ItemFacts& facts, const QString& iconPath);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    struct Cell {
        QString label;
        QString value;
        QRect labelArea{};
        QRect valueArea{};
        bool hasIcon = false;
    };

    void layOut();
    /// The widest of them with its gap, at least as designed.
    [[nodiscard]] int labelWidth(const QStringList& labels, int designed) const;
    [[nodiscard]] bool isOneColumn() const;
    [[nodiscard]] QList<Cell> cells() const;

    const Theme& m_theme;
    TileImages& m_tiles;
    ItemFacts m_facts;
    QString m_iconPath;
};

} // namespace tessary
