#pragma once

#include "base/SerialLane.h"
#include "platform/ApplicationIcons.h"
#include "platform/linux/IconTheme.h"

namespace tessary {

/// Icons that desktop files name, from the icon theme. Files of up to 16 MiB and 16 million pixels.
class DesktopApplicationIcons : public ApplicationIcons {
public:
    /// @param dataFolders where `icons` and `pixmaps` lie, most important first.
    /// @param themeName what the desktop uses; may be empty.
    DesktopApplicationIcons(const QStringList& dataFolders, const QString& themeName);

    [[nodiscard]] QCoro::Task<QImage> icon(QUrl bundleURL, int pixelSize) override;

private:
    [[nodiscard]] QImage iconNow(const QString& desktopFile, int pixelSize);

    IconTheme m_theme; // on the lane
    SerialLane m_lane;
};

} // namespace tessary
