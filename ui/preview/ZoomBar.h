#pragma once

#include <QWidget>

namespace tessary {

class Hairline;
class SymbolButton;
class Theme;

/// How large the item is shown, and what makes it larger, smaller and as it was. It floats over the canvas.
class ZoomBar : public QWidget {
    Q_OBJECT
public:
    explicit ZoomBar(const Theme& theme, QWidget* parent = nullptr);

    void setScale(double scale);
    [[nodiscard]] QString percentText() const;
    /// Places it at the canvas's lower right.
    void place(const QRect& canvas);

    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    void zoomIn();
    void zoomOut();
    void reset();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void layOut();
    [[nodiscard]] QRect body() const;
    [[nodiscard]] int percentWidth() const;

    const Theme& m_theme;
    double m_scale = 1;
    SymbolButton* m_out;
    SymbolButton* m_in;
    Hairline* m_line;
    SymbolButton* m_reset;
};

} // namespace tessary
