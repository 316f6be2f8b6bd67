#pragma once

#include "base/SerialLane.h"
#include "store/DecodedImageCache.h"

#include <QStringList>

#include <qcoro/qcorotask.h>

namespace tessary {

class ImageCodec;

/// Decoded, downsampled images of files, which every row and preview draws from. Main thread only; decoding
/// happens elsewhere, several at once.
///
/// An entry belongs to one path and one size, and is not noticed to be outdated when the file changes:
/// library files never do.
class FileImageCache {
public:
    static constexpr qint64 kTotalCostLimit = 100'663'296; ///< Bytes.
    static constexpr qsizetype kCountLimit = 600;

    /// The process's one cache, since one budget of bytes spans every window. Tests make their own.
    [[nodiscard]] static FileImageCache& shared();

    FileImageCache();
    ~FileImageCache();
    FileImageCache(const FileImageCache&) = delete;
    FileImageCache& operator=(const FileImageCache&) = delete;

    /// What decodes pictures that came from outside (none: they have no image), and the folders whose
    /// pictures we wrote ourselves, which are read in process. The codec is to be taken back (by null)
    /// before it goes, when no request is under way.
    void setSources(ImageCodec* codec, const QStringList& ownFolders);

    /// The file's picture, upright, its longer side at most `maximumPixelSize`; a null image when it cannot
    /// be had. That is not remembered: the next request tries again. Never throws.
    [[nodiscard]] QCoro::Task<QImage> image(QString path, int maximumPixelSize);
    /// The same through the process's one cache, for views that take a loader.
    [[nodiscard]] static QCoro::Task<QImage> sharedImage(QString path, int maximumPixelSize);
    /// The same as `image` without the cache.
    [[nodiscard]] QCoro::Task<QImage> decode(QString path, int maximumPixelSize);

    [[nodiscard]] qsizetype count() const { return m_cache.count(); }
    [[nodiscard]] qint64 totalCost() const { return m_cache.totalCost(); }
    /// Forgets every image.
    void clear() { m_cache.clear(); }

private:
    [[nodiscard]] bool isOwn(const QString& path) const;

    DecodedImageCache m_cache;
    ImageCodec* m_codec = nullptr; // may be null
    QStringList m_ownFolders;
    SerialLane m_lane; // last
};

} // namespace tessary
