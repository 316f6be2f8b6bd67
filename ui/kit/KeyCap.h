#pragma once

#include <QWidget>

namespace tessary {

class Theme;

/// One key, or a combination, as on a keyboard. Characters such as ⌘ are drawn as symbols, since many fonts
/// lack them; the text keeps them.
class KeyCap : public QWidget {
    Q_OBJECT
public:
    KeyCap(const Theme& theme, const QString& text, QWidget* parent = nullptr);

    [[nodiscard]] const QString& text() const { return m_text; }
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] int contentWidth() const;

    const Theme& m_theme;
    QString m_text;
};

} // namespace tessary
