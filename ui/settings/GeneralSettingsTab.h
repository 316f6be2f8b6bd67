#pragma once

#include "app/GlobalHotKeyService.h"
#include "ui/settings/HotKeyCaptureView.h"
#include "ui/settings/SettingsPage.h"

#include <optional>

namespace tessary {

class AppRuntime;
class HotKeyRecorder;
class WindowEffects;

/// Where the program shows, and its global shortcuts.
class GeneralSettingsTab : public SettingsPage {
    Q_OBJECT
public:
    using HotKey = GlobalHotKeyService::HotKey;

    GeneralSettingsTab(const Theme& theme, AppRuntime& runtime, WindowEffects& effects,
                       QWidget* parent = nullptr);

    /// Which shortcut is being recorded.
    [[nodiscard]] std::optional<HotKey> recordingHotKey() const { return m_recordingHotKey; }
    /// Nothing changes.
    void stopRecording();

private:
    struct Shortcut {
        HotKey hotKey;
        HotKeyShortcut (AppSettings::*value)() const;
        void (AppSettings::*changed)();
        void (AppSettings::*assign)(const HotKeyShortcut&);
        SettingsRow* row;
        HotKeyRecorder* recorder;
        QString trouble; ///< Of the recording that is on.
    };

    void addAppearance();
    void addShortcuts();
    void addShortcut(SettingsCard& card, const QString& symbol, const QString& name, Shortcut shortcut);
    void observe(qsizetype index);
    void showTrouble(qsizetype index, const QString& trouble);
    void showConflicts();

    AppRuntime& m_runtime;
    WindowEffects& m_effects;
    QList<Shortcut> m_shortcuts;
    std::optional<HotKey> m_recordingHotKey;
};

} // namespace tessary
