#pragma once

#include "ui/kit/FocusRing.h"

#include <QTabBar>

namespace tessary {

class Theme;

/// A row of segments of which one is chosen, each with a symbol and a text. Arrow keys move on.
class SegmentedControl : public QTabBar {
    Q_OBJECT
public:
    explicit SegmentedControl(const Theme& theme, QWidget* parent = nullptr);

    void addSegment(const QString& symbol, const QString& text);

protected:
    [[nodiscard]] QSize tabSizeHint(int index) const override;
    [[nodiscard]] QSize minimumTabSizeHint(int index) const override { return tabSizeHint(index); }
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    [[nodiscard]] QRect segment(int index) const;
    void paintSegment(QPainter& painter, int index) const;

    const Theme& m_theme;
    FocusRing m_focusRing{*this};
};

} // namespace tessary
