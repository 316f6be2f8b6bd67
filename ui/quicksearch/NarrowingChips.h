#pragma once

#include "ui/quicksearch/Narrowing.h"

#include <QScrollArea>

class QHBoxLayout;

namespace tessary {

class Theme;

/// The row of chips under the search field: what the list is narrowed to, each removable. Hidden when it is
/// not narrowed; scrolls sideways when there is more than fits.
class NarrowingChips : public QScrollArea {
    Q_OBJECT
public:
    explicit NarrowingChips(const Theme& theme, QWidget* parent = nullptr);

    /// What Tab leaves for the first chip.
    void setTabbedAfter(QWidget& control) { m_tabbedAfter = &control; }
    void set(const QList<Narrowing>& narrowings);
    [[nodiscard]] const QList<Narrowing>& narrowings() const { return m_narrowings; }

Q_SIGNALS:
    void removed(const tessary::Narrowing& narrowing);

protected:
    void wheelEvent(QWheelEvent* event) override;

private:
    void applyTheme();
    void rebuild();

    const Theme& m_theme;
    QList<Narrowing> m_narrowings;
    QWidget* m_tabbedAfter = nullptr;
    QWidget* m_row;
    QHBoxLayout* m_layout;
};

} // namespace tessary
