#include "ui/preview/PictureTiles.h"

#include <algorithm>
#include <cmath>

namespace tessary {
namespace {

constexpr int kCoarsest = 16;

int side(int level)
{
    return PictureTiles::kSide << level;
}

} // namespace

const QImage* PictureTiles::tile(const QString& path, const Place& place) const
{
    return m_tiles.object(Key{path, place.level, place.square});
}

void PictureTiles::insert(const QString& path, int level, const QRect& squares, const QImage& image)
{
    for (int row = squares.top(); row <= squares.bottom(); ++row) {
        for (int column = squares.left(); column <= squares.right(); ++column) {
            const QRect cut((column - squares.left()) * kSide, (row - squares.top()) * kSide, kSide, kSide);
            const QRect there = cut.intersected(image.rect());
            if (there.isEmpty())
                continue;
            auto* tile = new QImage(image.copy(there));
            m_tiles.insert(Key{path, level, QPoint(column, row)}, tile, tile->sizeInBytes());
        }
    }
}

int PictureTiles::level(double magnification, const QRectF& part, qsizetype mostPixels)
{
    int level = 0;
    while (level < kCoarsest && magnification * std::exp2(level + 1) <= 1)
        ++level;
    const auto pixels = [&part](int which) {
        const QSize count = squares(which, part).size();
        return qsizetype{count.width()} * count.height() * kSide * kSide;
    };
    while (level < kCoarsest && pixels(level) > mostPixels)
        ++level;
    return level;
}

QRect PictureTiles::squares(int level, const QRectF& part)
{
    constexpr double kHair = 1e-6; // left over from computing
    const double length = side(level);
    const QPoint first(static_cast<int>(std::floor(part.left() / length)),
                       static_cast<int>(std::floor(part.top() / length)));
    const QPoint last(static_cast<int>(std::ceil(part.right() / length - kHair)) - 1,
                      static_cast<int>(std::ceil(part.bottom() / length - kHair)) - 1);
    return {first, QPoint(std::max(first.x(), last.x()), std::max(first.y(), last.y()))};
}

QRect PictureTiles::part(int level, const QRect& squares, const QSize& picture)
{
    const int length = side(level);
    return QRect(squares.left() * length, squares.top() * length, squares.width() * length,
                 squares.height() * length)
        .intersected(QRect(QPoint(), picture));
}

QSize PictureTiles::sizeAt(int level, const QSize& part)
{
    const int divisor = 1 << level;
    return {std::max(1, (part.width() + divisor - 1) / divisor),
            std::max(1, (part.height() + divisor - 1) / divisor)};
}

} // namespace tessary
