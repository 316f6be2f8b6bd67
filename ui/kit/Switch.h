#pragma once

#include "ui/kit/FocusRing.h"

#include <QCheckBox>
#include <QVariantAnimation>

namespace tessary {

class Theme;

/// Something that is on or off, as a knob that slides. Its name is in the accessible name; it has no text.
class Switch : public QCheckBox {
    Q_OBJECT
public:
    static constexpr int kRing = 3; ///< Around what is seen of it, for the focus ring.

    explicit Switch(const Theme& theme, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    [[nodiscard]] bool hitButton(const QPoint& position) const override;
    void checkStateSet() override;
    void nextCheckState() override;
    void paintEvent(QPaintEvent* event) override;

private:
    void slide();

    const Theme& m_theme;
    QVariantAnimation m_slide;
    double m_place = 0; // of the knob, 0 to 1
    FocusRing m_focusRing{*this};
};

} // namespace tessary
