#pragma once

#include "ui/kit/ImageLoader.h"

#include <QCache>
#include <QImage>
#include <QObject>
#include <QPixmap>

namespace tessary {

/// The small pictures in the rows: asked for while painting, brought later. Keeps what was drawn lately.
class TileImages : public QObject {
    Q_OBJECT
public:
    using Loader = ImageLoader;
    enum class Fit { Fill, Whole };

    explicit TileImages(Loader loader, QObject* parent = nullptr);

    /// The file's picture at that size, cropped to fill a square or whole; null while it is on its way and
    /// when it cannot be had. @param side logical pixels.
    [[nodiscard]] QPixmap tile(const QString& path, int side, Fit fit, qreal devicePixelRatio);
    /// Forgets everything, also what could not be had.
    void clear();

Q_SIGNALS:
    /// One more can be drawn.
    void arrived();

private:
    struct Tile {
        QPixmap pixmap; ///< Null when the file has none.
    };

    void request(const QString& key, const QString& path, int pixels, Fit fit, qreal devicePixelRatio);

    Loader m_loader;
    QCache<QString, Tile> m_tiles; // cost in bytes
    QSet<QString> m_underWay;
    quint64 m_generation = 0; // answers to requests from before a clear are dropped
};

} // namespace tessary
