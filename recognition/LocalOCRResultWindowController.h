#pragma once

#include "recognition/RecognitionResult.h"

#include <QObject>

#include <memory>

namespace tessary {

class FramedWindow;
class LocalOCRResultView;
class Theme;
class WindowEffects;

/// The window that shows what was recognised; one at a time. Main thread only.
class LocalOCRResultWindowController : public QObject {
    Q_OBJECT
public:
    static constexpr QSize kSmallest{680, 400}; ///< Of the body; also its first size.
    static constexpr QSize kLargest{900, 620};

    /// Both outlive this.
    LocalOCRResultWindowController(const Theme& theme, WindowEffects& effects);
    ~LocalOCRResultWindowController() override;

    /// Opens a window with the result in the middle of the screen that has the pointer, and gives it the
    /// keyboard. One that is open goes.
    void show(RecognitionResult result);
    void close();
    [[nodiscard]] bool isOpen() const { return m_window != nullptr; }
    /// Null while none is open.
    [[nodiscard]] FramedWindow* window() const { return m_window.get(); }
    [[nodiscard]] LocalOCRResultView* view() const { return m_view; }

Q_SIGNALS:
    /// The window is gone, by the person's doing or by `close`; not when another takes its place.
    void closed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void closeSoon();
    void discard();
    void addShortcuts();
    void place();
    void fitText();
    void leaveShadowAlone();

    const Theme& m_theme;
    QSize m_smallest = kSmallest; // of the body, with the person's text size
    WindowEffects& m_effects;
    std::unique_ptr<FramedWindow> m_window;
    LocalOCRResultView* m_view = nullptr; // child of the window
};

} // namespace tessary
