#pragma once

#include "platform/Platform.h"
#include "store/ScreenshotRecord.h"

#include <QObject>

#include <optional>

namespace tessary {

class SQLiteStore;
class WindowPresenter;

/// What happens when a person picks an item in the panel: it goes to the clipboard and, where the session
/// lets us type, into the program that they came from. Main thread only.
class PasteBack : public QObject {
    Q_OBJECT
public:
    struct Result {
        bool isOnPasteboard = false;
        std::optional<QString> message; ///< What the person has to know, if anything.
    };

    PasteBack(Platform platform, WindowPresenter& windows);

    /// To be called before the panel is shown. When a window of our own is in front, the program that was in
    /// front before it counts.
    void rememberPreviousApplication();
    [[nodiscard]] const std::optional<RunningApplication>& previousApplication() const
    {
        return m_previousApplication;
    }

    /// @param store where the whole of a text is read that the record may hold in part; may be null.
    /// @throws StoreError.
    [[nodiscard]] QCoro::Task<Result> copy(ScreenshotRecord record, bool pasteIntoPreviousApplication,
                                           SQLiteStore* store);

private:
    void noteActivation(const RunningApplication& application);
    QCoro::Task<Result> copyOnly(ScreenshotRecord record);
    QCoro::Task<Result> copyAndPaste(ScreenshotRecord record);

    Platform m_platform;
    WindowPresenter& m_windows;
    std::optional<RunningApplication> m_previousApplication;
    std::optional<RunningApplication> m_lastOther; ///< In front most recently, apart from ourselves.
    bool m_expectsPanel = false;                   ///< It was asked for and is not in front yet.
    Date m_asked;                                  ///< When it was asked for.
};

} // namespace tessary
