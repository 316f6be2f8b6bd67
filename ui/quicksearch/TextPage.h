#pragma once

#include "ui/kit/FocusRing.h"

#include <QBasicTimer>
#include <QTextEdit>

namespace tessary {

class Theme;

/// A read-only text with room for a scroll bar at its right.
class TextView : public QTextEdit {
    Q_OBJECT
public:
    explicit TextView(QWidget* parent = nullptr);
    void setRightPadding(int pixels);
};

/// A text to read, on a card: line breaks kept, read only, filled in pieces so that a long one does not
/// hold up anything.
class TextPage : public QWidget {
    Q_OBJECT
public:
    /// Logical pixels.
    struct Look {
        int margin = 12;      ///< Around the card.
        int sidePadding = 20; ///< Within it.
        int topPadding = 16;
        int textSize = 13;
        int lineHeight = 22;
        int mostWidth = 0;   ///< Of the text, which is centred then; 0 for as wide as there is room.
        double zoom = 1;     ///< Of the text.
        bool isCode = false; ///< Letters of one width.
    };

    explicit TextPage(const Theme& theme, QWidget* parent = nullptr);

    [[nodiscard]] const Look& look() const { return m_look; }
    void setLook(const Look& look);
    [[nodiscard]] TextView& view() const { return *m_view; }
    /// Where the card lies.
    [[nodiscard]] QRect card() const;

    /// @param note stands below the text where it is not empty, such as that there is more.
    void setText(const QString& text, const QString& note);
    [[nodiscard]] QString shownText() const { return m_view->toPlainText(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void applyTheme();
    void layOut();
    void refill();
    [[nodiscard]] int zoomed(int pixels) const;
    [[nodiscard]] QFont textFont() const;
    void appendPiece();
    void appendNote();

    const Theme& m_theme;
    TextView* m_view;
    Look m_look;
    FocusRing m_focusRing;
    QString m_text;
    QString m_note;
    qsizetype m_shown = 0; // how much of the text is in the view
    QBasicTimer m_nextPiece;
};

} // namespace tessary
