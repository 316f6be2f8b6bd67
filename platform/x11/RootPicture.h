#pragma once

#include <QImage>
#include <QRect>

#include <memory>

#include <xcb/xcb.h>

namespace tessary {

/// Reads pieces of the root window. Blocks: not for the main thread.
class RootPicture {
public:
    /// Connects to the server of the environment. @throws ScreenCaptureError.
    RootPicture();

    /// @param area device pixels; clipped to the root window. @returns a null image for nothing.
    /// @throws ScreenCaptureError.
    [[nodiscard]] QImage take(const QRect& area) const;

private:
    [[nodiscard]] QImage::Format format() const;
    [[nodiscard]] QImage takeShared(const QRect& area, QImage::Format format) const;
    [[nodiscard]] QImage takeSent(const QRect& area, QImage::Format format) const;

    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> m_connection;
    const xcb_screen_t* m_screen = nullptr;
};

} // namespace tessary
