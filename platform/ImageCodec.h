#pragma once

#include "base/Error.h"

#include <QImage>
#include <QRect>
#include <QSize>
#include <QString>

#include <qcoro/qcorotask.h>

namespace tessary {

class ImageError : public Error {
public:
    enum class Case {
        NotAnImage,     ///< Unreadable, damaged, or of a format that is not allowed.
        TooLarge,       ///< More pixels than the caps permit, or no memory for them.
        WorkerFailed,   ///< The decoder's process crashed or could not be started.
        WorkerTimedOut, ///< No answer in 20 s.
        WriteFailed,    ///< The result could not be written: full or read-only disk.
    };
    explicit ImageError(Case which, QString detail = {}) : m_case(which), m_detail(std::move(detail)) {}

    [[nodiscard]] Case which() const noexcept { return m_case; }
    [[nodiscard]] const QString& detail() const noexcept { return m_detail; } ///< For the log.
    [[nodiscard]] QString localizedDescription() const override;

private:
    Case m_case;
    QString m_detail;
};

/// Reads pictures that came from outside. Main thread only; the decoding happens elsewhere.
/// Files may be PNG, JPEG, TIFF or HEIF; bitmaps from the clipboard BMP and WebP besides.
class ImageCodec {
public:
    virtual ~ImageCodec() = default;
    /// Width and height as stored in the header, before any orientation is applied; cheap.
    [[nodiscard]] virtual QCoro::Task<QSize> pixelSize(QString path) = 0;
    /// Writes a JPEG whose longer side is at most `maximumPixelSize` (never enlarged), upright, without
    /// metadata, mode 0600, to a temporary that is renamed. @param quality 0 to 1.
    [[nodiscard]] virtual QCoro::Task<> writeThumbnail(QString source, QString destination,
                                                       int maximumPixelSize, double quality) = 0;
    /// Decodes no more than needed: upright, longer side at most `maximumPixelSize`, never enlarged.
    [[nodiscard]] virtual QCoro::Task<QImage> decode(QString path, int maximumPixelSize) = 0;
    /// A part of the picture, scaled. Reads no more of the file than down to the part's lower edge, and
    /// holds no more than a few rows of it; does not keep the other requests waiting.
    /// @param part pixels of the upright picture, within it.
    /// @param size of the result: neither side larger than the part's, 2^24 pixels at most.
    [[nodiscard]] virtual QCoro::Task<QImage> decodePart(QString path, QRect part, QSize size) = 0;
    /// The same picture as PNG, upright.
    [[nodiscard]] virtual QCoro::Task<QByteArray> pngFromBitmap(QByteArray bitmap) = 0;
    // Each throws ImageError.
};

} // namespace tessary
