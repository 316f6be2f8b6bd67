#include "store/FileImageCache.h"

#include "platform/ImageCodec.h"

#include <QDir>
#include <QImageReader>
#include <QLoggingCategory>

namespace tessary {
namespace {

Q_LOGGING_CATEGORY(lcImageCache, "tessary.imagecache", QtInfoMsg)

/// On the lane. Only what we write ourselves: small JPEG and PNG files.
QImage readOwnFile(const QString& path, int maximumPixelSize)
{
    constexpr qint64 kMostPixels = 16LL * 1024 * 1024;
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QByteArray format = reader.format();
    const QSize size = reader.size();
    if ((format != "jpeg" && format != "png") || size.isEmpty() ||
        qint64{size.width()} * size.height() > kMostPixels)
        return {};
    if (std::max(size.width(), size.height()) > maximumPixelSize) {
        const QSize fitted = size.scaled(maximumPixelSize, maximumPixelSize, Qt::KeepAspectRatio);
        reader.setScaledSize(fitted.expandedTo(QSize(1, 1)));
    }
    const QImage image = reader.read();
    // What the screen takes without another conversion.
    return image.convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                         : QImage::Format_RGB32);
}

} // namespace

FileImageCache& FileImageCache::shared()
{
    static FileImageCache cache;
    return cache;
}

FileImageCache::FileImageCache()
    : m_cache({.totalCost = kTotalCostLimit, .count = kCountLimit}),
      m_lane(QStringLiteral("com.tessary.images"))
{
}

FileImageCache::~FileImageCache() = default;

void FileImageCache::setSources(ImageCodec* codec, const QStringList& ownFolders)
{
    m_codec = codec;
    m_ownFolders.clear();
    for (const QString& folder : ownFolders)
        m_ownFolders.append(QDir::cleanPath(folder) + QLatin1Char('/'));
}

QCoro::Task<QImage> FileImageCache::image(QString path, int maximumPixelSize)
{
    const QString key = path + QLatin1Char('#') + QString::number(maximumPixelSize);
    const QImage cached = m_cache.find(key);
    if (!cached.isNull())
        co_return cached;
    const QImage decoded = co_await decode(path, maximumPixelSize);
    if (!decoded.isNull())
        m_cache.insert(key, decoded);
    co_return decoded;
}

QCoro::Task<QImage> FileImageCache::sharedImage(QString path, int maximumPixelSize)
{
    return shared().image(std::move(path), maximumPixelSize);
}

QCoro::Task<QImage> FileImageCache::decode(QString path, int maximumPixelSize)
{
    QImage result;
    if (maximumPixelSize < 1)
        co_return result;
    try {
        if (isOwn(path)) {
            const auto work =
                m_lane.post([path, maximumPixelSize] { return readOwnFile(path, maximumPixelSize); });
            result = co_await work;
        } else if (m_codec != nullptr) {
            result = co_await m_codec->decode(path, maximumPixelSize);
        }
    } catch (const std::exception& error) {
        qCDebug(lcImageCache, "no image: %s", error.what());
    }
    co_return result;
}

bool FileImageCache::isOwn(const QString& path) const
{
    const QString clean = QDir::cleanPath(path);
    return std::any_of(m_ownFolders.begin(), m_ownFolders.end(),
                       [&](const QString& folder) { return clean.startsWith(folder); });
}

} // namespace tessary
