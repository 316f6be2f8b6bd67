#pragma once

#include <QCache>
#include <QImage>
#include <QRect>
#include <QString>

namespace tessary {

/// Sharp parts of large pictures, in squares, of whatever lately was looked at: one bounded store for all
/// windows. Main thread only.
///
/// At level n a picture is smaller by 2^n each way; squares are counted from its upper left corner.
class PictureTiles {
public:
    static constexpr int kSide = 512;                   ///< Pixels of the level.
    static constexpr qsizetype kCostLimit = 67'108'864; ///< Bytes.

    struct Place {
        int level = 0;
        QPoint square; ///< Column and row.
        friend bool operator==(const Place&, const Place&) = default;
    };

    PictureTiles() : PictureTiles(kCostLimit) {}
    explicit PictureTiles(qsizetype costLimit) : m_tiles(costLimit) {}

    /// Null when it is not there.
    [[nodiscard]] const QImage* tile(const QString& path, const Place& place) const;
    /// Cuts what was loaded of a level into its squares. @param squares which ones it covers.
    void insert(const QString& path, int level, const QRect& squares, const QImage& image);
    void clear() { m_tiles.clear(); }
    [[nodiscard]] qsizetype costLimit() const { return m_tiles.maxCost(); }
    [[nodiscard]] qsizetype cost() const { return m_tiles.totalCost(); }

    /// The level at which a picture, drawn with that many device pixels for each of its own, loses nothing,
    /// or the finest whose squares for that part fit into `mostPixels`.
    [[nodiscard]] static int level(double magnification, const QRectF& part, qsizetype mostPixels);
    /// The squares that cover that part of the picture, in its own pixels.
    [[nodiscard]] static QRect squares(int level, const QRectF& part);
    /// What the squares cover of a picture of that size, in its own pixels.
    [[nodiscard]] static QRect part(int level, const QRect& squares, const QSize& picture);
    /// How large that part is at the level.
    [[nodiscard]] static QSize sizeAt(int level, const QSize& part);

private:
    struct Key {
        QString path;
        int level;
        QPoint square;
        friend bool operator==(const Key&, const Key&) = default;
        friend size_t qHash(const Key& key, size_t seed) noexcept
        {
            return qHashMulti(seed, key.path, key.level, key.square.x(), key.square.y());
        }
    };

    QCache<Key, QImage> m_tiles; // cost in bytes
};

} // namespace tessary
