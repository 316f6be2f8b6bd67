#pragma once

#include "ui/kit/PushButton.h"

#include <QLabel>
#include <QWidget>

#include <functional>

namespace tessary {

class Theme;

/// A question that has to be answered before the window beneath goes on: a card over the dimmed window.
///
/// The keyboard stays within the card; the default button has it at first. A sheet deletes itself when it is
/// answered, and goes away unanswered with the window.
class Sheet : public QWidget {
    Q_OBJECT
public:
    /// What can be answered, from left to right.
    struct Choice {
        QString text;
        PushButton::Role role = PushButton::Role::Ordinary;
        std::function<void()> chosen; ///< Called when the sheet is out of the way; may be empty.
    };
    struct Question {
        QString symbol; ///< None when empty.
        QString title;
        QString text;
        QList<Choice> choices;
        int escape = 0; ///< Which choice the Escape key stands for.
    };

    /// Asks over all of `host`, whose corners are rounded by that radius. @returns the sheet, owned by the
    /// host; keep it in a QPointer.
    static Sheet* ask(const Theme& theme, QWidget& host, Question question, double cornerRadius = 0);

    /// Takes the question back without an answer.
    void dismiss();

Q_SIGNALS:
    /// The sheet is out of the way, answered or not.
    void closed();

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    Sheet(const Theme& theme, QWidget& host, Question question, double cornerRadius);
    void addButtons();
    void focusDefault();
    void answer(int choice);
    void applyTheme();
    void layOut();
    [[nodiscard]] int buttonsWidth() const;
    /// Places the buttons in the card below that height, in a row or, where they are too wide, stacked.
    /// @returns the height below them.
    int placeButtons(const QRect& content, int top);

    const Theme& m_theme;
    Question m_question;
    double m_cornerRadius;
    QLabel* m_title;
    QLabel* m_text;
    QList<PushButton*> m_buttons;
    QRect m_card;
};

} // namespace tessary
