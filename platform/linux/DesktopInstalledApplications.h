#pragma once

#include "base/SerialLane.h"
#include "platform/InstalledApplications.h"
#include "platform/linux/DesktopEntries.h"

namespace tessary {

/// The installed programs by their desktop files.
class DesktopInstalledApplications : public InstalledApplications {
public:
    /// @param entries used on a lane from here on.
    explicit DesktopInstalledApplications(DesktopEntries entries);

    [[nodiscard]] QCoro::Task<QList<InstalledApplication>> all() override;
    [[nodiscard]] QCoro::Task<QList<InstalledApplication>> find(QStringList identifiers) override;

private:
    [[nodiscard]] QList<InstalledApplication> allNow();
    [[nodiscard]] QList<InstalledApplication> findNow(const QStringList& identifiers);

    DesktopEntries m_entries; // on the lane
    SerialLane m_lane;
};

} // namespace tessary
