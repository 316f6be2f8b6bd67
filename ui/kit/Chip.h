#pragma once

#include <QWidget>

namespace tessary {

class SymbolButton;
class Theme;

/// A small removable statement, such as what a list is narrowed to.
class Chip : public QWidget {
    Q_OBJECT
public:
    Chip(const Theme& theme, const QString& text, QWidget* parent = nullptr);

    [[nodiscard]] const QString& text() const { return m_text; }
    [[nodiscard]] SymbolButton& removeButton() const { return *m_remove; }
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    void removed();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void applyTheme();
    [[nodiscard]] QString shownText() const;

    const Theme& m_theme;
    QString m_text;
    SymbolButton* m_remove;
};

} // namespace tessary
