#pragma once

#include <QWidget>

class QScreen;

namespace tessary {

class RegionSelectionView;
class Theme;

/// Covers one screen, above everything and past the window manager. Escape cancels.
class RegionSelectionWindow : public QWidget {
    Q_OBJECT
public:
    RegionSelectionWindow(const Theme& theme, QScreen& screen, const QImage& picture);

    [[nodiscard]] RegionSelectionView& view() const { return *m_view; }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    RegionSelectionView* m_view;
};

} // namespace tessary
