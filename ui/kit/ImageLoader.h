#pragma once

#include <QImage>
#include <QString>

#include <qcoro/qcorotask.h>

#include <functional>

namespace tessary {

/// Brings a file's picture, its longer side at most that many pixels; a null image when it cannot be had.
using ImageLoader = std::function<QCoro::Task<QImage>(QString path, int maximumPixelSize)>;

/// What the loader brings; its error is as good as no image.
[[nodiscard]] QCoro::Task<QImage> loadedOrNothing(ImageLoader loader, QString path, int maximumPixelSize);

} // namespace tessary
