#pragma once

#include <QVariantAnimation>

class QWidget;

namespace tessary {

class Theme;

/// How far a control's hover has come, 0 to 1, fading in and out. Repaints the control meanwhile.
class HoverFade {
public:
    HoverFade(const Theme& theme, QWidget& control);

    void setHovered(bool isHovered);
    [[nodiscard]] double value() const;

private:
    const Theme& m_theme;
    QWidget& m_control;
    bool m_isHovered = false;
    QVariantAnimation m_animation;
};

} // namespace tessary
