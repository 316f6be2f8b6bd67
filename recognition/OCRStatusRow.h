#pragma once

#include "recognition/OCRReminderStatus.h"

#include <QWidget>

namespace tessary {

class Theme;

/// The footer's left: how many characters there are, a hairline, and how text and reminders stand, with its
/// symbol. A status that does not fit ends with an ellipsis and is the tooltip.
class OCRStatusRow : public QWidget {
    Q_OBJECT
public:
    OCRStatusRow(const Theme& theme, QWidget* parent = nullptr);

    void setCharacterCount(qsizetype count);
    void setStatus(const OCRReminderStatus& status);

    [[nodiscard]] const QString& countText() const { return m_count; }
    [[nodiscard]] const QString& statusText() const { return m_text; }
    /// The status as it is drawn.
    [[nodiscard]] QString shownStatus() const;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void applyTheme();
    [[nodiscard]] int countWidth() const;
    [[nodiscard]] int statusLeft() const;
    void describe();

    const Theme& m_theme;
    OCRReminderStatus m_status;
    QString m_count;
    QString m_text;
};

} // namespace tessary
