#pragma once

#include <QAccessibleWidget>
#include <QHash>
#include <QPersistentModelIndex>

namespace tessary {

class ResultList;

/// The list of results to those who cannot see it. A row is made when somebody asks for it and stays the
/// same one for the same item: nothing here counts rows or walks through them.
class ResultListAccess : public QAccessibleWidget {
public:
    explicit ResultListAccess(ResultList& list);
    ~ResultListAccess() override;

    [[nodiscard]] int childCount() const override;
    [[nodiscard]] QAccessibleInterface* child(int row) const override;
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override;
    [[nodiscard]] QAccessibleInterface* focusChild() const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;

    /// From now on those who ask about result lists get one of these. More than once is fine.
    static void install();

private:
    [[nodiscard]] ResultList& list() const;
    void forgetGone() const;

    mutable QHash<QPersistentModelIndex, QAccessible::Id> m_rows; // asked for so far
    mutable qsizetype m_tidyAt = 64;                              // rows; then those of gone items go
};

} // namespace tessary
