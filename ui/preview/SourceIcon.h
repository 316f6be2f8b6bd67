#pragma once

#include "ui/quicksearch/TileImages.h"

#include <QWidget>

namespace tessary {

class Theme;

/// The icon of the application that an item came from, 40 pixels; a symbol where there is none.
class SourceIcon : public QWidget {
    Q_OBJECT
public:
    SourceIcon(const Theme& theme, TileImages& tiles, QWidget* parent = nullptr);

    void setPath(const QString& path);
    [[nodiscard]] QSize sizeHint() const override { return {kSide, kSide}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    static constexpr int kSide = 40;

    const Theme& m_theme;
    TileImages& m_tiles;
    QString m_path;
};

} // namespace tessary
