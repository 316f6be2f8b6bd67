#pragma once

#include <QWidget>

namespace tessary {

class Theme;

/// A line of one pixel between two parts of a window.
class Hairline : public QWidget {
    Q_OBJECT
public:
    Hairline(const Theme& theme, Qt::Orientation orientation, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Theme& m_theme;
};

} // namespace tessary
