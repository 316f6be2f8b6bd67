#pragma once

#include <QAccessible>

class QWidget;

namespace tessary {

/// What a widget that Qt knows nothing about is to those who cannot see it; its accessible name says the
/// rest. Takes the place of what Qt would tell of it.
void setAccessibleRole(QWidget& widget, QAccessible::Role role);

} // namespace tessary
