#include "ui/settings/PrivacySettingsTab.h"

#include "app/AppRuntime.h"
#include "app/ApplicationIdentity.h"
#include "platform/ApplicationIcons.h"
#include "platform/WindowPicker.h"
#include "ui/kit/PushButton.h"
#include "ui/kit/Theme.h"
#include "ui/settings/ApplicationChooser.h"
#include "ui/settings/FolderChooser.h"
#include "ui/settings/PermissionRow.h"
#include "ui/settings/RemovableEntries.h"
#include "ui/settings/SettingsCard.h"

#include <QHBoxLayout>

#include <cmath>

namespace tessary {
namespace {

constexpr int kIcon = 16;

} // namespace

PrivacySettingsTab::PrivacySettingsTab(const Theme& theme, AppRuntime& runtime,
                                       const ApplicationSources& sources, QWidget* parent)
    : SettingsPage(theme, parent),
      m_runtime(runtime),
      m_sources(sources)
{
    addPermissions();
    addApplications();
    addFolders();
    addClearing();
}

PrivacySettingsTab::~PrivacySettingsTab()
{
    if (m_isPicking)
        m_sources.picker.cancel();
}

PushButton* PrivacySettingsTab::newButton(const QString& text, const QString& symbol)
{
    auto* button = new PushButton(theme(), PushButton::Role::Ordinary);
    button->setText(text);
    button->setAccessibleName(text);
    if (!symbol.isEmpty())
        button->setSymbol(symbol);
    return button;
}

// --- permissions ------------------------------------------------------------

void PrivacySettingsTab::addPermissions()
{
    SettingsCard& card = addGroup(
        tr("权限状态"),
        tr("这里只列出 Tessary 功能实际使用的系统权限，状态由 macOS 管理并在返回 Tessary 时自动更新。"));
    m_screenRecording = new PermissionRow(theme(), QStringLiteral("rectangle.dashed.badge.record"),
                                          tr("屏幕录制"), tr("用于框选屏幕区域并进行本地 OCR"));
    m_accessibility = new PermissionRow(theme(), QStringLiteral("cursorarrow"), tr("辅助功能"),
                                        tr("用于将选中的剪贴板内容直接粘贴到其他 App"));
    m_reminders = new PermissionRow(theme(), QStringLiteral("checklist"), tr("提醒事项"),
                                    tr("用于将 OCR 识别出的待办写入 macOS 提醒事项"));
    for (PermissionRow* row : {m_screenRecording, m_accessibility, m_reminders})
        card.add(row);
    PermissionRequests& requests = m_runtime.permissionRequests();
    connect(m_screenRecording, &PermissionRow::requested, &requests,
            &PermissionRequests::askForScreenRecording);
    connect(m_accessibility, &PermissionRow::requested, &requests, &PermissionRequests::askForAccessibility);
    connect(m_reminders, &PermissionRow::requested, &requests, &PermissionRequests::askForReminders);
    connect(&m_runtime, &AppRuntime::permissionsChanged, this, &PrivacySettingsTab::showPermissions);
    showPermissions();
}

void PrivacySettingsTab::showPermissions()
{
    m_screenRecording->setGranted(m_runtime.screenRecordingPermissionGranted());
    m_accessibility->setGranted(m_runtime.accessibilityPermissionGranted());
    m_reminders->setGranted(m_runtime.reminderPermissionGranted());
}

// --- programs that are not recorded -----------------------------------------

void PrivacySettingsTab::addApplications()
{
    AppSettings& settings = m_runtime.settings();
    PushButton* add = newButton(tr("添加 App..."));
    SettingsCard& card =
        addGroup(tr("排除的 App"), tr("当排除的 App 位于前台时，新剪贴板内容和截图不会被记录。"), add);
    m_applications = new RemovableEntries(theme(), card, QStringLiteral("app.dashed"),
                                          {QStringLiteral("app.dashed"), tr("尚未排除任何 App")});
    connect(add, &QAbstractButton::clicked, this, &PrivacySettingsTab::chooseApplication);
    connect(m_applications, &RemovableEntries::removalRequested, this,
            [&settings](const QString& identifier) {
                QStringList left = settings.excludedBundleIdentifiers();
                left.removeAll(identifier);
                settings.setExcludedBundleIdentifiers(left);
            });
    connect(&settings, &AppSettings::excludedBundleIdentifiersChanged, this,
            &PrivacySettingsTab::showApplications);
    showApplications();
}

void PrivacySettingsTab::showApplications()
{
    QStringList identifiers = m_runtime.settings().excludedBundleIdentifiers();
    identifiers.removeDuplicates();
    m_applications->show(identifiers);
    if (identifiers.isEmpty())
        return;
    QCoro::connect(m_sources.installed.find(identifiers), this,
                   [this](const QList<InstalledApplication>& found) { nameApplications(found); });
}

void PrivacySettingsTab::nameApplications(const QList<InstalledApplication>& found)
{
    const int pixels = static_cast<int>(std::ceil(kIcon * devicePixelRatioF()));
    for (const InstalledApplication& application : found) {
        m_applications->setName(application.bundleIdentifier, application.name);
        QCoro::connect(m_sources.icons.icon(application.bundleURL, pixels), this,
                       [this, identifier = application.bundleIdentifier](const QImage& icon) {
                           m_applications->setPicture(identifier, icon);
                       });
    }
}

void PrivacySettingsTab::chooseApplication()
{
    if (m_chooser)
        return;
    // Over the whole of the window's body.
    QWidget* host = this;
    while (host->parentWidget() != nullptr && !host->parentWidget()->isWindow())
        host = host->parentWidget();
    m_chooser =
        new ApplicationChooser(theme(), m_sources, m_runtime.settings().excludedBundleIdentifiers(), *host);
    connect(m_chooser, &ApplicationChooser::chosen, this, [this](const InstalledApplication& application) {
        m_applications->setName(application.bundleIdentifier, application.name);
        exclude(application.bundleIdentifier);
    });
    connect(m_chooser, &ApplicationChooser::windowRequested, this, &PrivacySettingsTab::pickWindow);
}

ApplicationChooser* PrivacySettingsTab::applicationChooser() const
{
    return m_chooser;
}

void PrivacySettingsTab::dismissChooser()
{
    if (m_chooser)
        m_chooser->dismiss();
}

void PrivacySettingsTab::pickWindow()
{
    if (m_isPicking)
        return;
    m_isPicking = true;
    Q_EMIT pickingBegan();
    QCoro::connect(m_sources.picker.pick(), this, [this](const PickedWindow& picked) {
        m_isPicking = false;
        Q_EMIT pickingEnded();
        takeWindow(picked);
    });
}

void PrivacySettingsTab::takeWindow(const PickedWindow& picked)
{
    const QString identifier = picked.application.bundleIdentifier.value_or(QString());
    switch (picked.outcome) {
    case PickedWindow::Outcome::Picked:
        m_applications->setName(identifier, picked.application.localizedName.value_or(identifier));
        exclude(identifier);
        break;
    case PickedWindow::Outcome::Cancelled:
        break;
    case PickedWindow::Outcome::NoApplication:
        m_runtime.reportFailure(tr("无法识别此窗口所属的 App。"));
        break;
    case PickedWindow::Outcome::Unavailable:
        m_runtime.reportFailure(tr("其他程序正在占用鼠标或键盘，请稍后再试。"));
        break;
    }
}

void PrivacySettingsTab::exclude(const QString& identifier)
{
    QStringList identifiers = m_runtime.settings().excludedBundleIdentifiers();
    if (identifier.isEmpty() || identifiers.contains(identifier))
        return;
    identifiers.append(identifier);
    m_runtime.settings().setExcludedBundleIdentifiers(identifiers);
}

// --- folders that are not recorded ------------------------------------------

void PrivacySettingsTab::addFolders()
{
    AppSettings& settings = m_runtime.settings();
    PushButton* add = newButton(tr("添加排除目录..."), QStringLiteral("folder"));
    SettingsCard& card = addGroup(tr("排除的目录"), {}, add);
    m_folders = new RemovableEntries(theme(), card, QStringLiteral("folder"),
                                     {QStringLiteral("folder"), tr("尚未排除任何目录")});
    connect(add, &QAbstractButton::clicked, this, &PrivacySettingsTab::chooseFolder);
    connect(m_folders, &RemovableEntries::removalRequested, this, [&settings](const QString& path) {
        QStringList left = settings.excludedDirectories();
        left.removeAll(path);
        settings.setExcludedDirectories(left);
    });
    const auto showFolders = [this, &settings] {
        QStringList paths = settings.excludedDirectories();
        paths.removeDuplicates();
        for (const QString& path : std::as_const(paths))
            m_folders->setName(path, readablePath(path));
        m_folders->show(paths);
    };
    connect(&settings, &AppSettings::excludedDirectoriesChanged, this, showFolders);
    showFolders();
}

void PrivacySettingsTab::chooseFolder()
{
    AppSettings& settings = m_runtime.settings();
    tessary::chooseFolder(theme(), *this, tr("选择要排除的目录"), settings.monitoredDirectory(),
                          [&settings](const QString& path) {
                              QStringList paths = settings.excludedDirectories();
                              if (paths.contains(path))
                                  return;
                              paths.append(path);
                              settings.setExcludedDirectories(paths);
                          });
}

// --- everything -------------------------------------------------------------

void PrivacySettingsTab::addClearing()
{
    auto* line = new QWidget;
    auto* layout = new QHBoxLayout(line);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addStretch(1);
    auto* clear = new PushButton(theme(), PushButton::Role::Destructive);
    clear->setText(tr("清空全部数据..."));
    clear->setAccessibleName(clear->text());
    clear->setSymbol(QStringLiteral("trash"));
    layout->addWidget(clear);
    addWidget(line);
    connect(clear, &QAbstractButton::clicked, this, &PrivacySettingsTab::clearAllDataRequested);
}

} // namespace tessary
