#include "app/AppSettings.h"

#include <algorithm>

namespace tessary {
namespace {

constexpr double kMinimumWidth = 780;
constexpr double kMaximumWidth = 1100;
constexpr int kUsualTrashRetentionDays = 30;
constexpr quint32 kControlOption = HotKeyShortcut::Control | HotKeyShortcut::Option;

double widthInRange(double stored)
{
    return stored > 0 ? std::clamp(stored, kMinimumWidth, kMaximumWidth) : kMinimumWidth;
}

} // namespace

AppSettings::AppSettings(UserDefaults& defaults, const ScreenshotToolDefaults& screenshotTool,
                         const StandardFolders& folders, QObject* parent)
    : QObject(parent),
      m_defaults(defaults)
{
    const auto key = [](const char* name) { return QString::fromLatin1(name); };
    const QString fallbackDirectory = screenshotTool.location().value_or(folders.desktop());
    storeMissing(key("accurateOCR"), true);
    storeMissing(key("showMenuBarIcon"), true);
    m_monitoredDirectory = defaults.string(key("monitoredDirectory")).value_or(fallbackDirectory);
    const QStringList usualLanguages{key("zh-Hans"), key("zh-Hant"), key("en-US"), key("ja-JP")};
    m_ocrLanguages = defaults.stringArray(key("ocrLanguages")).value_or(usualLanguages);
    m_accurateOCR = defaults.boolean(key("accurateOCR"));
    m_launchAtLogin = defaults.boolean(key("launchAtLogin"));
    m_showDockIcon = defaults.boolean(key("showDockIcon"));
    m_showMenuBarIcon = defaults.boolean(key("showMenuBarIcon"));
    m_quickSearchPinned = defaults.boolean(key("quickSearchPinned"));
    m_quickSearchWidth = widthInRange(defaults.real(key("quickSearchWidth")));
    m_trashRetentionDays = defaults.contains(key("trashRetentionDays"))
                               ? std::max(1, defaults.integer(key("trashRetentionDays")))
                               : kUsualTrashRetentionDays;
    m_excludedBundleIdentifiers =
        defaults.stringArray(key("excludedBundleIdentifiers")).value_or(QStringList());
    m_excludedDirectories = defaults.stringArray(key("excludedDirectories")).value_or(QStringList());
    m_quickSearchShortcut = shortcut(key("quickSearchShortcut"), {49, HotKeyShortcut::Option, key("Space")});
    m_captureRegionShortcut = shortcut(key("captureRegionShortcut"), {15, kControlOption, key("R")});
    m_captureWindowShortcut = shortcut(key("captureWindowShortcut"), {13, kControlOption, key("W")});
    m_toggleMonitoringShortcut = shortcut(key("toggleMonitoringShortcut"), {35, kControlOption, key("P")});
    m_localOCRShortcut = shortcut(key("localOCRShortcut"), {31, kControlOption, key("O")});
    m_maxStorageGB = std::max(0, defaults.integer(key("maxStorageGB")));
    m_automaticStorageCleanup = defaults.boolean(key("automaticStorageCleanup"));
    storeMissing(key("autoCreateReminderAfterOCR"), false);
    m_autoCreateReminderAfterOCR = defaults.boolean(key("autoCreateReminderAfterOCR"));
}

HotKeyShortcut AppSettings::shortcut(const QString& key, const HotKeyShortcut& fallback) const
{
    const std::optional<QString> text = m_defaults.string(key);
    return text ? HotKeyShortcut::fromRawValue(*text).value_or(fallback) : fallback;
}

void AppSettings::storeMissing(const QString& key, bool value)
{
    if (!m_defaults.contains(key))
        m_defaults.set(key, value);
}

template <typename Value>
void AppSettings::assign(Value& member, const Value& value, void (AppSettings::*changed)(Value))
{
    if (member == value)
        return;
    member = value;
    Q_EMIT(this->*changed)(member);
}

template <typename Value>
void AppSettings::assign(Value& member, const Value& value, void (AppSettings::*changed)(const Value&))
{
    if (member == value)
        return;
    member = value;
    Q_EMIT(this->*changed)(member);
}

void AppSettings::setMonitoredDirectory(const QString& value)
{
    assign(m_monitoredDirectory, value, &AppSettings::monitoredDirectoryChanged);
    m_defaults.set(QStringLiteral("monitoredDirectory"), value);
}

void AppSettings::setOcrLanguages(const QStringList& value)
{
    assign(m_ocrLanguages, value, &AppSettings::ocrLanguagesChanged);
}

void AppSettings::setAccurateOCR(bool value)
{
    assign(m_accurateOCR, value, &AppSettings::accurateOCRChanged);
    m_defaults.set(QStringLiteral("accurateOCR"), value);
}

void AppSettings::setLaunchAtLogin(bool value)
{
    assign(m_launchAtLogin, value, &AppSettings::launchAtLoginChanged);
    m_defaults.set(QStringLiteral("launchAtLogin"), value);
}

void AppSettings::setShowDockIcon(bool value)
{
    assign(m_showDockIcon, value, &AppSettings::showDockIconChanged);
    m_defaults.set(QStringLiteral("showDockIcon"), value);
}

void AppSettings::setShowMenuBarIcon(bool value)
{
    assign(m_showMenuBarIcon, value, &AppSettings::showMenuBarIconChanged);
    m_defaults.set(QStringLiteral("showMenuBarIcon"), value);
}

void AppSettings::setQuickSearchPinned(bool value)
{
    assign(m_quickSearchPinned, value, &AppSettings::quickSearchPinnedChanged);
    m_defaults.set(QStringLiteral("quickSearchPinned"), value);
}

void AppSettings::setQuickSearchWidth(double value)
{
    assign(m_quickSearchWidth, value, &AppSettings::quickSearchWidthChanged);
    m_defaults.set(QStringLiteral("quickSearchWidth"), value);
}

void AppSettings::setTrashRetentionDays(int value)
{
    assign(m_trashRetentionDays, value, &AppSettings::trashRetentionDaysChanged);
    m_defaults.set(QStringLiteral("trashRetentionDays"), value);
}

void AppSettings::setExcludedBundleIdentifiers(const QStringList& value)
{
    assign(m_excludedBundleIdentifiers, value, &AppSettings::excludedBundleIdentifiersChanged);
    m_defaults.set(QStringLiteral("excludedBundleIdentifiers"), value);
}

void AppSettings::setExcludedDirectories(const QStringList& value)
{
    assign(m_excludedDirectories, value, &AppSettings::excludedDirectoriesChanged);
    m_defaults.set(QStringLiteral("excludedDirectories"), value);
}

void AppSettings::setQuickSearchShortcut(const HotKeyShortcut& value)
{
    assign(m_quickSearchShortcut, value, &AppSettings::quickSearchShortcutChanged);
    m_defaults.set(QStringLiteral("quickSearchShortcut"), value.rawValue());
}

void AppSettings::setCaptureRegionShortcut(const HotKeyShortcut& value)
{
    assign(m_captureRegionShortcut, value, &AppSettings::captureRegionShortcutChanged);
}

void AppSettings::setCaptureWindowShortcut(const HotKeyShortcut& value)
{
    assign(m_captureWindowShortcut, value, &AppSettings::captureWindowShortcutChanged);
}

void AppSettings::setToggleMonitoringShortcut(const HotKeyShortcut& value)
{
    assign(m_toggleMonitoringShortcut, value, &AppSettings::toggleMonitoringShortcutChanged);
    m_defaults.set(QStringLiteral("toggleMonitoringShortcut"), value.rawValue());
}

void AppSettings::setLocalOCRShortcut(const HotKeyShortcut& value)
{
    assign(m_localOCRShortcut, value, &AppSettings::localOCRShortcutChanged);
    m_defaults.set(QStringLiteral("localOCRShortcut"), value.rawValue());
}

void AppSettings::setMaxStorageGB(int value)
{
    assign(m_maxStorageGB, value, &AppSettings::maxStorageGBChanged);
    m_defaults.set(QStringLiteral("maxStorageGB"), value);
}

void AppSettings::setAutomaticStorageCleanup(bool value)
{
    assign(m_automaticStorageCleanup, value, &AppSettings::automaticStorageCleanupChanged);
    m_defaults.set(QStringLiteral("automaticStorageCleanup"), value);
}

void AppSettings::setAutoCreateReminderAfterOCR(bool value)
{
    assign(m_autoCreateReminderAfterOCR, value, &AppSettings::autoCreateReminderAfterOCRChanged);
    m_defaults.set(QStringLiteral("autoCreateReminderAfterOCR"), value);
}

} // namespace tessary
