#pragma once

#include "store/ScreenshotRecord.h"

#include <QObject>

#include <memory>

namespace tessary {

class AppRuntime;
class PreviewDetailView;
struct PreviewSurroundings;
class PreviewWindow;

/// The window of one previewed item, from when it is built until it closes. Main thread only.
class PreviewWindowController : public QObject {
    Q_OBJECT
public:
    /// Builds the window without showing it. Runtime and surroundings outlive it.
    PreviewWindowController(const ScreenshotRecord& record, AppRuntime& runtime,
                            PreviewSurroundings& surroundings);
    ~PreviewWindowController() override;

    [[nodiscard]] const QUuid& item() const { return m_item; }
    [[nodiscard]] PreviewWindow& window() const { return *m_window; }
    [[nodiscard]] PreviewDetailView& view() const { return *m_view; }
    /// Shows it, at first in the middle of the screen with the pointer, and raises it.
    void present();

Q_SIGNALS:
    /// Nobody needs this any more. To be deleted later, not at once.
    void windowWillClose();

private:
    void centre();

    QUuid m_item;
    PreviewDetailView* m_view; // the window's
    std::unique_ptr<PreviewWindow> m_window;
};

} // namespace tessary
