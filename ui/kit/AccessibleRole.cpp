#include "ui/kit/AccessibleRole.h"

#include "ui/kit/WindowAccess.h"

#include <QAccessibleWidget>
#include <QVariant>
#include <QWidget>

namespace tessary {
namespace {

constexpr const char* kProperty = "accessibleRole";

QAccessibleInterface* interfaceFor(const QString&, QObject* object)
{
    const QVariant role = object != nullptr ? object->property(kProperty) : QVariant();
    auto* widget = role.isValid() ? qobject_cast<QWidget*>(object) : nullptr;
    if (widget == nullptr)
        return nullptr;
    if (role.toInt() == QAccessible::Window)
        return new WindowAccess(*widget); // Qt's to delete
    return new QAccessibleWidget(widget, static_cast<QAccessible::Role>(role.toInt()));
}

} // namespace

void setAccessibleRole(QWidget& widget, QAccessible::Role role)
{
    QAccessible::installFactory(interfaceFor); // more than once is as good as once
    widget.setProperty(kProperty, static_cast<int>(role));
    renewAccess(widget);
}

/// Also where nobody listens: Qt makes and keeps what it tells of an object at the first event all the same.
void renewAccess(QObject& object)
{
    if (QAccessibleInterface* known = QAccessible::queryAccessibleInterface(&object))
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(known));
}

} // namespace tessary
