#pragma once

#include "app/HotKeyShortcut.h"
#include "ui/settings/HotKeyCaptureView.h"

#include <QPointer>
#include <QWidget>

namespace tessary {

class HotKeyButton;
class SymbolButton;
class Theme;
class WindowEffects;

/// Shows a shortcut, records another one, or turns it off.
class HotKeyRecorder : public QWidget {
    Q_OBJECT
public:
    /// @param name what the shortcut does.
    HotKeyRecorder(const Theme& theme, WindowEffects& effects, const QString& name,
                   QWidget* parent = nullptr);

    void setShortcut(const HotKeyShortcut& shortcut);
    [[nodiscard]] bool isRecording() const;
    /// Ends a recording; nothing changes.
    void stop();
    [[nodiscard]] HotKeyButton& button() { return *m_button; }
    [[nodiscard]] SymbolButton& disableButton() { return *m_disable; }
    /// Null while there is nothing to capture.
    [[nodiscard]] HotKeyCaptureView* captureView() const { return m_capture; }

Q_SIGNALS:
    /// The person wants this from now on, disabled perhaps.
    void recorded(const tessary::HotKeyShortcut& shortcut);
    void recordingChanged(bool isRecording);
    void refused(tessary::HotKeyCaptureView::Refusal refusal);
    /// Another program holds the keyboard; nothing is recorded.
    void keyboardBusy();

private:
    void record();
    void end();
    void letGo(HotKeyCaptureView* capture);

    const Theme& m_theme;
    WindowEffects& m_effects;
    HotKeyButton* m_button;
    SymbolButton* m_disable;
    QPointer<HotKeyCaptureView> m_capture;
};

} // namespace tessary
