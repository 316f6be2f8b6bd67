#include "ui/kit/AccessibleRole.h"

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
    return new QAccessibleWidget(widget, static_cast<QAccessible::Role>(role.toInt())); // Qt's to delete
}

} // namespace

void setAccessibleRole(QWidget& widget, QAccessible::Role role)
{
    QAccessible::installFactory(interfaceFor); // more than once is as good as once
    widget.setProperty(kProperty, static_cast<int>(role));
}

} // namespace tessary
