#include "capture/ItemPictures.h"

#include "base/AtomicFile.h"
#include "store/ScreenshotRecord.h"

#include <QBuffer>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcPictures, "tessary.import.pictures")

namespace tessary {
namespace {

constexpr int kThumbnailSize = 480; // pixels, the longer side
constexpr double kThumbnailQuality = 0.78;
constexpr int kIconSize = 128; // pixels

QByteArray pngOf(const QImage& image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    return image.save(&buffer, "PNG") ? bytes : QByteArray();
}

} // namespace

ItemPictures::ItemPictures(AppPaths paths, ImageCodec& imageCodec, ApplicationIcons& icons)
    : m_paths(std::move(paths)),
      m_imageCodec(imageCodec),
      m_icons(icons),
      m_journal(m_paths),
      m_lane(QStringLiteral("tessary.import.pictures"))
{
}

QCoro::Task<QSize> ItemPictures::pixelSize(QString path, QString nominalPath)
{
    try {
        co_return co_await m_imageCodec.pixelSize(path);
    } catch (const ImageError& error) {
        if (error.which() == ImageError::Case::NotAnImage)
            throw FileError(FileError::Case::ReadCorruptFile, nominalPath);
        // A picture that is too much for the decoder is still the person's picture.
        qCWarning(lcPictures, "the size of a picture could not be read: %s", error.what());
    }
    co_return QSize(0, 0);
}

QCoro::Task<std::optional<QString>> ItemPictures::createThumbnail(QString source, QUuid id)
{
    const QString destination =
        m_paths.thumbnails + QLatin1Char('/') + identifierText(id) + QStringLiteral(".jpg");
    try {
        co_await m_imageCodec.writeThumbnail(source, destination, kThumbnailSize, kThumbnailQuality);
    } catch (const ImageError& error) {
        qCWarning(lcPictures, "no thumbnail: %s", error.what());
        co_return std::nullopt;
    }
    co_return destination;
}

QCoro::Task<std::optional<QString>>
ItemPictures::saveAppIcon(std::optional<SourceApplicationSnapshot> application, QUuid id)
{
    if (!application || !application->bundleURL)
        co_return std::nullopt;
    const QImage icon = co_await m_icons.icon(*application->bundleURL, kIconSize);
    if (icon.isNull())
        co_return std::nullopt;
    const QString path = m_paths.appIcons + QLatin1Char('/') + identifierText(id) + QStringLiteral(".png");
    auto saving = m_lane.post([this, icon, path, id]() -> std::optional<QString> {
        const QByteArray png = pngOf(icon);
        if (png.isEmpty())
            return std::nullopt;
        try {
            m_journal.begin(id);
            writeFileAtomically(path, png, Durability::Process);
        } catch (const FileError&) {
            return std::nullopt; // an item without an icon is better than none
        }
        return path;
    });
    co_return co_await saving;
}

} // namespace tessary
