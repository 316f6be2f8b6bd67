#pragma once

#include <QAccessibleWidget>

namespace tessary {

/// What a window is to those who cannot see it. Qt tells nobody of open menus as parts of anything; here they
/// are the last parts of the window that they belong to.
class WindowAccess : public QAccessibleWidget {
public:
    explicit WindowAccess(QWidget& window);

    [[nodiscard]] int childCount() const override;
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;

private:
    [[nodiscard]] QWidgetList menus() const;
};

} // namespace tessary
