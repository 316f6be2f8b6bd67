#pragma once

#include "search/ScreenshotSearchViewModel.h"

#include <QBasicTimer>
#include <QObject>
#include <QPointer>
#include <QTimer>

class QKeyEvent;
class QScreen;

namespace tessary {

class AppRuntime;
class KeyableSearchPanel;
class QuickSearchView;
class Theme;
class WindowEffects;

/// Owns the panel, places it, and knows what keys mean while it is shown.
class QuickSearchPanelController : public QObject {
    Q_OBJECT
public:
    QuickSearchPanelController(AppRuntime& runtime, const Theme& theme, WindowEffects& effects);
    ~QuickSearchPanelController() override;

    void show();
    /// Removes the key monitor and orders the panel out.
    void hide();
    [[nodiscard]] bool isVisible() const;
    [[nodiscard]] bool isNavigatingResults() const { return m_isNavigatingResults; }
    [[nodiscard]] ScreenshotSearchViewModel& model() { return m_model; }
    [[nodiscard]] KeyableSearchPanel& panel() { return *m_panel; }

    /// Where the panel's body goes on a screen with that usable area; all of it is there where it can be.
    [[nodiscard]] static QPoint place(const QRect& visibleFrame, const QSize& size);

Q_SIGNALS:
    /// The toolkit takes that window of the panel for the one with the keyboard, which may be a little early.
    void becameKey(quintptr window);
    /// The panel is gone.
    void gaveUpKeyboard();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void position();
    void installEventMonitor();
    void removeEventMonitor();
    /// @returns whether the event is consumed.
    bool handle(const QKeyEvent& event);
    bool handleKey(const QKeyEvent& event, bool hasCommand);
    void typeIntoField(const QKeyEvent& event);
    void moveSelection(int step);
    /// Uses the selected item of what has been typed, even where its rows are still to come.
    void useSelected(std::optional<bool> directPaste);
    void leaveShadowAlone();
    void panelBecameKey();
    void panelResignedKey();
    void panelResized();
    void releaseMemory();

    AppRuntime& m_runtime;
    WindowEffects& m_effects;
    ScreenshotSearchViewModel m_model;
    std::unique_ptr<KeyableSearchPanel> m_panel;
    QuickSearchView* m_view;
    bool m_isShown = false;
    bool m_isMonitoring = false; // keys
    bool m_isNavigatingResults = false;
    bool m_isUseDue = false; // once the rows are there
    QBasicTimer m_settling;  // until the panel has the keyboard, when nobody tells
    QTimer m_rest;           // after hiding, until memory is given back
};

} // namespace tessary
