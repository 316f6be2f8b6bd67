#include "app/AppSettings.h"

#include "platform/ScreenshotToolDefaults.h"
#include "platform/StandardFolders.h"
#include "platform/UserDefaults.h"

#include <algorithm>
#include <utility>

namespace tessary {
namespace {

constexpr double kDefaultWidth = 780; // points; also the least
constexpr double kGreatestWidth = 1100;
constexpr int kDefaultRetentionDays = 30;
constexpr quint32 kControlOption = HotKeyModifier::kControl | HotKeyModifier::kOption;

const HotKeyShortcut& defaultShortcut(quint32 keyCode)
{
    static const QHash<quint32, HotKeyShortcut> shortcuts{
        {49, {49, HotKeyModifier::kOption, QStringLiteral("Space")}},
        {15, {15, kControlOption, QStringLiteral("R")}},
        {13, {13, kControlOption, QStringLiteral("W")}},
        {35, {35, kControlOption, QStringLiteral("P")}},
        {31, {31, kControlOption, QStringLiteral("O")}}};
    return *shortcuts.constFind(keyCode);
}

QString fallbackDirectory(const ScreenshotToolDefaults& screenshotTool, const StandardFolders& folders)
{
    return screenshotTool.location().value_or(folders.desktop());
}

/// Makes a default persistent at the first launch.
void registerDefault(UserDefaults& defaults, const QString& key, bool value)
{
    if (!defaults.contains(key))
        defaults.set(key, value);
}

double readWidth(const UserDefaults& defaults)
{
    const double width = defaults.real(QStringLiteral("quickSearchWidth"));
    return width > 0 ? std::clamp(width, kDefaultWidth, kGreatestWidth) : kDefaultWidth;
}

int readRetentionDays(const UserDefaults& defaults)
{
    const QString key = QStringLiteral("trashRetentionDays");
    return defaults.contains(key) ? std::max(1, defaults.integer(key)) : kDefaultRetentionDays;
}

HotKeyShortcut readShortcut(const UserDefaults& defaults, const char* key, quint32 defaultKeyCode)
{
    const std::optional<QString> text = defaults.string(QLatin1String(key));
    if (!text)
        return defaultShortcut(defaultKeyCode);
    return HotKeyShortcut::fromRawValue(*text).value_or(defaultShortcut(defaultKeyCode));
}

QStringList defaultLanguages()
{
    return {QStringLiteral("zh-Hans"), QStringLiteral("zh-Hant"), QStringLiteral("en-US"),
            QStringLiteral("ja-JP")};
}

} // namespace

AppSettings::AppSettings(UserDefaults& defaults, const ScreenshotToolDefaults& screenshotTool,
                         const StandardFolders& folders)
    : m_defaults(defaults),
      m_screenshotTool(screenshotTool),
      m_folders(folders)
{
    registerDefault(defaults, QStringLiteral("accurateOCR"), true);
    registerDefault(defaults, QStringLiteral("showMenuBarIcon"), true);
    registerDefault(defaults, QStringLiteral("autoCreateReminderAfterOCR"), false);
    m_values = read();
    defaults.setChangeHandler([this] { readAgain(); });
}

AppSettings::~AppSettings()
{
    m_defaults.setChangeHandler({});
}

AppSettings::Values AppSettings::read() const
{
    const UserDefaults& defaults = m_defaults;
    Values v;
    v.monitoredDirectory = defaults.string(QStringLiteral("monitoredDirectory"))
                               .value_or(fallbackDirectory(m_screenshotTool, m_folders));
    v.ocrLanguages = defaults.stringArray(QStringLiteral("ocrLanguages")).value_or(defaultLanguages());
    v.accurateOCR = defaults.boolean(QStringLiteral("accurateOCR"));
    v.launchAtLogin = defaults.boolean(QStringLiteral("launchAtLogin"));
    v.showDockIcon = defaults.boolean(QStringLiteral("showDockIcon"));
    v.showMenuBarIcon = defaults.boolean(QStringLiteral("showMenuBarIcon"));
    v.quickSearchPinned = defaults.boolean(QStringLiteral("quickSearchPinned"));
    v.quickSearchWidth = readWidth(defaults);
    v.trashRetentionDays = readRetentionDays(defaults);
    v.excludedBundleIdentifiers =
        defaults.stringArray(QStringLiteral("excludedBundleIdentifiers")).value_or(QStringList());
    v.excludedDirectories =
        defaults.stringArray(QStringLiteral("excludedDirectories")).value_or(QStringList());
    v.quickSearchShortcut = readShortcut(defaults, "quickSearchShortcut", 49);
    v.captureRegionShortcut = readShortcut(defaults, "captureRegionShortcut", 15);
    v.captureWindowShortcut = readShortcut(defaults, "captureWindowShortcut", 13);
    v.toggleMonitoringShortcut = readShortcut(defaults, "toggleMonitoringShortcut", 35);
    v.localOCRShortcut = readShortcut(defaults, "localOCRShortcut", 31);
    v.maxStorageGB = std::max(0, defaults.integer(QStringLiteral("maxStorageGB")));
    v.automaticStorageCleanup = defaults.boolean(QStringLiteral("automaticStorageCleanup"));
    v.autoCreateReminderAfterOCR = defaults.boolean(QStringLiteral("autoCreateReminderAfterOCR"));
    return v;
}

void AppSettings::readAgain()
{
    const Values before = std::exchange(m_values, read());
    publish(before, &Values::monitoredDirectory, &AppSettings::monitoredDirectoryChanged);
    publish(before, &Values::accurateOCR, &AppSettings::accurateOCRChanged);
    publish(before, &Values::launchAtLogin, &AppSettings::launchAtLoginChanged);
    publish(before, &Values::showDockIcon, &AppSettings::showDockIconChanged);
    publish(before, &Values::showMenuBarIcon, &AppSettings::showMenuBarIconChanged);
    publish(before, &Values::quickSearchPinned, &AppSettings::quickSearchPinnedChanged);
    publish(before, &Values::quickSearchWidth, &AppSettings::quickSearchWidthChanged);
    publish(before, &Values::trashRetentionDays, &AppSettings::trashRetentionDaysChanged);
    publish(before, &Values::excludedBundleIdentifiers, &AppSettings::excludedBundleIdentifiersChanged);
    publish(before, &Values::excludedDirectories, &AppSettings::excludedDirectoriesChanged);
    publish(before, &Values::quickSearchShortcut, &AppSettings::quickSearchShortcutChanged);
    publish(before, &Values::toggleMonitoringShortcut, &AppSettings::toggleMonitoringShortcutChanged);
    publish(before, &Values::localOCRShortcut, &AppSettings::localOCRShortcutChanged);
    publish(before, &Values::maxStorageGB, &AppSettings::maxStorageGBChanged);
    publish(before, &Values::automaticStorageCleanup, &AppSettings::automaticStorageCleanupChanged);
    publish(before, &Values::autoCreateReminderAfterOCR, &AppSettings::autoCreateReminderAfterOCRChanged);
    Q_EMIT changedElsewhere(before);
}

template <typename Value>
void AppSettings::publish(const Values& before, Value Values::*member, void (AppSettings::*changed)())
{
    if (before.*member != m_values.*member)
        Q_EMIT(this->*changed)();
}

template <typename Value>
void AppSettings::assign(Value Values::*member, const Value& value, const char* key, const QVariant& stored,
                         void (AppSettings::*changed)())
{
    const bool isOther = m_values.*member != value;
    m_values.*member = value;
    if (isOther)
        Q_EMIT(this->*changed)();
    m_defaults.set(QLatin1String(key), stored);
}

void AppSettings::setMonitoredDirectory(const QString& path)
{
    assign(&Values::monitoredDirectory, path, "monitoredDirectory", path,
           &AppSettings::monitoredDirectoryChanged);
}

void AppSettings::setAccurateOCR(bool isAccurate)
{
    assign(&Values::accurateOCR, isAccurate, "accurateOCR", isAccurate, &AppSettings::accurateOCRChanged);
}

void AppSettings::setLaunchAtLogin(bool launches)
{
    assign(&Values::launchAtLogin, launches, "launchAtLogin", launches, &AppSettings::launchAtLoginChanged);
}

void AppSettings::setShowDockIcon(bool shows)
{
    assign(&Values::showDockIcon, shows, "showDockIcon", shows, &AppSettings::showDockIconChanged);
}

void AppSettings::setShowMenuBarIcon(bool shows)
{
    assign(&Values::showMenuBarIcon, shows, "showMenuBarIcon", shows, &AppSettings::showMenuBarIconChanged);
}

void AppSettings::setQuickSearchPinned(bool isPinned)
{
    assign(&Values::quickSearchPinned, isPinned, "quickSearchPinned", isPinned,
           &AppSettings::quickSearchPinnedChanged);
}

void AppSettings::setQuickSearchWidth(double points)
{
    assign(&Values::quickSearchWidth, points, "quickSearchWidth", points,
           &AppSettings::quickSearchWidthChanged);
}

void AppSettings::setTrashRetentionDays(int days)
{
    assign(&Values::trashRetentionDays, days, "trashRetentionDays", days,
           &AppSettings::trashRetentionDaysChanged);
}

void AppSettings::setExcludedBundleIdentifiers(const QStringList& identifiers)
{
    assign(&Values::excludedBundleIdentifiers, identifiers, "excludedBundleIdentifiers", identifiers,
           &AppSettings::excludedBundleIdentifiersChanged);
}

void AppSettings::setExcludedDirectories(const QStringList& paths)
{
    assign(&Values::excludedDirectories, paths, "excludedDirectories", paths,
           &AppSettings::excludedDirectoriesChanged);
}

void AppSettings::setQuickSearchShortcut(const HotKeyShortcut& shortcut)
{
    assign(&Values::quickSearchShortcut, shortcut, "quickSearchShortcut", shortcut.rawValue(),
           &AppSettings::quickSearchShortcutChanged);
}

void AppSettings::setToggleMonitoringShortcut(const HotKeyShortcut& shortcut)
{
    assign(&Values::toggleMonitoringShortcut, shortcut, "toggleMonitoringShortcut", shortcut.rawValue(),
           &AppSettings::toggleMonitoringShortcutChanged);
}

void AppSettings::setLocalOCRShortcut(const HotKeyShortcut& shortcut)
{
    assign(&Values::localOCRShortcut, shortcut, "localOCRShortcut", shortcut.rawValue(),
           &AppSettings::localOCRShortcutChanged);
}

void AppSettings::setMaxStorageGB(int gigabytes)
{
    assign(&Values::maxStorageGB, gigabytes, "maxStorageGB", gigabytes, &AppSettings::maxStorageGBChanged);
}

void AppSettings::setAutomaticStorageCleanup(bool cleansUp)
{
    assign(&Values::automaticStorageCleanup, cleansUp, "automaticStorageCleanup", cleansUp,
           &AppSettings::automaticStorageCleanupChanged);
}

void AppSettings::setAutoCreateReminderAfterOCR(bool creates)
{
    assign(&Values::autoCreateReminderAfterOCR, creates, "autoCreateReminderAfterOCR", creates,
           &AppSettings::autoCreateReminderAfterOCRChanged);
}

} // namespace tessary
