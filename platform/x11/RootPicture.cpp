#include "platform/x11/RootPicture.h"

#include "platform/ScreenCapture.h"
#include "platform/x11/XcbReply.h"

#include <QSysInfo>

#include <algorithm>
#include <cstring>
#include <sys/mman.h>
#include <unistd.h>

#include <xcb/shm.h>

namespace tessary {
namespace {

constexpr uint32_t kAllPlanes = ~0U;
constexpr int kStripBytes = 4 * 1024 * 1024; // of one reply where memory cannot be shared

/// Memory that the server and we both see, without a name in the file system.
class SharedMemory {
public:
    explicit SharedMemory(size_t size)
        : m_size(size),
          m_descriptor(::memfd_create("tessary-screen", MFD_CLOEXEC | MFD_ALLOW_SEALING))
    {
        if (m_descriptor < 0 || ::ftruncate(m_descriptor, static_cast<off_t>(size)) != 0)
            return;
        void* const bytes = ::mmap(nullptr, size, PROT_READ, MAP_SHARED, m_descriptor, 0);
        if (bytes != MAP_FAILED)
            m_bytes = static_cast<const uchar*>(bytes);
    }
    ~SharedMemory()
    {
        if (m_bytes != nullptr)
            ::munmap(const_cast<uchar*>(m_bytes), m_size);
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    SharedMemory(const SharedMemory&) = delete;
    SharedMemory& operator=(const SharedMemory&) = delete;

    [[nodiscard]] const uchar* bytes() const { return m_bytes; } ///< Null when there was no memory.
    /// The descriptor, which is the caller's from now on.
    [[nodiscard]] int handOver() { return std::exchange(m_descriptor, -1); }

private:
    const size_t m_size;
    int m_descriptor;
    const uchar* m_bytes = nullptr;
};

bool hasSharedMemory(xcb_connection_t* connection)
{
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(connection, &xcb_shm_id);
    if (extension == nullptr || extension->present == 0)
        return false;
    const XcbReply<xcb_shm_query_version_reply_t> version(
        xcb_shm_query_version_reply(connection, xcb_shm_query_version(connection), nullptr));
    // Descriptors can be handed over since 1.2.
    return version && (version->major_version > 1 || version->minor_version >= 2);
}

void copyLines(QImage& image, int firstLine, int lines, const uchar* bytes, qsizetype bytesPerLine)
{
    for (int line = 0; line < lines; ++line)
        std::memcpy(image.scanLine(firstLine + line), bytes + line * bytesPerLine,
                    static_cast<size_t>(std::min(bytesPerLine, image.bytesPerLine())));
}

/// Bytes of a line as the server pads it.
qsizetype paddedLine(const xcb_setup_t* setup, uint8_t depth, int width)
{
    const xcb_format_t* const formats = xcb_setup_pixmap_formats(setup);
    const int count = xcb_setup_pixmap_formats_length(setup);
    const xcb_format_t* const found =
        std::find_if(formats, formats + count, [depth](const auto& one) { return one.depth == depth; });
    if (found == formats + count || found->scanline_pad == 0)
        return 0;
    const qsizetype bits = qsizetype{width} * found->bits_per_pixel;
    return (bits + found->scanline_pad - 1) / found->scanline_pad * found->scanline_pad / 8;
}

} // namespace

RootPicture::RootPicture() : m_connection(xcb_connect(nullptr, nullptr), &xcb_disconnect)
{
    if (xcb_connection_has_error(m_connection.get()) != 0)
        throw ScreenCaptureError(ScreenCaptureError::Case::NotConnected);
    const xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(m_connection.get()));
    if (screens.rem == 0)
        throw ScreenCaptureError(ScreenCaptureError::Case::NotConnected);
    m_screen = screens.data;
}

QImage RootPicture::take(const QRect& area) const
{
    // The root window may have another size by now than when the connection was made.
    const XcbReply<xcb_get_geometry_reply_t> root(xcb_get_geometry_reply(
        m_connection.get(), xcb_get_geometry(m_connection.get(), m_screen->root), nullptr));
    if (!root)
        throw ScreenCaptureError(ScreenCaptureError::Case::NotConnected);
    const QRect there = area.intersected(QRect(0, 0, root->width, root->height));
    if (there.isEmpty())
        return {};
    const QImage::Format pixels = format();
    QImage image;
    if (hasSharedMemory(m_connection.get()))
        image = takeShared(there, pixels);
    return image.isNull() ? takeSent(there, pixels) : image;
}

/// @throws ScreenCaptureError.
QImage::Format RootPicture::format() const
{
    const xcb_setup_t* const setup = xcb_get_setup(m_connection.get());
    constexpr bool kIsLittle = Q_BYTE_ORDER == Q_LITTLE_ENDIAN;
    if ((setup->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST) == kIsLittle) {
        constexpr int kBytesOfFour = 4;
        constexpr int kBytesOfTwo = 2;
        const qsizetype bytes = paddedLine(setup, m_screen->root_depth, 2) / 2; // an even number: no padding
        if (m_screen->root_depth == 24 && bytes == kBytesOfFour)
            return QImage::Format_RGB32;
        if (m_screen->root_depth == 30 && bytes == kBytesOfFour)
            return QImage::Format_RGB30;
        if (m_screen->root_depth == 16 && bytes == kBytesOfTwo)
            return QImage::Format_RGB16;
    }
    throw ScreenCaptureError(ScreenCaptureError::Case::UnknownFormat);
}

/// @returns a null image when the server does not share memory with us, as one far away.
QImage RootPicture::takeShared(const QRect& area, QImage::Format format) const
{
    xcb_connection_t* const x = m_connection.get();
    const qsizetype line = paddedLine(xcb_get_setup(x), m_screen->root_depth, area.width());
    SharedMemory memory(static_cast<size_t>(line * area.height()));
    if (memory.bytes() == nullptr)
        return {};
    const xcb_shm_seg_t segment = xcb_generate_id(x);
    const XcbReply<xcb_generic_error_t> refusal(
        xcb_request_check(x, xcb_shm_attach_fd_checked(x, segment, memory.handOver(), 0)));
    if (refusal)
        return {};
    const XcbReply<xcb_shm_get_image_reply_t> reply(xcb_shm_get_image_reply(
        x,
        xcb_shm_get_image(x, m_screen->root, static_cast<int16_t>(area.x()), static_cast<int16_t>(area.y()),
                          static_cast<uint16_t>(area.width()), static_cast<uint16_t>(area.height()),
                          kAllPlanes, XCB_IMAGE_FORMAT_Z_PIXMAP, segment, 0),
        nullptr));
    QImage image;
    if (reply) {
        image = QImage(area.size(), format);
        if (!image.isNull())
            copyLines(image, 0, area.height(), memory.bytes(), line);
    }
    xcb_shm_detach(x, segment);
    return image;
}

/// @throws ScreenCaptureError.
QImage RootPicture::takeSent(const QRect& area, QImage::Format format) const
{
    xcb_connection_t* const x = m_connection.get();
    const qsizetype line = paddedLine(xcb_get_setup(x), m_screen->root_depth, area.width());
    QImage image(area.size(), format);
    if (image.isNull() || line == 0)
        throw ScreenCaptureError(ScreenCaptureError::Case::UnknownFormat);
    const int strip = std::max(1, static_cast<int>(kStripBytes / line));
    for (int y = 0; y < area.height(); y += strip) {
        const int lines = std::min(strip, area.height() - y);
        const XcbReply<xcb_get_image_reply_t> reply(xcb_get_image_reply(
            x,
            xcb_get_image(x, XCB_IMAGE_FORMAT_Z_PIXMAP, m_screen->root, static_cast<int16_t>(area.x()),
                          static_cast<int16_t>(area.y() + y), static_cast<uint16_t>(area.width()),
                          static_cast<uint16_t>(lines), kAllPlanes),
            nullptr));
        if (!reply || xcb_get_image_data_length(reply.get()) < line * lines)
            throw ScreenCaptureError(ScreenCaptureError::Case::NotConnected);
        copyLines(image, y, lines, xcb_get_image_data(reply.get()), line);
    }
    return image;
}

} // namespace tessary
