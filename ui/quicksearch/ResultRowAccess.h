#pragma once

#include <QAccessible>
#include <QPersistentModelIndex>
#include <QPointer>

namespace tessary {

class ResultList;

/// One row of the result list to those who cannot see it: what it says, whether it is selected, and that it
/// can be selected, used and asked for its menu. Invalid once its item has left the list.
class ResultRowAccess : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    ResultRowAccess(ResultList& list, const QPersistentModelIndex& index);

    [[nodiscard]] int row() const { return m_index.row(); }

    [[nodiscard]] bool isValid() const override;
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* parent() const override;
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString&) override {}
    [[nodiscard]] QRect rect() const override;
    [[nodiscard]] QAccessible::Role role() const override;
    [[nodiscard]] QAccessible::State state() const override;
    [[nodiscard]] void* interface_cast(QAccessible::InterfaceType type) override;

    [[nodiscard]] QStringList actionNames() const override;
    void doAction(const QString& name) override;
    [[nodiscard]] QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    [[nodiscard]] bool isItem() const;

    QPointer<ResultList> m_list;
    QPersistentModelIndex m_index;
};

} // namespace tessary
