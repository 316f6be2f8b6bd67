#pragma once

#include <QByteArray>
#include <QImage>
#include <QRect>

#include <xcb/xcb.h>

#include <optional>
#include <vector>

namespace tessary::testing {

/// The windows of the desktop as its server knows them, on a connection of its own. Test thread only.
class ScreenWindows {
public:
    struct Window {
        xcb_window_t id = XCB_WINDOW_NONE;
        QRect geometry; ///< On the screen, without a window manager's frame; physical pixels.
    };

    ScreenWindows();
    ~ScreenWindows();
    ScreenWindows(const ScreenWindows&) = delete;
    ScreenWindows& operator=(const ScreenWindows&) = delete;

    /// The visible window with that title; nothing while there is none.
    [[nodiscard]] std::optional<Window> visible(const QByteArray& title) const;
    [[nodiscard]] bool isVisible(xcb_window_t window) const;
    /// Every window, whoever made it.
    [[nodiscard]] int count() const;
    /// Whether the keyboard is that of the window, or of one inside it.
    [[nodiscard]] bool hasKeyboard(xcb_window_t window) const;
    /// The title of the window that the window manager takes for the active one.
    [[nodiscard]] QByteArray activeTitle() const;
    [[nodiscard]] QByteArray title(xcb_window_t window) const;
    /// Whether the window has an alpha channel.
    [[nodiscard]] bool isTranslucent(xcb_window_t window) const;
    /// Whether taskbars and switchers are asked to leave the window out.
    [[nodiscard]] bool isLeftOut(xcb_window_t window) const;
    /// Whether a window manager runs, and whether something puts the screen together from translucent
    /// windows.
    [[nodiscard]] bool isManaged() const;
    [[nodiscard]] bool isComposited() const;
    /// What is to be seen there.
    [[nodiscard]] QImage picture(const QRect& area) const;

    /// Presses the keys in that order and lets go of them in the opposite one.
    void press(const std::vector<xcb_keycode_t>& keys) const;

    /// From now on counts how often the window comes and goes.
    void follow(xcb_window_t window);
    struct Changes {
        int shown = 0;
        int hidden = 0;
    };
    [[nodiscard]] Changes changes();

private:
    [[nodiscard]] std::vector<xcb_window_t> children(xcb_window_t window) const;
    [[nodiscard]] std::vector<xcb_window_t> all() const;
    [[nodiscard]] QByteArray property(xcb_window_t window, xcb_atom_t name) const;
    [[nodiscard]] std::optional<QRect> geometry(xcb_window_t window) const;

    xcb_connection_t* m_x;
    xcb_window_t m_root = XCB_WINDOW_NONE;
    Changes m_changes;
};

} // namespace tessary::testing
