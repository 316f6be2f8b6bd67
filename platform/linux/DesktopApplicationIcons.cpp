#include "platform/linux/DesktopApplicationIcons.h"

#include "platform/linux/DesktopEntry.h"
#include "platform/linux/KeyFile.h"
#include "platform/linux/XdgFolders.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>

namespace tessary {
namespace {

constexpr qint64 kMaximumBytes = 16 * 1024 * 1024;
constexpr qint64 kMaximumPixels = 16 * 1024 * 1024;
constexpr int kMaximumPixelSize = 1024;

QStringList subfolders(const QStringList& folders, const QString& name)
{
    QStringList result;
    for (const QString& folder : folders)
        result.append(folder + u'/' + name);
    return result;
}

QStringList iconFolders(const QStringList& dataFolders)
{
    QStringList folders = subfolders(dataFolders, QStringLiteral("icons"));
    const QString home = XdgFolders().home();
    if (!home.isEmpty())
        folders.prepend(home + QStringLiteral("/.icons"));
    return folders;
}

/// The picture in at most that size; a vector picture is drawn in exactly it.
QImage readPicture(const QString& path, int pixelSize)
{
    std::optional<QByteArray> bytes = readRegularFile(path, kMaximumBytes);
    if (!bytes)
        return {};
    QBuffer buffer(&*bytes);
    if (!buffer.open(QIODevice::ReadOnly))
        return {};
    QImageReader reader(&buffer);
    const QSize size = reader.size();
    if (size.isEmpty() || qint64{size.width()} * size.height() > kMaximumPixels)
        return {};
    const QByteArray format = reader.format();
    if (format == "svg" || format == "svgz")
        reader.setScaledSize(size.scaled(pixelSize, pixelSize, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    return reader.read();
}

QImage drawnIntoSquare(const QImage& picture, int pixelSize)
{
    if (picture.isNull())
        return {};
    const QSize size =
        picture.size().scaled(pixelSize, pixelSize, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    // Averages all pixels, which drawing with a transformation does not when it shrinks by much.
    const QImage scaled = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied)
                              .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QImage square(pixelSize, pixelSize, QImage::Format_ARGB32_Premultiplied);
    square.fill(Qt::transparent);
    QPainter painter(&square);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage((pixelSize - size.width()) / 2, (pixelSize - size.height()) / 2, scaled);
    return square;
}

} // namespace

DesktopApplicationIcons::DesktopApplicationIcons(const QStringList& dataFolders, const QString& themeName)
    : m_theme(iconFolders(dataFolders), subfolders(dataFolders, QStringLiteral("pixmaps")), themeName),
      m_lane(QStringLiteral("tessary-icons"))
{
}

QCoro::Task<QImage> DesktopApplicationIcons::icon(QUrl bundleURL, int pixelSize)
{
    if (!bundleURL.isLocalFile() || pixelSize <= 0 || pixelSize > kMaximumPixelSize)
        co_return QImage();
    const QString path = bundleURL.toLocalFile();
    std::function<QImage()> work = [this, path, pixelSize] { return iconNow(path, pixelSize); };
    QImage image = co_await m_lane.post(std::move(work));
    co_return image;
}

QImage DesktopApplicationIcons::iconNow(const QString& desktopFile, int pixelSize)
{
    const std::optional<DesktopEntry> entry = readDesktopEntry(desktopFile, messagesLocale());
    const QString file = entry ? m_theme.find(entry->icon, pixelSize) : QString();
    if (file.isEmpty())
        return {};
    return drawnIntoSquare(readPicture(file, pixelSize), pixelSize);
}

} // namespace tessary
