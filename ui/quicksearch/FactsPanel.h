#pragma once

#include "ui/quicksearch/ItemFacts.h"

#include <QWidget>

namespace tessary {

class Theme;
class TileImages;

/// The facts about an item, in two rows of two.
class FactsPanel : public QWidget {
    Q_OBJECT
public:
    FactsPanel(const Theme& theme, TileImages& tiles, QWidget* parent = nullptr);

    /// @param iconPath the source application's icon; may be empty.
    void set(const ItemFacts& facts, const QString& iconPath);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    struct Cell {
        QString label;
        QString value;
        QRect labelArea;
        QRect valueArea;
        bool hasIcon = false;
    };

    [[nodiscard]] QList<Cell> cells() const;

    const Theme& m_theme;
    TileImages& m_tiles;
    ItemFacts m_facts;
    QString m_iconPath;
};

} // namespace tessary
