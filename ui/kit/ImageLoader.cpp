#include "ui/kit/ImageLoader.h"

namespace tessary {

QCoro::Task<QImage> loadedOrNothing(ImageLoader loader, QString path, int maximumPixelSize)
{
    QImage image;
    try {
        image = co_await loader(path, maximumPixelSize);
    } catch (const std::exception&) {
        image = QImage();
    }
    co_return image;
}

QCoro::Task<QImage> partOrNothing(ImagePartLoader loader, QString path, QRect part, QSize size)
{
    QImage image;
    try {
        image = co_await loader(path, part, size);
    } catch (const std::exception&) {
        image = QImage();
    }
    co_return image;
}

} // namespace tessary
