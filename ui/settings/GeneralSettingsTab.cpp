#include "ui/settings/GeneralSettingsTab.h"

#include "app/AppRuntime.h"
#include "ui/settings/HotKeyRecorder.h"
#include "ui/settings/SettingsCard.h"
#include "ui/settings/SettingsRow.h"

namespace tessary {

GeneralSettingsTab::GeneralSettingsTab(const Theme& theme, AppRuntime& runtime, WindowEffects& effects,
                                       QWidget* parent)
    : SettingsPage(theme, parent),
      m_runtime(runtime),
      m_effects(effects)
{
    addAppearance();
    addShortcuts();
    connect(&runtime, &AppRuntime::hotKeysChanged, this, &GeneralSettingsTab::showConflicts);
    showConflicts();
}

void GeneralSettingsTab::addAppearance()
{
    AppSettings& settings = m_runtime.settings();
    SettingsCard& card = addGroup();
    SettingsRow& launch =
        card.add(new SettingsRow(theme(), QStringLiteral("power"), tr("开机时启动 Tessary")));
    addSwitch(
        launch, settings,
        {&AppSettings::launchAtLogin, &AppSettings::launchAtLoginChanged, &AppSettings::setLaunchAtLogin},
        [this] { m_runtime.updateLaunchAtLogin(); });
    SettingsRow& dock =
        card.add(new SettingsRow(theme(), QStringLiteral("dock.rectangle"), tr("在 Dock 中显示图标")));
    // The windows follow the setting by themselves.
    addSwitch(dock, settings,
              {&AppSettings::showDockIcon, &AppSettings::showDockIconChanged, &AppSettings::setShowDockIcon});
    SettingsRow& menuBar =
        card.add(new SettingsRow(theme(), QStringLiteral("menubar.rectangle"), tr("显示菜单栏图标")));
    addSwitch(menuBar, settings,
              {&AppSettings::showMenuBarIcon, &AppSettings::showMenuBarIconChanged,
               &AppSettings::setShowMenuBarIcon});
}

void GeneralSettingsTab::addShortcuts()
{
    SettingsCard& card = addGroup(tr("全局快捷键"), tr("点击右侧快捷键后，直接按下想使用的组合键。请至少按住 "
                                                       "⌘、⌥ 或 ⌃ 其中一个修饰键；按 Esc 取消录制。"));
    addShortcut(card, QStringLiteral("magnifyingglass"), tr("打开 Tessary"),
                {HotKey::QuickSearch,
                 &AppSettings::quickSearchShortcut,
                 &AppSettings::quickSearchShortcutChanged,
                 &AppSettings::setQuickSearchShortcut,
                 nullptr,
                 nullptr,
                 {}});
    addShortcut(card, QStringLiteral("text.viewfinder"), tr("本地 OCR"),
                {HotKey::LocalOCR,
                 &AppSettings::localOCRShortcut,
                 &AppSettings::localOCRShortcutChanged,
                 &AppSettings::setLocalOCRShortcut,
                 nullptr,
                 nullptr,
                 {}});
    addShortcut(card, QStringLiteral("pause.circle"), tr("暂停或恢复剪贴板记录"),
                {HotKey::ToggleMonitoring,
                 &AppSettings::toggleMonitoringShortcut,
                 &AppSettings::toggleMonitoringShortcutChanged,
                 &AppSettings::setToggleMonitoringShortcut,
                 nullptr,
                 nullptr,
                 {}});
}

void GeneralSettingsTab::addShortcut(SettingsCard& card, const QString& symbol, const QString& name,
                                     Shortcut shortcut)
{
    shortcut.row = &card.add(new SettingsRow(theme(), symbol, name));
    shortcut.recorder = new HotKeyRecorder(theme(), m_effects, name);
    shortcut.recorder->setShortcut((m_runtime.settings().*shortcut.value)());
    shortcut.row->addControl(*shortcut.recorder, SettingsRow::Bleed::Frame);
    m_shortcuts.append(shortcut);
    observe(m_shortcuts.size() - 1);
}

void GeneralSettingsTab::observe(qsizetype index)
{
    const Shortcut& shortcut = m_shortcuts.at(index);
    HotKeyRecorder* recorder = shortcut.recorder;
    connect(&m_runtime.settings(), shortcut.changed, recorder, [this, recorder, value = shortcut.value] {
        recorder->setShortcut((m_runtime.settings().*value)());
    });
    connect(recorder, &HotKeyRecorder::recorded, this,
            [this, assign = shortcut.assign](const HotKeyShortcut& recorded) {
                (m_runtime.settings().*assign)(recorded);
                m_runtime.registerHotKeys();
            });
    connect(recorder, &HotKeyRecorder::recordingChanged, this,
            [this, index, hotKey = shortcut.hotKey](bool isRecording) {
                m_recordingHotKey = isRecording ? std::optional(hotKey) : std::nullopt;
                showTrouble(index, {});
            });
    connect(recorder, &HotKeyRecorder::refused, this, [this, index](HotKeyCaptureView::Refusal refusal) {
        showTrouble(index, refusal == HotKeyCaptureView::Refusal::OnlyShift
                               ? tr("只按住 ⇧ 还不够，请同时按住 ⌘、⌥ 或 ⌃")
                               : tr("此按键不能用作快捷键"));
    });
    connect(recorder, &HotKeyRecorder::keyboardBusy, this,
            [this, index] { showTrouble(index, tr("其他程序正在占用键盘，请稍后再试")); });
}

void GeneralSettingsTab::stopRecording()
{
    for (const Shortcut& shortcut : std::as_const(m_shortcuts))
        shortcut.recorder->stop();
}

void GeneralSettingsTab::showTrouble(qsizetype index, const QString& trouble)
{
    m_shortcuts[index].trouble = trouble;
    showConflicts();
}

void GeneralSettingsTab::showConflicts()
{
    for (const Shortcut& shortcut : std::as_const(m_shortcuts)) {
        QString warning = shortcut.trouble;
        if (warning.isEmpty() && m_runtime.hotKeyConflicts().contains(shortcut.hotKey))
            warning = tr("此快捷键已被其他应用或 Tessary 操作占用");
        shortcut.row->setWarning(warning);
    }
}

} // namespace tessary
