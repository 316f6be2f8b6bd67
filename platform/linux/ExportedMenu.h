#pragma once

#include "platform/linux/StatusNotifierTypes.h"

#include <QAction>
#include <QList>
#include <QObject>
#include <QTimer>

namespace tessary {

/// A menu of one level, told to panels over the bus, which draw it themselves: interface
/// com.canonical.dbusmenu, version 3. A row's number is its place, from 1. Main thread only.
class ExportedMenu : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version CONSTANT)
    Q_PROPERTY(QString TextDirection READ textDirection CONSTANT)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath CONSTANT)
public:
    /// @param rows follow what happens to them; they outlive this.
    explicit ExportedMenu(QList<QAction*> rows);

    [[nodiscard]] uint version() const { return 3; }
    [[nodiscard]] QString textDirection() const { return QStringLiteral("ltr"); }
    [[nodiscard]] QString status() const { return QStringLiteral("normal"); }
    [[nodiscard]] QStringList iconThemePath() const { return {}; }

public Q_SLOTS:
    // Called over the bus, by numbers and names that may be anything.
    Q_SCRIPTABLE uint GetLayout(int parent, int depth, const QStringList& names,
                                tessary::statusnotifier::Layout& layout) const;
    [[nodiscard]] Q_SCRIPTABLE QList<tessary::statusnotifier::Row>
    GetGroupProperties(const QList<int>& ids, const QStringList& names) const;
    [[nodiscard]] Q_SCRIPTABLE QDBusVariant GetProperty(int id, const QString& name) const;
    Q_SCRIPTABLE void Event(int id, const QString& kind, const QDBusVariant& data, uint time);
    [[nodiscard]] Q_SCRIPTABLE QList<int> EventGroup(const QList<tessary::statusnotifier::RowEvent>& events);
    [[nodiscard]] Q_SCRIPTABLE bool AboutToShow(int id) const;
    [[nodiscard]] Q_SCRIPTABLE QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& errors) const;

Q_SIGNALS:
    Q_SCRIPTABLE void LayoutUpdated(uint revision, int parent);

private:
    [[nodiscard]] QAction* row(int id) const;
    [[nodiscard]] QVariantMap properties(int id, const QStringList& names) const;
    void noteChange();

    QList<QAction*> m_rows;
    QTimer m_change; // several changes in a turn are told once
    uint m_revision = 1;
};

} // namespace tessary
