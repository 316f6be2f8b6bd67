#pragma once

#include <QBasicTimer>
#include <QWidget>

namespace tessary {

class Theme;

/// Something is going on: a turning arc of 20 pixels in a box of 32. It stands still where the desktop asks
/// for no motion, and costs nothing while it is not seen.
class Spinner : public QWidget {
    Q_OBJECT
public:
    explicit Spinner(const Theme& theme, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void followTheme();

    const Theme& m_theme;
    QBasicTimer m_timer;
    int m_step = 0;
};

} // namespace tessary
