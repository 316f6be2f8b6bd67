#pragma once

#include "platform/GlobalHotKeyFacility.h"
#include "platform/x11/ModifierMasks.h"
#include "platform/x11/X11EventLoop.h"

#include <array>
#include <chrono>
#include <functional>
#include <map>
#include <vector>

namespace tessary {

/// Combinations grabbed on the root window, whatever lock keys are on. The loop's thread only.
///
/// A grabbed key freezes the keyboard: the server keeps what is typed from then on and delivers it to the
/// window that has the focus when the keyboard is released.
class KeyGrabs {
public:
    using Reference = GlobalHotKeyFacility::Reference;

    /// @param pressed called once per press, on the loop's thread.
    KeyGrabs(X11EventLoop& loop, std::function<void(HotKeyIdentifier)> pressed);

    /// @param modifiers classic mask. @returns false when the combination is taken, also by ourselves.
    [[nodiscard]] bool add(Reference reference, xcb_keycode_t keycode, quint32 modifiers,
                           HotKeyIdentifier identifier);
    void remove(Reference reference);
    /// Ends what a press froze.
    void releaseKeyboard();
    /// The same as soon as that window has the focus, which is looked for every 2 ms.
    void releaseKeyboardTo(xcb_window_t window);
    void handle(const xcb_generic_event_t& event);

private:
    struct Grab {
        xcb_keycode_t keycode;
        quint32 classicModifiers;
        uint16_t mask;
        HotKeyIdentifier identifier;
    };

    /// A key that is down as far as we know.
    struct HeldKey {
        xcb_timestamp_t pressed;
        bool hasRepeated;
    };

    void ensureMasks();
    [[nodiscard]] bool grab(xcb_keycode_t keycode, uint16_t mask);
    void ungrab(xcb_keycode_t keycode, uint16_t mask);
    [[nodiscard]] std::vector<uint16_t> lockVariants() const;
    void press(const xcb_key_press_event_t& event);
    [[nodiscard]] bool isRepetition(const xcb_key_press_event_t& event);
    void watchHeldKeys();
    void followMapping();

    X11EventLoop& m_loop;
    std::function<void(HotKeyIdentifier)> m_pressed;
    std::optional<ModifierMasks> m_masks;
    std::map<Reference, Grab> m_grabs;
    std::map<xcb_keycode_t, HeldKey> m_held;
    std::chrono::milliseconds m_repeatDelay{0}; // of the last press that was none
    X11EventLoop::TimerId m_release = 0;        // of a keyboard that nobody released
    X11EventLoop::TimerId m_focusPoll = 0;      // for the window that it is to be released to
};

} // namespace tessary
