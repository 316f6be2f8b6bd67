#pragma once

#include <QObject>

class QMenu;

namespace tessary {

/// Lets a menu that stands alone answer the shortcuts of its items while it is open: Qt looks for them in
/// the window that has the focus, and such a menu belongs to none.
class MenuShortcuts : public QObject {
public:
    /// @param menu becomes the parent.
    explicit MenuShortcuts(QMenu& menu);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QMenu& m_menu;
};

} // namespace tessary
