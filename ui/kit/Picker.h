#pragma once

#include "ui/kit/FocusRing.h"
#include "ui/kit/HoverFade.h"
#include "ui/kit/Menu.h"

#include <QComboBox>
#include <QPointer>

#include <functional>

namespace tessary {

class Theme;

/// One of a few values, chosen from a menu. A value that is none of the choices is shown as it is, and is
/// one more choice for as long as it is the value.
class Picker : public QComboBox {
    Q_OBJECT
public:
    /// How a value is called.
    using Naming = std::function<QString(int)>;

    Picker(const Theme& theme, QList<int> choices, Naming naming, QWidget* parent = nullptr);

    [[nodiscard]] int value() const { return currentData().toInt(); }
    void setValue(int value);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
    void showPopup() override;
    void hidePopup() override;
    /// Null while it is closed.
    [[nodiscard]] Menu* menu() const { return m_menu; }

Q_SIGNALS:
    /// The person chose this one; not by `setValue`.
    void picked(int value);

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void fill(int value);
    [[nodiscard]] QColor face() const;

    const Theme& m_theme;
    QList<int> m_choices;
    Naming m_naming;
    QPointer<Menu> m_menu;
    HoverFade m_hover;
    FocusRing m_focusRing{*this};
};

} // namespace tessary
