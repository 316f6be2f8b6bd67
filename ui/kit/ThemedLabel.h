#pragma once

#include <QFont>
#include <QLabel>

namespace tessary {

class Theme;
struct ThemeColours;

/// Text in one of the theme's sizes and colours, as they are at any time.
class ThemedLabel : public QLabel {
    Q_OBJECT
public:
    struct Look {
        int size;
        QFont::Weight weight;
        QColor ThemeColours::*colour;
        int lineHeight; ///< Of paragraphs of several lines and of single ones alike.
    };
    static const Look kBody;    ///< 13 on 20.
    static const Look kTitle;   ///< 13 on 20, semi-bold.
    static const Look kNote;    ///< 12 on 18, secondary.
    static const Look kWarning; ///< 12 on 16, warning.

    ThemedLabel(const Theme& theme, const Look& look, const QString& text = {}, QWidget* parent = nullptr);

    void setColour(QColor ThemeColours::*colour);
    /// The text in one line, shortened in its middle where there is no room; whole in the tooltip then.
    void setElided(const QString& text);
    /// Not shortened.
    [[nodiscard]] QString wholeText() const;

    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void applyTheme();
    void elide();

    const Theme& m_theme;
    Look m_look;
    QString m_elided; // whole; empty when the text is not to be shortened
};

} // namespace tessary
