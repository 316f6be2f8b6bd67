#pragma once

#include "ui/kit/FocusRing.h"
#include "ui/kit/HoverFade.h"

#include <QAbstractButton>

namespace tessary {

class Theme;

/// A symbol over its label. The label says what a click does; what is on shows the filled symbol.
class ToolbarButton : public QAbstractButton {
    Q_OBJECT
public:
    enum class Role { Ordinary, Destructive };

    ToolbarButton(const Theme& theme, const QString& symbol, const QString& text, Role role,
                  QWidget* parent = nullptr);

    /// @param onSymbol shown, in the accent colour, while it is on.
    void setOn(bool isOn, const QString& onSymbol, const QString& text);
    [[nodiscard]] bool isOn() const { return m_isOn; }
    /// Whether there is room for the label; without it the tooltip says the same.
    void setShowsLabel(bool shows);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
    [[nodiscard]] QSize sizeWithLabel() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QColor symbolColour() const;
    [[nodiscard]] QColor textColour() const;

    const Theme& m_theme;
    QString m_symbol;
    QString m_onSymbol;
    Role m_role;
    bool m_isOn = false;
    bool m_showsLabel = true;
    HoverFade m_hover;
    FocusRing m_focusRing{*this};
};

} // namespace tessary
