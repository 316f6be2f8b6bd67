#pragma once

#include "ui/kit/FocusRing.h"
#include "ui/kit/HoverFade.h"

#include <QAbstractButton>

namespace tessary {

/// A button without a frame: a symbol, and where it has one its text and a second, smaller symbol.
///
/// The keyboard can reach it; a click leaves the focus where it is. Without text its accessible name and
/// tooltip say what it does.
class SymbolButton : public QAbstractButton {
    Q_OBJECT
public:
    SymbolButton(const Theme& theme, QString symbol, QWidget* parent = nullptr);

    /// Shown instead while the button is checked.
    void setCheckedSymbol(const QString& symbol);
    /// At the end, 12 pixels.
    void setTrailingSymbol(const QString& symbol);
    void setSymbolSize(int pixels);
    /// Width and height of a button without text; otherwise only its height.
    void setExtent(int pixels);
    void setShowsText(bool shows);
    /// In the accent colour: what it stands for is in force.
    void setTinted(bool isTinted);
    [[nodiscard]] bool isTinted() const { return m_isTinted; }
    /// Says so to those who cannot see it.
    void setOpensMenu();
    [[nodiscard]] bool opensMenu() const { return m_opensMenu; }
    /// Looks pressed, as long as its menu is open.
    void setHeld(bool isHeld);
    [[nodiscard]] bool isHeld() const { return m_isHeld; }
    /// Instead of the secondary text colour at rest.
    void setRestingColour(const QColor& colour);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] bool isOn() const { return m_isTinted || isChecked(); }
    [[nodiscard]] QColor background() const;
    [[nodiscard]] QColor foreground() const;
    [[nodiscard]] QFont textFont() const;
    [[nodiscard]] int symbolSize() const;

    const Theme& m_theme;
    QString m_symbol;
    QString m_checkedSymbol;
    QString m_trailingSymbol;
    QColor m_restingColour;
    int m_symbolSize = 16;
    int m_extent = 28;
    bool m_showsText = false;
    bool m_isTinted = false;
    bool m_isHeld = false;
    bool m_opensMenu = false;
    HoverFade m_hover;
    FocusRing m_focusRing{*this};
};

} // namespace tessary
