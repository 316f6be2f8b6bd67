#pragma once

#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QStringList>
#include <QVariantMap>

namespace tessary::statusnotifier {

/// A picture, as 32-bit ARGB in network byte order. On the bus (iiay).
struct Picture {
    int width = 0;
    int height = 0;
    QByteArray bytes;
};
using Pictures = QList<Picture>;

/// On the bus (sa(iiay)ss).
struct ToolTip {
    QString iconName;
    Pictures pictures;
    QString title;
    QString text;
};

/// One row of a menu. On the bus (ia{sv}).
struct Row {
    int id = 0;
    QVariantMap properties;
};

/// One row of a menu with those below it, each a Layout. On the bus (ia{sv}av).
struct Layout {
    int id = 0;
    QVariantMap properties;
    QList<QDBusVariant> children;
};

/// What a person did to a row. On the bus (isvu).
struct RowEvent {
    int id = 0;
    QString kind;
    QDBusVariant data;
    uint time = 0; ///< Milliseconds of the display server.
};

/// Alternatives, each the names of its modifiers and its key. On the bus aas.
using Shortcuts = QList<QStringList>;

QDBusArgument& operator<<(QDBusArgument& argument, const Picture& picture);
const QDBusArgument& operator>>(const QDBusArgument& argument, Picture& picture);
QDBusArgument& operator<<(QDBusArgument& argument, const ToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, ToolTip& toolTip);
QDBusArgument& operator<<(QDBusArgument& argument, const Row& row);
const QDBusArgument& operator>>(const QDBusArgument& argument, Row& row);
QDBusArgument& operator<<(QDBusArgument& argument, const Layout& layout);
const QDBusArgument& operator>>(const QDBusArgument& argument, Layout& layout);
QDBusArgument& operator<<(QDBusArgument& argument, const RowEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& argument, RowEvent& event);

/// Makes the types known to the bus. Any number of times.
void registerTypes();

} // namespace tessary::statusnotifier

Q_DECLARE_METATYPE(tessary::statusnotifier::Picture)
Q_DECLARE_METATYPE(tessary::statusnotifier::ToolTip)
Q_DECLARE_METATYPE(tessary::statusnotifier::Row)
Q_DECLARE_METATYPE(tessary::statusnotifier::Layout)
Q_DECLARE_METATYPE(tessary::statusnotifier::RowEvent)
