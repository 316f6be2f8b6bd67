#pragma once

#include "tests/session/panel/PanelSession.h"

namespace tessary::testing {

/// The real program, whose region capture is on Control+Alt+O, and programs with something to read.
class RegionSession : public PanelSession {
protected:
    static void pressCaptureShortcut() { press("ctrl+alt+o"); }
    static void movePointer(const QPoint& place);
    /// Presses the button there and lets go of it here.
    static void drag(const QPoint& from, const QPoint& to);

    /// Waits until every screen is covered, and there is somebody to hear of the pointer.
    [[nodiscard]] ::testing::AssertionResult overlayComes();
    [[nodiscard]] ::testing::AssertionResult overlayGoes() const;

    /// A terminal with a line in it. @returns where its text is on the screen.
    QRect openPage(const char* line, const QPoint& place = {60, 60});
    /// What the program had to tell most recently.
    [[nodiscard]] QString lastError();

    static constexpr const char* kOverlay = "Tessary Region";
    static constexpr const char* kResult = "OCR 识别结果";
    static constexpr const char* kPage = "page";

private:
    /// Where the page is, once there is text on it.
    [[nodiscard]] std::optional<QRect> drawnPage() const;

    qsizetype m_selections = 0; // seen to begin
};

} // namespace tessary::testing
