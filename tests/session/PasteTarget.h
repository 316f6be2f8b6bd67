#pragma once

#include "tests/session/ChildProcess.h"

#include <QString>

#include <memory>

namespace tessary::testing {

/// A program that can be pasted into, and the text that has arrived in it.
class PasteTarget {
public:
    enum class Kind { Gtk3, Gtk4, Qt, Xterm, Vte };

    /// @param scratch an existing folder.
    PasteTarget(Kind kind, const QString& title, const QString& scratch);

    [[nodiscard]] QString text();
    [[nodiscard]] ChildProcess& process() { return *m_process; }

private:
    void runTerminal(Kind kind, const QString& title);

    std::unique_ptr<ChildProcess> m_process;
    QString m_typedPath; ///< What a terminal's program read; empty for others.
};

} // namespace tessary::testing
