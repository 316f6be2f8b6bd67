#pragma once

#include "base/SerialLane.h"
#include "platform/StatusItem.h"
#include "platform/linux/ExportedMenu.h"

#include <QDBusObjectPath>

class QDBusServiceWatcher;

namespace tessary {

/// Our icon as status-notifier hosts want it: an object on a bus connection of its own, announced to the
/// watcher whenever there is one. The host draws the icon and the menu. The icon goes with the connection.
class StatusNotifierItem : public StatusItem {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category CONSTANT)
    Q_PROPERTY(QString Id READ id CONSTANT)
    Q_PROPERTY(QString Title READ title CONSTANT)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(int WindowId READ windowId CONSTANT)
    Q_PROPERTY(QString IconName READ noText CONSTANT)
    Q_PROPERTY(QString IconThemePath READ noText CONSTANT)
    Q_PROPERTY(QString IconAccessibleDesc READ title CONSTANT)
    Q_PROPERTY(tessary::statusnotifier::Pictures IconPixmap READ pictures NOTIFY NewIcon)
    Q_PROPERTY(QString OverlayIconName READ noText CONSTANT)
    Q_PROPERTY(tessary::statusnotifier::Pictures OverlayIconPixmap READ noPictures CONSTANT)
    Q_PROPERTY(QString AttentionIconName READ noText CONSTANT)
    Q_PROPERTY(tessary::statusnotifier::Pictures AttentionIconPixmap READ noPictures CONSTANT)
    Q_PROPERTY(QString AttentionMovieName READ noText CONSTANT)
    Q_PROPERTY(tessary::statusnotifier::ToolTip ToolTip READ toolTip CONSTANT)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu CONSTANT)
    Q_PROPERTY(QDBusObjectPath Menu READ menu CONSTANT)
public:
    /// @param title also what a screen reader says.
    /// @param rows of the menu; they outlive this.
    /// @param busAddress of the bus with the watcher; empty means the session bus.
    StatusNotifierItem(QString title, QList<QAction*> rows, QString busAddress = {});
    ~StatusNotifierItem() override;

    void setIcon(const QIcon& icon) override;

    [[nodiscard]] QString category() const { return QStringLiteral("ApplicationStatus"); }
    [[nodiscard]] QString id() const { return m_title.toLower(); }
    [[nodiscard]] QString title() const { return m_title; }
    [[nodiscard]] QString status() const { return QStringLiteral("Active"); }
    [[nodiscard]] int windowId() const { return 0; }
    [[nodiscard]] QString noText() const { return {}; }
    [[nodiscard]] statusnotifier::Pictures pictures() const { return m_pictures; }
    [[nodiscard]] statusnotifier::Pictures noPictures() const { return {}; }
    [[nodiscard]] statusnotifier::ToolTip toolTip() const { return {{}, {}, m_title, {}}; }
    [[nodiscard]] bool itemIsMenu() const { return false; }
    [[nodiscard]] QDBusObjectPath menu() const;

public Q_SLOTS:
    // Called over the bus; places are in pixels of the screen.
    Q_SCRIPTABLE void Activate(int x, int y);
    Q_SCRIPTABLE void SecondaryActivate(int x, int y);
    Q_SCRIPTABLE void ContextMenu(int x, int y);
    Q_SCRIPTABLE void Scroll(int delta, const QString& orientation);

Q_SIGNALS:
    Q_SCRIPTABLE void NewIcon();

private:
    void connectToBus();
    void exportObjects();
    void announce();

    QString m_title;
    QString m_busAddress;
    QString m_connectionName;
    ExportedMenu m_menu;
    statusnotifier::Pictures m_pictures;
    bool m_isExported = false;
    SerialLane m_lane;
};

} // namespace tessary
