#pragma once

#include <QWidget>

namespace tessary {

class Theme;

/// A quiet line across the window that says what became of the item. It hides while there is nothing to say.
class NoticeBar : public QWidget {
    Q_OBJECT
public:
    explicit NoticeBar(const Theme& theme, QWidget* parent = nullptr);

    [[nodiscard]] const QString& text() const { return m_text; }
    void setText(const QString& text);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Theme& m_theme;
    QString m_text;
};

} // namespace tessary
