#pragma once

#include "app/WindowPresenter.h"
#include "recognition/RegionSelectionController.h"
#include "ui/WithdrawnWindows.h"
#include "ui/kit/Theme.h"
#include "ui/settings/ApplicationSources.h"

#include <memory>
#include <vector>

class QScreen;

namespace tessary {

class AppRuntime;
class Clock;
class DesktopAppearance;
class LocalOCRResultWindowController;
class OrdinaryWindows;
class PreviewWindowController;
struct PreviewSurroundings;
class QuickSearchPanelController;
class SettingsWindowController;
class WindowEffects;

/// The windows, and the looks that they share.
class DesktopWindows : public QObject, public WindowPresenter {
    Q_OBJECT
public:
    DesktopWindows(const DesktopAppearance& appearance, WindowEffects& effects, Clock& clock,
                   const ApplicationSources& applications);
    ~DesktopWindows() override;

    [[nodiscard]] const Theme& theme() const { return m_theme; }
    /// Builds what has to be there the moment it is asked for. Once; the runtime outlives the windows until
    /// `detach`.
    void attach(AppRuntime& runtime);
    void detach();

    [[nodiscard]] bool isQuickSearchVisible() const override;
    void showQuickSearch() override;
    void hideQuickSearch() override;
    void showSettings() override;
    void showPreview(const ScreenshotRecord& record) override;
    [[nodiscard]] RegionSelector& regionSelector() override { return m_regionSelection; }
    void showRecognitionResult(const RecognitionResult& result) override;
    bool withdraw() override;
    void restore() override;
    /// Hands what is being edited to the runtime, before it shuts down.
    void saveEdits();

private:
    void followScreen(QScreen* screen);
    void followAppearance();
    PreviewWindowController& addPreview(const ScreenshotRecord& record);
    void forgetPreview(PreviewWindowController* controller);

    const DesktopAppearance& m_appearance;
    WindowEffects& m_effects;
    ApplicationSources m_applications;
    Theme m_theme;
    RegionSelectionController m_regionSelection;
    AppRuntime* m_runtime = nullptr; // while attached
    WithdrawnWindows m_withdrawn;
    std::unique_ptr<QuickSearchPanelController> m_quickSearch;
    std::unique_ptr<OrdinaryWindows> m_ordinaryWindows; // while attached
    std::unique_ptr<LocalOCRResultWindowController> m_localOCRController;
    std::unique_ptr<SettingsWindowController> m_settings;       // once it was asked for
    std::unique_ptr<PreviewSurroundings> m_previewSurroundings; // while attached
    std::vector<std::unique_ptr<PreviewWindowController>> m_previewControllers;
};

} // namespace tessary
