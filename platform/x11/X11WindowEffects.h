#pragma once

#include "platform/WindowEffects.h"
#include "platform/x11/WindowActivation.h"
#include "platform/x11/X11EventLoop.h"

#include <vector>

namespace tessary {

/// Compositor, input shapes and activation on an X server, on a connection of their own.
class X11WindowEffects : public WindowEffects {
    Q_OBJECT
public:
    /// Asks once whether a compositor runs, which takes a round trip. @throws X11Error without a display.
    explicit X11WindowEffects(QObject* parent = nullptr);
    ~X11WindowEffects() override;

    [[nodiscard]] bool isComposited() const override { return m_isComposited; }
    void setFloating(quintptr window) override;
    void setListed(quintptr window, bool isListed) override;
    void setInputRegion(quintptr window, const QRect& region, qreal devicePixelRatio) override;
    void activate(quintptr window) override;
    [[nodiscard]] bool takeInput(quintptr window) override;
    void releaseInput(quintptr window) override;
    [[nodiscard]] bool takeKeyboard(quintptr window) override;
    void releaseKeyboard(quintptr window) override;
    [[nodiscard]] std::optional<quint32> virtualKey(quint32 nativeScanCode) const override;

private:
    void watchCompositor();
    void handle(const xcb_generic_event_t& event);
    void publish(bool isComposited);

    void append(quintptr window, const std::vector<xcb_atom_t>& states) const;
    void requestStates(quintptr window, bool isListed) const;

    struct FloatingStates {
        xcb_atom_t property = XCB_ATOM_NONE;
        xcb_atom_t skipTaskbar = XCB_ATOM_NONE;
        xcb_atom_t skipPager = XCB_ATOM_NONE;
        xcb_atom_t sticky = XCB_ATOM_NONE;
        xcb_atom_t workspace = XCB_ATOM_NONE;
    };

    bool m_isComposited = false;     // main thread
    FloatingStates m_floatingStates; // fixed once constructed
    uint8_t m_ownerEvent = 0;        // the loop's thread, as all below
    xcb_atom_t m_compositor = XCB_ATOM_NONE;
    X11EventLoop m_loop;
    WindowActivation m_activation; // needs the loop, which stops first
};

} // namespace tessary
