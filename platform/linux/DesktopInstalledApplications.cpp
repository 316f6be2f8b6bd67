#include "platform/linux/DesktopInstalledApplications.h"

#include <QCollator>

#include <algorithm>

namespace tessary {
namespace {

InstalledApplication applicationOf(const DesktopEntry& entry)
{
    return {entry.id, entry.name, QUrl::fromLocalFile(entry.path)};
}

} // namespace

DesktopInstalledApplications::DesktopInstalledApplications(DesktopEntries entries)
    : m_entries(std::move(entries)),
      m_lane(QStringLiteral("tessary-installed"))
{
}

QCoro::Task<QList<InstalledApplication>> DesktopInstalledApplications::all()
{
    auto looking = m_lane.post([this] { return allNow(); });
    QList<InstalledApplication> applications = co_await looking;
    co_return applications;
}

QCoro::Task<QList<InstalledApplication>> DesktopInstalledApplications::find(QStringList identifiers)
{
    auto looking = m_lane.post([this, identifiers] { return findNow(identifiers); });
    QList<InstalledApplication> applications = co_await looking;
    co_return applications;
}

QList<InstalledApplication> DesktopInstalledApplications::allNow()
{
    QList<InstalledApplication> applications;
    for (const DesktopEntry& entry : m_entries.inMenus())
        applications.append(applicationOf(entry));
    QCollator order;
    order.setCaseSensitivity(Qt::CaseInsensitive);
    order.setNumericMode(true);
    std::stable_sort(applications.begin(), applications.end(),
                     [&order](const InstalledApplication& one, const InstalledApplication& other) {
                         return order.compare(one.name, other.name) < 0;
                     });
    return applications;
}

/// Exact: that is how exclusion compares.
QList<InstalledApplication> DesktopInstalledApplications::findNow(const QStringList& identifiers)
{
    QList<InstalledApplication> applications;
    for (const QString& identifier : identifiers) {
        const std::optional<DesktopEntry> entry = m_entries.byId(identifier);
        if (entry && entry->id == identifier)
            applications.append(applicationOf(*entry));
    }
    return applications;
}

} // namespace tessary
