#pragma once

#include <QList>
#include <QPointer>

class QWidget;

namespace tessary {

/// Windows that are off the screen for a while. Main thread only.
class WithdrawnWindows {
public:
    /// Takes a window off the screen. @returns whether it could be seen.
    bool withdraw(QWidget& window);
    /// Brings all of them back to where they were, without giving them the keyboard.
    void restore();

private:
    QList<QPointer<QWidget>> m_windows; // the lowest last
};

} // namespace tessary
