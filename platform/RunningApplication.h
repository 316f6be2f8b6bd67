#pragma once

#include <QString>
#include <QUrl>

#include <optional>

namespace tessary {

/// A program with a window. Two windows of one program are equal but for `window`.
struct RunningApplication {
    std::optional<QString> localizedName;
    std::optional<QString> bundleIdentifier; ///< Desktop-file id without ".desktop", else the window class.
    std::optional<QUrl> bundleURL;           ///< The desktop file; absent for programs without one.
    qint64 processIdentifier = 0;            ///< 0 when the window names no process that we can see.
    quint64 window = 0;                      ///< The session's own name of the window.
    bool isTerminal = false;                 ///< A terminal emulator, where Control+V is typed, not pasted.

    friend bool operator==(const RunningApplication&, const RunningApplication&) = default;
};

} // namespace tessary
