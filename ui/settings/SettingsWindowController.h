#pragma once

#include "ui/settings/ApplicationSources.h"

#include <QObject>
#include <QSize>

#include <memory>

class QScreen;

namespace tessary {

class AppRuntime;
class FramedWindow;
class SettingsView;
class Theme;
class WindowEffects;

/// The settings window: made when it is first shown, and the same one from then on. Main thread only.
class SettingsWindowController : public QObject {
    Q_OBJECT
public:
    static constexpr QSize kFirst{780, 540}; ///< Of the body; less where the screen has less.
    static constexpr QSize kSmallest{700, 500};
    static constexpr QSize kLargest{1200, 900};

    /// All outlive this.
    SettingsWindowController(const Theme& theme, AppRuntime& runtime, WindowEffects& effects,
                             const ApplicationSources& sources);
    ~SettingsWindowController() override;

    /// Brings the window to the front, with the keyboard.
    void show();
    void close();
    [[nodiscard]] FramedWindow& window() { return *m_window; }
    [[nodiscard]] SettingsView& view() { return *m_view; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addShortcuts();
    void fitScreen(QScreen& screen);
    void place();
    void leaveShadowAlone();
    void standAside();
    void comeBack();

    AppRuntime& m_runtime;
    WindowEffects& m_effects;
    std::unique_ptr<FramedWindow> m_window;
    SettingsView* m_view; // child of the window
    bool m_wasPlaced = false;
};

} // namespace tessary
