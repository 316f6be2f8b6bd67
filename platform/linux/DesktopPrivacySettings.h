#pragma once

#include "base/SerialLane.h"
#include "platform/PrivacySettings.h"

#include <QStringList>

namespace tessary {

/// Pages of the settings programs of GNOME and Plasma. Which of them applies is told by XDG_CURRENT_DESKTOP;
/// a page is there when the program and the page's own desktop file are.
class DesktopPrivacySettings : public PrivacySettings {
public:
    /// @param dataFolders where desktop files are looked for.
    /// @param identifier of this program's desktop file.
    DesktopPrivacySettings(QStringList dataFolders, QString identifier);

    [[nodiscard]] QCoro::Task<bool> open(QString anchor) override;

private:
    [[nodiscard]] bool openNow(const QString& anchor) const;
    [[nodiscard]] bool isInstalled(const QString& desktopFile) const;

    QStringList m_dataFolders;
    QString m_identifier;
    SerialLane m_lane;
};

} // namespace tessary
