#include "platform/linux/StatusNotifierTypes.h"

#include <QDBusMetaType>

namespace tessary::statusnotifier {
namespace {

template <typename... Fields>
QDBusArgument& write(QDBusArgument& argument, const Fields&... fields)
{
    argument.beginStructure();
    (argument << ... << fields);
    argument.endStructure();
    return argument;
}

template <typename... Fields>
const QDBusArgument& read(const QDBusArgument& argument, Fields&... fields)
{
    argument.beginStructure();
    (argument >> ... >> fields);
    argument.endStructure();
    return argument;
}

} // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const Picture& picture)
{
    return write(argument, picture.width, picture.height, picture.bytes);
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Picture& picture)
{
    return read(argument, picture.width, picture.height, picture.bytes);
}

QDBusArgument& operator<<(QDBusArgument& argument, const ToolTip& toolTip)
{
    return write(argument, toolTip.iconName, toolTip.pictures, toolTip.title, toolTip.text);
}

const QDBusArgument& operator>>(const QDBusArgument& argument, ToolTip& toolTip)
{
    return read(argument, toolTip.iconName, toolTip.pictures, toolTip.title, toolTip.text);
}

QDBusArgument& operator<<(QDBusArgument& argument, const Row& row)
{
    return write(argument, row.id, row.properties);
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Row& row)
{
    return read(argument, row.id, row.properties);
}

QDBusArgument& operator<<(QDBusArgument& argument, const Layout& layout)
{
    return write(argument, layout.id, layout.properties, layout.children);
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Layout& layout)
{
    return read(argument, layout.id, layout.properties, layout.children);
}

QDBusArgument& operator<<(QDBusArgument& argument, const RowEvent& event)
{
    return write(argument, event.id, event.kind, event.data, event.time);
}

const QDBusArgument& operator>>(const QDBusArgument& argument, RowEvent& event)
{
    return read(argument, event.id, event.kind, event.data, event.time);
}

void registerTypes()
{
    qDBusRegisterMetaType<Picture>();
    qDBusRegisterMetaType<Pictures>();
    qDBusRegisterMetaType<ToolTip>();
    qDBusRegisterMetaType<Row>();
    qDBusRegisterMetaType<QList<Row>>();
    qDBusRegisterMetaType<Layout>();
    qDBusRegisterMetaType<RowEvent>();
    qDBusRegisterMetaType<QList<RowEvent>>();
    qDBusRegisterMetaType<Shortcuts>();
    qDBusRegisterMetaType<QList<QDBusVariant>>();
}

} // namespace tessary::statusnotifier
