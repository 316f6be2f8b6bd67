#pragma once

#include <QPlainTextEdit>
#include <QWidget>

namespace tessary {

class Theme;

/// The item's note. The tab key goes on to the next control.
class NoteEditor : public QWidget {
    Q_OBJECT
public:
    static constexpr int kHeight = 144;
    static constexpr int kLeastHeight = 72;

    explicit NoteEditor(const Theme& theme, QWidget* parent = nullptr);

    [[nodiscard]] QString text() const { return m_edit->toPlainText(); }
    /// Replaces it; the cursor stays where it was as far as there is text.
    void setText(const QString& text);
    void setReadOnly(bool isReadOnly) { m_edit->setReadOnly(isReadOnly); }
    [[nodiscard]] QPlainTextEdit& edit() const { return *m_edit; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    void edited();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void applyTheme();

    const Theme& m_theme;
    QPlainTextEdit* m_edit;
};

} // namespace tessary
