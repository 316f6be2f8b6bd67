#include "ui/quicksearch/TileImages.h"

#include <QPainter>

#include <cmath>

namespace tessary {
namespace {

constexpr qsizetype kLimit = 3'000'000; // bytes
/// Pictures are asked for larger than the tile by so much: what is cropped from an oblong one stays sharp.
constexpr int kOversize = 3;

QPixmap cropped(const QImage& image, int pixels)
{
    const QImage scaled =
        image.scaled(pixels, pixels, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
    const QPoint corner((scaled.width() - pixels) / 2, (scaled.height() - pixels) / 2);
    return QPixmap::fromImage(scaled.copy(QRect(corner, QSize(pixels, pixels))));
}

QPixmap whole(const QImage& image, int pixels)
{
    return QPixmap::fromImage(image.scaled(pixels, pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

} // namespace

TileImages::TileImages(Loader loader, QObject* parent)
    : QObject(parent),
      m_loader(std::move(loader)),
      m_tiles(kLimit)
{
}

QPixmap TileImages::tile(const QString& path, int side, Fit fit, qreal devicePixelRatio)
{
    const int pixels = static_cast<int>(std::lround(side * devicePixelRatio));
    const QString key = QStringLiteral("%1/%2/%3")
                            .arg(QString::number(pixels),
                                 fit == Fit::Fill ? QStringLiteral("fill") : QStringLiteral("whole"), path);
    if (const Tile* tile = m_tiles.object(key))
        return tile->pixmap;
    if (!path.isEmpty() && !m_underWay.contains(key))
        request(key, path, pixels, fit, devicePixelRatio);
    return {};
}

void TileImages::request(const QString& key, const QString& path, int pixels, Fit fit, qreal devicePixelRatio)
{
    m_underWay.insert(key);
    const auto take = [this, key, pixels, fit, devicePixelRatio,
                       generation = m_generation](const QImage& image) {
        if (generation != m_generation)
            return;
        m_underWay.remove(key);
        auto* tile = new Tile;
        if (!image.isNull()) {
            tile->pixmap = fit == Fit::Fill ? cropped(image, pixels) : whole(image, pixels);
            tile->pixmap.setDevicePixelRatio(devicePixelRatio);
        }
        m_tiles.insert(key, tile, 4 * static_cast<qsizetype>(pixels) * pixels);
        Q_EMIT arrived();
    };
    const int wanted = fit == Fit::Fill ? kOversize * pixels : pixels;
    QCoro::connect(loadedOrNothing(m_loader, path, wanted), this, take);
}

void TileImages::clear()
{
    ++m_generation;
    m_underWay.clear();
    m_tiles.clear();
}

} // namespace tessary
