#pragma once

#include <QImage>
#include <QWidget>

class QHBoxLayout;
class QVBoxLayout;

namespace tessary {

class SymbolView;
class Theme;
class ThemedLabel;

/// One line of a card: a symbol, what it is about, and at the right the controls.
class SettingsRow : public QWidget {
    Q_OBJECT
public:
    /// By how much a control reaches beyond what is seen of it.
    enum class Bleed {
        None = 0,
        Ring = 3,  ///< Room for the focus ring.
        Frame = 6, ///< A button whose symbol ends where others' faces do.
    };

    SettingsRow(const Theme& theme, const QString& symbol, const QString& label, QWidget* parent = nullptr);

    /// Under the label, in as many lines as it takes.
    void setNote(const QString& note);
    /// Under the label in one line, shortened in the middle.
    void setPath(const QString& path);
    /// Under the label, with a warning sign; none when empty.
    void setWarning(const QString& warning);
    [[nodiscard]] QString warning() const;
    void setPicture(const QImage& picture);
    /// The label in one line, shortened in the middle.
    void setLabelElided(const QString& label);
    /// Nothing is here: the label is secondary.
    void setPlaceholder();
    /// The controls stand in line with the label, and the note has the whole width. Before there are any.
    void alignAtTop();
    /// At the right end, after those added before. Gets the label as its accessible name unless it has one.
    void addControl(QWidget& control, Bleed bleed = Bleed::Ring);

    [[nodiscard]] QString label() const;

private:
    ThemedLabel& note();

    const Theme& m_theme;
    SymbolView* m_symbol;
    ThemedLabel* m_label;
    ThemedLabel* m_note = nullptr;
    QWidget* m_warningLine;
    ThemedLabel* m_warning;
    QHBoxLayout* m_line;
    QVBoxLayout* m_texts;
    QHBoxLayout* m_controls;
};

} // namespace tessary
