#include "platform/linux/ExportedMenu.h"

namespace tessary {
namespace {

using namespace statusnotifier;

/// As the X keyboard names it; empty for a key that no menu of ours uses.
QString keyName(Qt::Key key)
{
    if (key >= Qt::Key_A && key <= Qt::Key_Z)
        return QChar(u'a' + (key - Qt::Key_A));
    if (key >= Qt::Key_0 && key <= Qt::Key_9)
        return QChar(u'0' + (key - Qt::Key_0));
    if (key == Qt::Key_Comma)
        return QStringLiteral("comma");
    return {};
}

Shortcuts shortcutsOf(const QAction& action)
{
    Shortcuts shortcuts;
    for (const QKeySequence& sequence : action.shortcuts()) {
        const QKeyCombination keys = sequence.isEmpty() ? QKeyCombination() : sequence[0];
        const QString key = keyName(keys.key());
        if (key.isEmpty() || sequence.count() != 1)
            continue;
        QStringList names;
        if (keys.keyboardModifiers().testFlag(Qt::ControlModifier))
            names.append(QStringLiteral("Control"));
        if (keys.keyboardModifiers().testFlag(Qt::AltModifier))
            names.append(QStringLiteral("Alt"));
        if (keys.keyboardModifiers().testFlag(Qt::ShiftModifier))
            names.append(QStringLiteral("Shift"));
        if (keys.keyboardModifiers().testFlag(Qt::MetaModifier))
            names.append(QStringLiteral("Super"));
        shortcuts.append(names + QStringList{key});
    }
    return shortcuts;
}

QVariantMap propertiesOf(const QAction& action)
{
    QVariantMap properties{{QStringLiteral("visible"), action.isVisible()}};
    if (action.isSeparator()) {
        properties.insert(QStringLiteral("type"), QStringLiteral("separator"));
        return properties;
    }
    // An underscore marks the next letter there, as an ampersand does here.
    QString label = action.text();
    label.replace(u'_', QLatin1String("__"));
    label.replace(u'&', u'_');
    properties.insert(QStringLiteral("label"), label);
    properties.insert(QStringLiteral("enabled"), action.isEnabled());
    if (const Shortcuts shortcuts = shortcutsOf(action); !shortcuts.isEmpty())
        properties.insert(QStringLiteral("shortcut"), QVariant::fromValue(shortcuts));
    return properties;
}

} // namespace

ExportedMenu::ExportedMenu(QList<QAction*> rows) : m_rows(std::move(rows))
{
    registerTypes();
    m_change.setSingleShot(true);
    connect(&m_change, &QTimer::timeout, this, [this] { Q_EMIT LayoutUpdated(++m_revision, 0); });
    for (const QAction* action : std::as_const(m_rows))
        connect(action, &QAction::changed, this, &ExportedMenu::noteChange);
}

void ExportedMenu::noteChange()
{
    m_change.start(0);
}

QAction* ExportedMenu::row(int id) const
{
    return m_rows.value(id - 1, nullptr);
}

/// Of the root for 0; nothing for an unknown number. No names stand for all.
QVariantMap ExportedMenu::properties(int id, const QStringList& names) const
{
    QVariantMap all;
    if (id == 0)
        all.insert(QStringLiteral("children-display"), QStringLiteral("submenu"));
    else if (const QAction* action = row(id))
        all = propertiesOf(*action);
    if (names.isEmpty())
        return all;
    QVariantMap wanted;
    for (const QString& name : names) {
        if (all.contains(name))
            wanted.insert(name, all.value(name));
    }
    return wanted;
}

uint ExportedMenu::GetLayout(int parent, int depth, const QStringList& names, Layout& layout) const
{
    layout = Layout{parent, properties(parent, names), {}};
    if (parent != 0 || depth == 0)
        return m_revision;
    for (int id = 1; id <= m_rows.size(); ++id) {
        const Layout child{id, properties(id, names), {}};
        layout.children.append(QDBusVariant(QVariant::fromValue(child)));
    }
    return m_revision;
}

QList<Row> ExportedMenu::GetGroupProperties(const QList<int>& ids, const QStringList& names) const
{
    QList<Row> rows;
    for (const int id : ids) {
        if (id == 0 || row(id) != nullptr)
            rows.append(Row{id, properties(id, names)});
    }
    return rows;
}

QDBusVariant ExportedMenu::GetProperty(int id, const QString& name) const
{
    const QVariant value = properties(id, {name}).value(name);
    return QDBusVariant(value.isValid() ? value : QVariant(QString())); // the bus knows no absence
}

void ExportedMenu::Event(int id, const QString& kind, const QDBusVariant&, uint)
{
    QAction* action = row(id);
    if (action == nullptr || kind != QLatin1String("clicked") || !action->isVisible())
        return;
    // From the event loop: the panel has its answer before anything else happens.
    QMetaObject::invokeMethod(action, &QAction::trigger, Qt::QueuedConnection);
}

QList<int> ExportedMenu::EventGroup(const QList<RowEvent>& events)
{
    QList<int> unknown;
    for (const RowEvent& event : events) {
        if (event.id != 0 && row(event.id) == nullptr)
            unknown.append(event.id);
        Event(event.id, event.kind, event.data, event.time);
    }
    return unknown;
}

bool ExportedMenu::AboutToShow(int) const
{
    return false; // what was told before still holds
}

QList<int> ExportedMenu::AboutToShowGroup(const QList<int>& ids, QList<int>& errors) const
{
    for (const int id : ids) {
        if (id != 0 && row(id) == nullptr)
            errors.append(id);
    }
    return {};
}

} // namespace tessary
