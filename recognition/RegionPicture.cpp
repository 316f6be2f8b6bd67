#include "recognition/RegionPicture.h"

#include "ui/kit/AccessibleRole.h"
#include "ui/kit/Theme.h"

#include <QPainter>
#include <QPainterPath>

#include <qcoro/qcorotask.h>

#include <cmath>

namespace tessary {
namespace {

constexpr int kPadding = 12;

QCoro::Task<QImage> scaledOn(SerialLane* lane, QImage image, QSize pixels)
{
    auto work = lane->post([image = std::move(image), pixels] {
        return image.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    });
    co_return co_await work;
}

} // namespace

RegionPicture::RegionPicture(const Theme& theme, QImage image, QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_image(std::move(image)),
      m_lane(QStringLiteral("region-picture"))
{
    setAccessibleName(tr("识别区域"));
    setAccessibleRole(*this, QAccessible::Graphic);
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
}

QRect RegionPicture::pictureGeometry() const
{
    if (m_image.isNull())
        return {};
    const QSizeF room(width() - 2 * kPadding, height() - 2 * kPadding);
    QSizeF size = QSizeF(m_image.size()) / m_image.devicePixelRatio();
    if (size.width() > room.width() || size.height() > room.height())
        size.scale(room, Qt::KeepAspectRatio);
    const QSize whole(std::max(1, static_cast<int>(std::round(size.width()))),
                      std::max(1, static_cast<int>(std::round(size.height()))));
    return {QPoint((width() - whole.width()) / 2, (height() - whole.height()) / 2), whole};
}

QSize RegionPicture::wantedPixels() const
{
    const QSize pixels = (QSizeF(pictureGeometry().size()) * devicePixelRatioF()).toSize();
    return pixels.width() < m_image.width() ? pixels : m_image.size();
}

void RegionPicture::resizeEvent(QResizeEvent*)
{
    scale();
}

void RegionPicture::scale()
{
    const QSize pixels = wantedPixels();
    if (m_image.isNull() || pixels.isEmpty() || pixels == m_scaled.size())
        return;
    const quint64 ticket = ++m_ticket;
    if (pixels == m_image.size()) {
        m_scaled = m_image;
        return;
    }
    m_scaled = {};
    QCoro::connect(scaledOn(&m_lane, m_image, pixels), this, [this, ticket](const QImage& scaled) {
        if (ticket != m_ticket)
            return; // the window has been resized since
        m_scaled = scaled;
        update();
    });
}

void RegionPicture::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_theme.colours().mat);
    painter.drawRoundedRect(rect(), Theme::kCardRadius, Theme::kCardRadius);
    const QRect area = pictureGeometry();
    if (area.isEmpty())
        return;
    QPainterPath corners;
    const int radius = std::min({Theme::kControlRadius, area.width() / 2, area.height() / 2});
    corners.addRoundedRect(area, radius, radius);
    painter.save();
    painter.setClipPath(corners);
    painter.drawImage(area, m_scaled.isNull() ? m_image : m_scaled);
    painter.restore();
    painter.setPen(m_theme.colours().pictureLine);
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(area).adjusted(-0.5, -0.5, 0.5, 0.5), radius, radius);
}

} // namespace tessary
