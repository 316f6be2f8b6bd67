#include "app/RewrittenSettings.h"

#include "app/AppRuntime.h"

namespace tessary {

RewrittenSettings::RewrittenSettings(AppRuntime& runtime) : m_runtime(runtime)
{
    connect(&runtime.settings(), &AppSettings::changedElsewhere, this, &RewrittenSettings::follow);
}

void RewrittenSettings::follow(const AppSettings::Values& before)
{
    const AppSettings::Values& now = m_runtime.settings().values();
    if (before.monitoredDirectory != now.monitoredDirectory && m_runtime.isMonitoring())
        m_runtime.restartMonitoring();
    if (before.quickSearchShortcut != now.quickSearchShortcut ||
        before.localOCRShortcut != now.localOCRShortcut ||
        before.toggleMonitoringShortcut != now.toggleMonitoringShortcut)
        m_runtime.registerHotKeys();
    if (before.launchAtLogin != now.launchAtLogin)
        m_runtime.updateLaunchAtLogin();
    if (before.accurateOCR != now.accurateOCR)
        m_runtime.updateOCRConfiguration();
    if (before.trashRetentionDays != now.trashRetentionDays || before.maxStorageGB != now.maxStorageGB ||
        before.automaticStorageCleanup != now.automaticStorageCleanup)
        m_runtime.perform(m_runtime.enforceStorageLimit());
}

} // namespace tessary
