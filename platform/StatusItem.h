#pragma once

#include <QIcon>
#include <QObject>

namespace tessary {

/// An icon of ours in the desktop's panel, with a title and a menu, for as long as this lives. It survives
/// a panel that is started again. Main thread only.
class StatusItem : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Until there is an icon nothing is shown.
    virtual void setIcon(const QIcon& icon) = 0;

Q_SIGNALS:
    /// The icon was clicked with the main button.
    void activated();
    /// The panel leaves it to us to show the menu, there on the screen.
    void menuRequested(const QPoint& position);
};

} // namespace tessary
