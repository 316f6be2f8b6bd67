#pragma once

#include <QWidget>

namespace tessary {

class Theme;

/// A short word in a small box, which is only looked at.
class Tag : public QWidget {
    Q_OBJECT
public:
    Tag(const Theme& theme, const QString& text, QWidget* parent = nullptr);

    [[nodiscard]] const QString& text() const { return m_text; }
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Theme& m_theme;
    QString m_text;
};

} // namespace tessary
