#pragma once

#include <QTextEdit>

namespace tessary {

class Theme;

/// The recognised text, to be edited: plain text only, whatever is pasted; Tab goes on to the next control.
class RecognizedTextEdit : public QTextEdit {
    Q_OBJECT
public:
    RecognizedTextEdit(const Theme& theme, const QString& text, QWidget* parent = nullptr);

    /// The text as it is now; as it was given while nobody has changed it, to the last character.
    [[nodiscard]] const QString& text() const { return m_text; }
    /// How many characters a person sees in it: grapheme clusters, each line break one.
    [[nodiscard]] static qsizetype characterCount(const QString& text);

Q_SIGNALS:
    void edited();

protected:
    void insertFromMimeData(const QMimeData* source) override;

private:
    void applyTheme();
    void begin();
    void setLineHeight(int height);
    void readBack();

    const Theme& m_theme;
    QString m_text;
    int m_lineHeight = 0;
};

} // namespace tessary
