#pragma once

#include <QWidget>

namespace tessary {

class TextPage;
class Theme;

/// A text to read closely: selectable, its line breaks kept, with letters of one width where it looks like
/// code, and zoomed by its letters. Of a huge text the beginning is shown, and at its end that there is more.
class TextCanvas : public QWidget {
    Q_OBJECT
public:
    static constexpr qsizetype kMostText = 50'000; ///< UTF-16 units that are shown.

    explicit TextCanvas(const Theme& theme, QWidget* parent = nullptr);

    /// @param isCut whether there is more of it than what is given.
    void setText(const QString& text, bool isCut);
    [[nodiscard]] double scale() const { return m_scale; }
    void setScale(double scale);
    [[nodiscard]] TextPage& page() const { return *m_page; }

Q_SIGNALS:
    void scaleChanged(double scale);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    const Theme& m_theme;
    TextPage* m_page;
    double m_scale = 1;
};

} // namespace tessary
