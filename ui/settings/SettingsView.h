#pragma once

#include "app/GlobalHotKeyService.h"
#include "ui/kit/Sheet.h"
#include "ui/settings/ApplicationSources.h"

#include <QPointer>
#include <QWidget>

#include <optional>

class QStackedWidget;

namespace tessary {

class AppRuntime;
class Banner;
class GeneralSettingsTab;
class Hairline;
class PrivacySettingsTab;
class SegmentedControl;
class SettingsPage;
class Theme;
class WindowEffects;

enum class SettingsTab { General, Storage, OCR, Privacy };

/// What the settings window shows: the tabs, what went wrong, and the page of one tab.
class SettingsView : public QWidget {
    Q_OBJECT
public:
    static constexpr int kCornerRadius = 18;

    /// All outlive this.
    SettingsView(const Theme& theme, AppRuntime& runtime, WindowEffects& effects,
                 const ApplicationSources& sources, QWidget* parent = nullptr);

    [[nodiscard]] SettingsTab selectedTab() const;
    void selectTab(SettingsTab tab);
    /// Around the end as well.
    void selectNextTab(int step);
    /// Whether the person is being asked.
    [[nodiscard]] bool confirmClearAllData() const { return m_confirmation != nullptr; }
    void setConfirmClearAllData(bool confirms);
    /// Which shortcut's row is recording.
    [[nodiscard]] std::optional<GlobalHotKeyService::HotKey> recordingHotKey() const;
    [[nodiscard]] SettingsPage& page(SettingsTab tab) const;
    [[nodiscard]] Sheet* confirmation() const { return m_confirmation; }

Q_SIGNALS:
    void closeRequested();
    void minimizeRequested();
    void pickingBegan();
    void pickingEnded();

protected:
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void addHeader();
    void addWindowButtons();
    void layOut();
    void addPages();
    void addPage(SettingsPage* page);
    void followErrors();
    void showScrolled();

    const Theme& m_theme;
    AppRuntime& m_runtime;
    QWidget* m_header;
    SegmentedControl* m_tabs;
    QWidget* m_windowButtons;
    Hairline* m_hairline;
    Banner* m_banner;
    QStackedWidget* m_pages;
    GeneralSettingsTab* m_general;
    PrivacySettingsTab* m_privacy;
    QPointer<Sheet> m_confirmation;
};

} // namespace tessary
