#pragma once

#include <QBasicTimer>
#include <QLineEdit>

namespace tessary {

class Theme;

/// The panel's text field: large type, no frame.
class SearchField : public QLineEdit {
    Q_OBJECT
public:
    explicit SearchField(const Theme& theme, QWidget* parent = nullptr);

    /// An input method has text under way that is not in the field yet; keys are its own until then.
    [[nodiscard]] bool isComposing() const { return m_isComposing; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void applyTheme();
    /// Shows the caret and lets it blink from now on.
    void restartCaret();

    const Theme& m_theme;
    QBasicTimer m_caretTimer;
    bool m_isCaretShown = false;
    bool m_isComposing = false;
};

} // namespace tessary
