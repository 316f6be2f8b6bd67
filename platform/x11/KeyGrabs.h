#pragma once

#include "platform/GlobalHotKeyFacility.h"
#include "platform/x11/ModifierMasks.h"
#include "platform/x11/X11EventLoop.h"

#include <array>
#include <functional>
#include <map>
#include <vector>

namespace tessary {

/// Combinations grabbed on the root window, whatever lock keys are on. The loop's thread only.
class KeyGrabs {
public:
    using Reference = GlobalHotKeyFacility::Reference;

    /// @param pressed called once per press, on the loop's thread.
    KeyGrabs(X11EventLoop& loop, std::function<void(HotKeyIdentifier)> pressed);

    /// @param modifiers classic mask. @returns false when the combination is taken, also by ourselves.
    [[nodiscard]] bool add(Reference reference, xcb_keycode_t keycode, quint32 modifiers,
                           HotKeyIdentifier identifier);
    void remove(Reference reference);
    void handle(const xcb_generic_event_t& event);

private:
    struct Grab {
        xcb_keycode_t keycode;
        quint32 classicModifiers;
        uint16_t mask;
        HotKeyIdentifier identifier;
    };

    void ensureMasks();
    [[nodiscard]] bool grab(xcb_keycode_t keycode, uint16_t mask);
    void ungrab(xcb_keycode_t keycode, uint16_t mask);
    [[nodiscard]] std::vector<uint16_t> lockVariants() const;
    void press(const xcb_key_press_event_t& event);
    void followMapping();

    X11EventLoop& m_loop;
    std::function<void(HotKeyIdentifier)> m_pressed;
    std::optional<ModifierMasks> m_masks;
    std::map<Reference, Grab> m_grabs;
    // When each key was last released; a press at that very time is the key's automatic repetition.
    std::map<xcb_keycode_t, xcb_timestamp_t> m_released;
};

} // namespace tessary
