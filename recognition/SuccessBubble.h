#pragma once

#include "ui/kit/SpringCurve.h"

#include <QTimer>
#include <QVariantAnimation>
#include <QWidget>

namespace tessary {

class Theme;

/// Says that the reminder was created: springs in over the top of its parent, stays for 3.5 s and fades away.
/// The pointer goes through it. Hiding or destroying it ends that at once.
class SuccessBubble : public QWidget {
    Q_OBJECT
public:
    static constexpr std::chrono::milliseconds kStay{3500};

    SuccessBubble(const Theme& theme, QWidget* parent);

    /// Once more from the beginning when it is there already.
    void appear();
    /// Between `appear` and the beginning of its fading.
    [[nodiscard]] bool isPresent() const { return m_stay.isActive(); }
    /// Centred at the top of an area that wide.
    void place(int width);

protected:
    void paintEvent(QPaintEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    [[nodiscard]] int bodyHeight() const;
    void fade();

    const Theme& m_theme;
    QTimer m_stay;
    QVariantAnimation m_spring; // seconds since it began to appear
    QVariantAnimation m_fading; // what is left of it
    double m_way = 1;           // 0 is above the window, 1 in its place
    double m_opacity = 1;
};

} // namespace tessary
