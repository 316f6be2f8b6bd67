#pragma once

#include "app/HotKeyShortcut.h"

#include <QObject>
#include <QStringList>
#include <QVariant>

namespace tessary {

class ScreenshotToolDefaults;
class StandardFolders;
class UserDefaults;

/// The settings: read when created and when another program has changed them, written back whenever one is
/// assigned. Main thread only.
///
/// What is stored is clamped when it is read, not when it is assigned: the controls keep their own bounds.
class AppSettings : public QObject {
    Q_OBJECT
public:
    /// What is published, one value a setting.
    struct Values {
        QString monitoredDirectory;
        QStringList ocrLanguages; ///< BCP 47, in priority order.
        bool accurateOCR = true;
        bool launchAtLogin = false;
        bool showDockIcon = false;
        bool showMenuBarIcon = true;
        bool quickSearchPinned = false;
        double quickSearchWidth = 780; ///< Points.
        int trashRetentionDays = 30;
        QStringList excludedBundleIdentifiers;
        QStringList excludedDirectories;
        HotKeyShortcut quickSearchShortcut;
        HotKeyShortcut captureRegionShortcut;
        HotKeyShortcut captureWindowShortcut;
        HotKeyShortcut toggleMonitoringShortcut;
        HotKeyShortcut localOCRShortcut;
        int maxStorageGB = 0; ///< Decimal gigabytes; 0 means no limit.
        bool automaticStorageCleanup = false;
        bool autoCreateReminderAfterOCR = false;
    };

    AppSettings(UserDefaults& defaults, const ScreenshotToolDefaults& screenshotTool,
                const StandardFolders& folders);
    ~AppSettings() override;

    [[nodiscard]] const Values& values() const { return m_values; }

    [[nodiscard]] QString monitoredDirectory() const { return m_values.monitoredDirectory; }
    [[nodiscard]] QStringList ocrLanguages() const { return m_values.ocrLanguages; }
    [[nodiscard]] bool accurateOCR() const { return m_values.accurateOCR; }
    [[nodiscard]] bool launchAtLogin() const { return m_values.launchAtLogin; }
    [[nodiscard]] bool showDockIcon() const { return m_values.showDockIcon; }
    [[nodiscard]] bool showMenuBarIcon() const { return m_values.showMenuBarIcon; }
    [[nodiscard]] bool quickSearchPinned() const { return m_values.quickSearchPinned; }
    [[nodiscard]] double quickSearchWidth() const { return m_values.quickSearchWidth; }
    [[nodiscard]] int trashRetentionDays() const { return m_values.trashRetentionDays; }
    [[nodiscard]] QStringList excludedBundleIdentifiers() const { return m_values.excludedBundleIdentifiers; }
    [[nodiscard]] QStringList excludedDirectories() const { return m_values.excludedDirectories; }
    [[nodiscard]] HotKeyShortcut quickSearchShortcut() const { return m_values.quickSearchShortcut; }
    [[nodiscard]] HotKeyShortcut captureRegionShortcut() const { return m_values.captureRegionShortcut; }
    [[nodiscard]] HotKeyShortcut captureWindowShortcut() const { return m_values.captureWindowShortcut; }
    [[nodiscard]] HotKeyShortcut toggleMonitoringShortcut() const
    {
        return m_values.toggleMonitoringShortcut;
    }
    [[nodiscard]] HotKeyShortcut localOCRShortcut() const { return m_values.localOCRShortcut; }
    [[nodiscard]] int maxStorageGB() const { return m_values.maxStorageGB; }
    [[nodiscard]] bool automaticStorageCleanup() const { return m_values.automaticStorageCleanup; }
    [[nodiscard]] bool autoCreateReminderAfterOCR() const { return m_values.autoCreateReminderAfterOCR; }

    /// Whether nothing is to be recorded while that application is in front: exact, case-sensitive equality.
    [[nodiscard]] bool excludes(const std::optional<QString>& bundleIdentifier) const
    {
        return bundleIdentifier && m_values.excludedBundleIdentifiers.contains(*bundleIdentifier);
    }

    // Each stores its value, and publishes it if it is another.
    void setMonitoredDirectory(const QString& path);
    void setAccurateOCR(bool isAccurate);
    void setLaunchAtLogin(bool launches);
    void setShowDockIcon(bool shows);
    void setShowMenuBarIcon(bool shows);
    void setQuickSearchPinned(bool isPinned);
    void setQuickSearchWidth(double points);
    void setTrashRetentionDays(int days);
    void setExcludedBundleIdentifiers(const QStringList& identifiers);
    void setExcludedDirectories(const QStringList& paths);
    void setQuickSearchShortcut(const HotKeyShortcut& shortcut);
    void setToggleMonitoringShortcut(const HotKeyShortcut& shortcut);
    void setLocalOCRShortcut(const HotKeyShortcut& shortcut);
    void setMaxStorageGB(int gigabytes);
    void setAutomaticStorageCleanup(bool cleansUp);
    void setAutoCreateReminderAfterOCR(bool creates);

Q_SIGNALS:
    void monitoredDirectoryChanged();
    void accurateOCRChanged();
    void launchAtLoginChanged();
    void showDockIconChanged();
    void showMenuBarIconChanged();
    void quickSearchPinnedChanged();
    void quickSearchWidthChanged();
    void trashRetentionDaysChanged();
    void excludedBundleIdentifiersChanged();
    void excludedDirectoriesChanged();
    void quickSearchShortcutChanged();
    void toggleMonitoringShortcutChanged();
    void localOCRShortcutChanged();
    void maxStorageGBChanged();
    void automaticStorageCleanupChanged();
    void autoCreateReminderAfterOCRChanged();
    /// Another program has changed stored settings; what differs has been published one by one.
    void changedElsewhere(const tessary::AppSettings::Values& before);

private:
    [[nodiscard]] Values read() const;
    void readAgain();
    template <typename Value>
    void publish(const Values& before, Value Values::*member, void (AppSettings::*changed)());
    template <typename Value>
    void assign(Value Values::*member, const Value& value, const char* key, const QVariant& stored,
                void (AppSettings::*changed)());

    UserDefaults& m_defaults;
    const ScreenshotToolDefaults& m_screenshotTool;
    const StandardFolders& m_folders;
    Values m_values;
};

} // namespace tessary
