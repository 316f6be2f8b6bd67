#include "recognition/ScreenCaptureGeometry.h"

namespace tessary {

QRectF ScreenCaptureGeometry::sourceRect(const QRectF& globalRect, const QRectF& screenFrame,
                                         const QSizeF& captureSize)
{
    if (screenFrame.width() <= 0 || screenFrame.height() <= 0)
        return {};
    const qreal across = captureSize.width() / screenFrame.width();
    const qreal down = captureSize.height() / screenFrame.height();
    const QPointF local = globalRect.topLeft() - screenFrame.topLeft();
    const QRectF scaled(local.x() * across, local.y() * down, globalRect.width() * across,
                        globalRect.height() * down);
    return scaled.intersected(QRectF(QPointF(), captureSize));
}

} // namespace tessary
