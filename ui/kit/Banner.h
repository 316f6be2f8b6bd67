#pragma once

#include <QLabel>
#include <QVariantAnimation>
#include <QWidget>

namespace tessary {

class SymbolButton;
class Theme;

/// A warning across the window, two lines at most, that slides in and can be closed. The whole text is in
/// the tooltip and can be selected.
class Banner : public QWidget {
    Q_OBJECT
public:
    Banner(const Theme& theme, const QString& symbol, QWidget* parent = nullptr);

    [[nodiscard]] const QString& message() const { return m_message; }
    /// An empty message takes the banner away.
    void setMessage(const QString& message);

Q_SIGNALS:
    void closed();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void layOut();
    [[nodiscard]] int fullHeight() const;
    void applyTheme();
    void slideTo(int height);

    const Theme& m_theme;
    QString m_symbol;
    QString m_message;
    QLabel* m_label;
    SymbolButton* m_close;
    QVariantAnimation m_slide;
};

} // namespace tessary
