#pragma once

#include <QBasicTimer>
#include <QTextEdit>

namespace tessary {

class CardFocus;
class Theme;

/// A read-only text with room for a scroll bar at its right.
class TextView : public QTextEdit {
    Q_OBJECT
public:
    explicit TextView(int rightPadding, QWidget* parent = nullptr);
};

/// A text to read, on a card: line breaks kept, read only, filled in pieces so that a long one does not
/// hold up anything.
class TextPage : public QWidget {
    Q_OBJECT
public:
    explicit TextPage(const Theme& theme, QWidget* parent = nullptr);

    /// @param note stands below the text where it is not empty, such as that there is more.
    void setText(const QString& text, const QString& note);
    [[nodiscard]] QString shownText() const { return m_view->toPlainText(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void applyTheme();
    void refill();
    void appendPiece();
    void appendNote();

    const Theme& m_theme;
    TextView* m_view;
    CardFocus* m_focus;
    QString m_text;
    QString m_note;
    qsizetype m_shown = 0; // how much of the text is in the view
    QBasicTimer m_nextPiece;
};

} // namespace tessary
