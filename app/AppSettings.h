#pragma once

#include "app/HotKeyShortcut.h"
#include "platform/ScreenshotToolDefaults.h"
#include "platform/StandardFolders.h"
#include "platform/UserDefaults.h"

#include <QObject>
#include <QStringList>

namespace tessary {

/// The person's preferences, one key of the defaults each. Main thread only.
///
/// Read once, at construction, which brings odd values into range. An assignment tells of a change, then
/// stores the value as it is, under the property's name; it is not brought into range.
class AppSettings : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString monitoredDirectory READ monitoredDirectory WRITE setMonitoredDirectory NOTIFY
                   monitoredDirectoryChanged)
    Q_PROPERTY(QStringList ocrLanguages READ ocrLanguages WRITE setOcrLanguages NOTIFY ocrLanguagesChanged)
    Q_PROPERTY(bool accurateOCR READ accurateOCR WRITE setAccurateOCR NOTIFY accurateOCRChanged)
    Q_PROPERTY(bool launchAtLogin READ launchAtLogin WRITE setLaunchAtLogin NOTIFY launchAtLoginChanged)
    Q_PROPERTY(bool showDockIcon READ showDockIcon WRITE setShowDockIcon NOTIFY showDockIconChanged)
    Q_PROPERTY(
        bool showMenuBarIcon READ showMenuBarIcon WRITE setShowMenuBarIcon NOTIFY showMenuBarIconChanged)
    Q_PROPERTY(bool quickSearchPinned READ quickSearchPinned WRITE setQuickSearchPinned NOTIFY
                   quickSearchPinnedChanged)
    Q_PROPERTY(double quickSearchWidth READ quickSearchWidth WRITE setQuickSearchWidth NOTIFY
                   quickSearchWidthChanged)
    Q_PROPERTY(int trashRetentionDays READ trashRetentionDays WRITE setTrashRetentionDays NOTIFY
                   trashRetentionDaysChanged)
    Q_PROPERTY(QStringList excludedBundleIdentifiers READ excludedBundleIdentifiers WRITE
                   setExcludedBundleIdentifiers NOTIFY excludedBundleIdentifiersChanged)
    Q_PROPERTY(QStringList excludedDirectories READ excludedDirectories WRITE setExcludedDirectories NOTIFY
                   excludedDirectoriesChanged)
    Q_PROPERTY(tessary::HotKeyShortcut quickSearchShortcut READ quickSearchShortcut WRITE
                   setQuickSearchShortcut NOTIFY quickSearchShortcutChanged)
    Q_PROPERTY(tessary::HotKeyShortcut captureRegionShortcut READ captureRegionShortcut WRITE
                   setCaptureRegionShortcut NOTIFY captureRegionShortcutChanged)
    Q_PROPERTY(tessary::HotKeyShortcut captureWindowShortcut READ captureWindowShortcut WRITE
                   setCaptureWindowShortcut NOTIFY captureWindowShortcutChanged)
    Q_PROPERTY(tessary::HotKeyShortcut toggleMonitoringShortcut READ toggleMonitoringShortcut WRITE
                   setToggleMonitoringShortcut NOTIFY toggleMonitoringShortcutChanged)
    Q_PROPERTY(tessary::HotKeyShortcut localOCRShortcut READ localOCRShortcut WRITE setLocalOCRShortcut NOTIFY
                   localOCRShortcutChanged)
    Q_PROPERTY(int maxStorageGB READ maxStorageGB WRITE setMaxStorageGB NOTIFY maxStorageGBChanged)
    Q_PROPERTY(bool automaticStorageCleanup READ automaticStorageCleanup WRITE setAutomaticStorageCleanup
                   NOTIFY automaticStorageCleanupChanged)
    Q_PROPERTY(bool autoCreateReminderAfterOCR READ autoCreateReminderAfterOCR WRITE
                   setAutoCreateReminderAfterOCR NOTIFY autoCreateReminderAfterOCRChanged)

public:
    /// Stores the defaults of `accurateOCR`, `showMenuBarIcon` and `autoCreateReminderAfterOCR` where absent.
    /// @param defaults outlives this; the others are asked during construction only.
    AppSettings(UserDefaults& defaults, const ScreenshotToolDefaults& screenshotTool,
                const StandardFolders& folders, QObject* parent = nullptr);

    [[nodiscard]] const QString& monitoredDirectory() const { return m_monitoredDirectory; }
    [[nodiscard]] const QStringList& ocrLanguages() const { return m_ocrLanguages; }
    [[nodiscard]] bool accurateOCR() const { return m_accurateOCR; }
    [[nodiscard]] bool launchAtLogin() const { return m_launchAtLogin; }
    [[nodiscard]] bool showDockIcon() const { return m_showDockIcon; }
    [[nodiscard]] bool showMenuBarIcon() const { return m_showMenuBarIcon; }
    [[nodiscard]] bool quickSearchPinned() const { return m_quickSearchPinned; }
    [[nodiscard]] double quickSearchWidth() const { return m_quickSearchWidth; }
    [[nodiscard]] int trashRetentionDays() const { return m_trashRetentionDays; }
    [[nodiscard]] const QStringList& excludedBundleIdentifiers() const { return m_excludedBundleIdentifiers; }
    [[nodiscard]] const QStringList& excludedDirectories() const { return m_excludedDirectories; }
    [[nodiscard]] const HotKeyShortcut& quickSearchShortcut() const { return m_quickSearchShortcut; }
    [[nodiscard]] const HotKeyShortcut& captureRegionShortcut() const { return m_captureRegionShortcut; }
    [[nodiscard]] const HotKeyShortcut& captureWindowShortcut() const { return m_captureWindowShortcut; }
    [[nodiscard]] const HotKeyShortcut& toggleMonitoringShortcut() const
    {
        return m_toggleMonitoringShortcut;
    }
    [[nodiscard]] const HotKeyShortcut& localOCRShortcut() const { return m_localOCRShortcut; }
    [[nodiscard]] int maxStorageGB() const { return m_maxStorageGB; }
    [[nodiscard]] bool automaticStorageCleanup() const { return m_automaticStorageCleanup; }
    [[nodiscard]] bool autoCreateReminderAfterOCR() const { return m_autoCreateReminderAfterOCR; }

    // Of these, the OCR languages and the two capture shortcuts are not stored: nothing edits them yet.
    void setMonitoredDirectory(const QString& value);
    void setOcrLanguages(const QStringList& value);
    void setAccurateOCR(bool value);
    void setLaunchAtLogin(bool value);
    void setShowDockIcon(bool value);
    void setShowMenuBarIcon(bool value);
    void setQuickSearchPinned(bool value);
    void setQuickSearchWidth(double value);
    void setTrashRetentionDays(int value);
    void setExcludedBundleIdentifiers(const QStringList& value);
    void setExcludedDirectories(const QStringList& value);
    void setQuickSearchShortcut(const HotKeyShortcut& value);
    void setCaptureRegionShortcut(const HotKeyShortcut& value);
    void setCaptureWindowShortcut(const HotKeyShortcut& value);
    void setToggleMonitoringShortcut(const HotKeyShortcut& value);
    void setLocalOCRShortcut(const HotKeyShortcut& value);
    void setMaxStorageGB(int value);
    void setAutomaticStorageCleanup(bool value);
    void setAutoCreateReminderAfterOCR(bool value);

Q_SIGNALS:
    void monitoredDirectoryChanged(const QString& value);
    void ocrLanguagesChanged(const QStringList& value);
    void accurateOCRChanged(bool value);
    void launchAtLoginChanged(bool value);
    void showDockIconChanged(bool value);
    void showMenuBarIconChanged(bool value);
    void quickSearchPinnedChanged(bool value);
    void quickSearchWidthChanged(double value);
    void trashRetentionDaysChanged(int value);
    void excludedBundleIdentifiersChanged(const QStringList& value);
    void excludedDirectoriesChanged(const QStringList& value);
    void quickSearchShortcutChanged(const tessary::HotKeyShortcut& value);
    void captureRegionShortcutChanged(const tessary::HotKeyShortcut& value);
    void captureWindowShortcutChanged(const tessary::HotKeyShortcut& value);
    void toggleMonitoringShortcutChanged(const tessary::HotKeyShortcut& value);
    void localOCRShortcutChanged(const tessary::HotKeyShortcut& value);
    void maxStorageGBChanged(int value);
    void automaticStorageCleanupChanged(bool value);
    void autoCreateReminderAfterOCRChanged(bool value);

private:
    [[nodiscard]] HotKeyShortcut shortcut(const QString& key, const HotKeyShortcut& fallback) const;
    void storeMissing(const QString& key, bool value);
    template <typename Value>
    void assign(Value& member, const Value& value, void (AppSettings::*changed)(Value));
    template <typename Value>
    void assign(Value& member, const Value& value, void (AppSettings::*changed)(const Value&));

    UserDefaults& m_defaults;
    QString m_monitoredDirectory;
    QStringList m_ocrLanguages;
    bool m_accurateOCR = false;
    bool m_launchAtLogin = false;
    bool m_showDockIcon = false;
    bool m_showMenuBarIcon = false;
    bool m_quickSearchPinned = false;
    double m_quickSearchWidth = 0;
    int m_trashRetentionDays = 0;
    QStringList m_excludedBundleIdentifiers;
    QStringList m_excludedDirectories;
    HotKeyShortcut m_quickSearchShortcut;
    HotKeyShortcut m_captureRegionShortcut;
    HotKeyShortcut m_captureWindowShortcut;
    HotKeyShortcut m_toggleMonitoringShortcut;
    HotKeyShortcut m_localOCRShortcut;
    int m_maxStorageGB = 0;
    bool m_automaticStorageCleanup = false;
    bool m_autoCreateReminderAfterOCR = false;
};

} // namespace tessary
