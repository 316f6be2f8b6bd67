#pragma once

#include <QAccessibleWidget>

namespace tessary {

class SymbolButton;

/// What a button that opens a menu is to those who cannot see it: such a button, open or closed, that can be
/// pressed.
class MenuButtonAccess : public QAccessibleWidget {
public:
    explicit MenuButtonAccess(SymbolButton& button);

    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QAccessible::State state() const override;
    [[nodiscard]] QStringList actionNames() const override;
    void doAction(const QString& name) override;

    /// From now on those who ask about buttons with menus get one of these. More than once is fine.
    static void install();

private:
    [[nodiscard]] SymbolButton& button() const;
};

} // namespace tessary
