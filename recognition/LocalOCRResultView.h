#pragma once

#include "recognition/RecognitionResult.h"

#include <QWidget>

class QBoxLayout;

class QLabel;

namespace tessary {

class OCRStatusRow;
class PushButton;
class RecognizedTextEdit;
class RegionPicture;
class SuccessBubble;
class Theme;

/// What was recognised: the text to correct and to copy again, the region it came from, and, where it reads
/// as a task, the button that makes a reminder of it.
class LocalOCRResultView : public QWidget {
    Q_OBJECT
public:
    LocalOCRResultView(const Theme& theme, RecognitionResult result, QWidget* parent = nullptr);

    [[nodiscard]] const QString& text() const;
    [[nodiscard]] const OCRReminderStatus& reminderStatus() const { return m_status; }
    [[nodiscard]] bool isCreatingReminder() const { return m_isCreatingReminder; }
    [[nodiscard]] bool isSuccessBubbleVisible() const;

    /// Copies the text as it is now.
    void copyAgain();
    /// Makes a reminder of the text as it is now; nothing when it does not read as a task, when none is
    /// offered, or while one is being made. The view may go before the reminder has been made.
    void addReminder();
    /// To be called once the window is on the screen: the text takes the keyboard.
    void appeared();

Q_SIGNALS:
    void closeRequested();
    void minimizeRequested();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    /// What grows with the person's text size.
    struct Label {
        QLabel* label;
        int size;
        QFont::Weight weight;
    };
    struct Line {
        QWidget* widget;
        int height; ///< As designed.
        int text;   ///< So much of it.
    };

    QLabel* label(const QString& text, int size, QFont::Weight weight = QFont::Normal);
    void build(const QImage& image);
    [[nodiscard]] QWidget* titleBar();
    [[nodiscard]] QWidget* textColumn();
    [[nodiscard]] QWidget* pictureColumn(const QImage& image);
    [[nodiscard]] QBoxLayout* footer();
    void applyTheme();
    void setReminderStatus(OCRReminderStatus status);
    void setCreatingReminder(bool isCreating);
    void created(const std::optional<QString>& failure);

    const Theme& m_theme;
    RecognitionResult::CreateReminder m_createReminder;
    std::function<void(QString)> m_copyText;
    std::function<Date()> m_now;
    OCRReminderStatus m_status;
    bool m_isCreatingReminder = false;
    RecognizedTextEdit* m_text;
    OCRStatusRow* m_statusRow;
    PushButton* m_addButton;
    SuccessBubble* m_bubble;
    QList<Label> m_labels;
    QList<Line> m_lines;
};

} // namespace tessary
