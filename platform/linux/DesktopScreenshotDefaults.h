#pragma once

#include "platform/ScreenshotToolDefaults.h"

#include "platform/linux/XdgFolders.h"

namespace tessary {

/// The folder of the desktop's screenshot tool: that of the running desktop first, then any other that is
/// configured, then `Screenshots` among the pictures where that exists. Reads a few small files at each call.
class DesktopScreenshotDefaults : public ScreenshotToolDefaults {
public:
    explicit DesktopScreenshotDefaults(const XdgFolders& folders) : m_folders(folders) {}

    [[nodiscard]] std::optional<QString> location() const override;

private:
    [[nodiscard]] std::optional<QString> configured() const;
    /// An absolute path from a path or file URL, with `~` and `$HOME` resolved.
    [[nodiscard]] std::optional<QString> pathFrom(QString setting) const;

    const XdgFolders& m_folders;
};

} // namespace tessary
