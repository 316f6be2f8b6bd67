#pragma once

#include <QLineEdit>

namespace tessary {

class Theme;

/// A line of text to type, in the frame of a field. It grows with the person's text size.
class TextField : public QLineEdit {
    Q_OBJECT
public:
    explicit TextField(const Theme& theme, QWidget* parent = nullptr);

    /// Before the text, 16 pixels; none when empty.
    void setSymbol(const QString& symbol);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void applyTheme();

    const Theme& m_theme;
    QString m_symbol;
};

} // namespace tessary
