#pragma once

#include "platform/KeystrokeSender.h"
#include "platform/x11/PasteKeys.h"
#include "platform/x11/X11EventLoop.h"

#include <vector>

namespace tessary {

/// Types with the XTEST extension, on a connection and thread of its own. The keys arrive in whatever window
/// has the keyboard, as if a person had pressed them.
///
/// Terminals get Shift+Insert, and so does any program while no key of the active layout brings a v.
/// A modifier that the person still holds would change the meaning of the keys, so it is let go of first and,
/// if the finger is still on it, pressed again afterwards.
class X11KeystrokeSender : public KeystrokeSender {
public:
    /// @throws X11Error when there is no display.
    X11KeystrokeSender();
    ~X11KeystrokeSender() override;

    [[nodiscard]] QCoro::Task<std::optional<PasteKeystroke>>
    pasteKeystroke(RunningApplication target) override;
    [[nodiscard]] QCoro::Task<bool> send(PasteKeystroke keystroke, RunningApplication target) override;

private:
    void setUp();
    [[nodiscard]] std::optional<PasteKeystroke> choose(bool isTerminal);
    [[nodiscard]] bool type(PasteKeystroke keystroke, const RunningApplication& target);
    void press(xcb_keycode_t key);
    void release(xcb_keycode_t key);
    void pressAgain(const std::vector<xcb_keycode_t>& modifiers);

    bool m_canType = false; // the loop's thread
    X11EventLoop m_loop;
};

} // namespace tessary
