#pragma once

#include <QObject>
#include <QVariantAnimation>

class QWidget;

namespace tessary {

class Theme;

/// How far a control's hover has come, 0 to 1, fading in and out. Follows the pointer by itself, and repaints
/// the control meanwhile.
class HoverFade : public QObject {
public:
    HoverFade(const Theme& theme, QWidget& control);

    [[nodiscard]] double value() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void setHovered(bool isHovered);

    const Theme& m_theme;
    QWidget& m_control;
    bool m_isHovered = false;
    QVariantAnimation m_animation;
};

} // namespace tessary
