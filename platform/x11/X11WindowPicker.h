#pragma once

#include "platform/WindowPicker.h"
#include "platform/x11/WindowPrograms.h"
#include "platform/x11/X11EventLoop.h"

#include <functional>

namespace tessary {

/// Picking with a cross-hair pointer, on a connection of its own.
class X11WindowPicker : public WindowPicker {
public:
    /// @param entries the installed programs; used on a thread from here on.
    /// @param ownIdentifier the bundle identifier of this very process.
    /// @throws X11Error when there is no display.
    X11WindowPicker(DesktopEntries entries, QString ownIdentifier);
    ~X11WindowPicker() override;

    [[nodiscard]] QCoro::Task<PickedWindow> pick() override;
    void cancel() override;

private:
    using Done = std::function<void(PickedWindow)>;

    void begin(Done done);
    [[nodiscard]] bool grab();
    void handle(const xcb_generic_event_t& event);
    void press(const xcb_button_press_event_t& event);
    void answerPress();
    void end(const PickedWindow& picked);
    [[nodiscard]] xcb_window_t clientUnder(xcb_window_t frame);

    bool m_isPicking = false; // main thread
    X11EventLoop m_loop;
    WindowPrograms m_programs; // the loop's thread, as all below
    Done m_done;               // while picking
    xcb_window_t m_frame = XCB_WINDOW_NONE;
    bool m_isPressed = false;
    xcb_cursor_t m_cursor = XCB_CURSOR_NONE;
    xcb_keycode_t m_escape = 0;
};

} // namespace tessary
