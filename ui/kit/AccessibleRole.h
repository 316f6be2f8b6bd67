#pragma once

#include <QAccessible>

class QWidget;

namespace tessary {

/// What a widget that Qt knows nothing about is to those who cannot see it; its accessible name says the
/// rest. Takes the place of what Qt would tell of it. A window also tells of its open menus.
void setAccessibleRole(QWidget& widget, QAccessible::Role role);

/// Lets Qt ask anew what the object is to them: it remembers what it was told first, which may have been
/// before the object was complete.
void renewAccess(QObject& object);

} // namespace tessary
