#pragma once

#include "store/ScreenshotRecord.h"
#include "ui/quicksearch/TileImages.h"

#include <QWidget>

namespace tessary {

class DetailPane;
class Theme;

/// One item in a window of its own, as large as the window is, with the facts about it. Escape closes it.
class PreviewWindow : public QWidget {
    Q_OBJECT
public:
    PreviewWindow(const Theme& theme, TileImages::Loader loader, const ScreenshotRecord& record);

    [[nodiscard]] const QUuid& item() const { return m_item; }
    /// Shows it in the middle of the screen with the pointer.
    void present();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    const Theme& m_theme;
    QUuid m_item;
    TileImages m_tiles;
    DetailPane* m_detail;
};

} // namespace tessary
