#pragma once

#include <QImage>
#include <QRect>
#include <QString>

#include <qcoro/qcorotask.h>

#include <functional>

namespace tessary {

/// Brings a file's picture, its longer side at most that many pixels; a null image when it cannot be had.
using ImageLoader = std::function<QCoro::Task<QImage>(QString path, int maximumPixelSize)>;

/// Brings a part of a file's picture, scaled to that size, which is no larger than the part. Throws
/// ImageError.
/// @param part pixels of the upright picture.
using ImagePartLoader = std::function<QCoro::Task<QImage>(QString path, QRect part, QSize size)>;

/// What the loader brings; its error is as good as no image.
[[nodiscard]] QCoro::Task<QImage> loadedOrNothing(ImageLoader loader, QString path, int maximumPixelSize);
/// The same for a part.
[[nodiscard]] QCoro::Task<QImage> partOrNothing(ImagePartLoader loader, QString path, QRect part, QSize size);

} // namespace tessary
