#pragma once

#include "ui/kit/FocusRing.h"
#include "ui/kit/HoverFade.h"

#include <QAbstractButton>

namespace tessary {

/// A button with a face: its text, and where it has one a symbol before it. 28 pixels high.
///
/// The keyboard can reach it; a click leaves the focus where it is.
class PushButton : public QAbstractButton {
    Q_OBJECT
public:
    enum class Role {
        Ordinary,
        Default,     ///< What the window is there for; one in a window at most.
        Destructive, ///< Its text and symbol warn.
    };

    PushButton(const Theme& theme, Role role, QWidget* parent = nullptr);

    void setSymbol(const QString& symbol);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QFont textFont() const;
    [[nodiscard]] QColor face() const;
    [[nodiscard]] QColor foreground() const;
    [[nodiscard]] bool isFilled() const { return m_role == Role::Default && isEnabled(); }

    const Theme& m_theme;
    Role m_role;
    QString m_symbol;
    HoverFade m_hover;
    FocusRing m_focusRing{*this};
};

} // namespace tessary
