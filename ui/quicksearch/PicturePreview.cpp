#include "ui/quicksearch/PicturePreview.h"

#include "ui/kit/AccessibleRole.h"
#include "ui/kit/EmptyState.h"
#include "ui/kit/Theme.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace tessary {
namespace {

constexpr int kPadding = 20;
constexpr int kThumbnailPixels = 480; // as large as they are made
constexpr int kPixelStep = 128;       // so that a window that is being resized does not load it every time

QSizeF fitted(const QSizeF& size, const QSizeF& room)
{
    const bool isLarger = size.width() > room.width() || size.height() > room.height();
    return isLarger ? size.scaled(room, Qt::KeepAspectRatio) : size;
}

} // namespace

PicturePreview::PicturePreview(const Theme& theme, Loader loader, QWidget* parent)
    : AsyncFileImage(loader, parent),
      m_theme(theme),
      m_loader(std::move(loader)),
      m_missing(new EmptyState(theme, this))
{
    setAccessibleRole(*this, QAccessible::Graphic);
    setAccessibleName(tr("预览"));
    m_missing->set(QStringLiteral("exclamationmark.triangle"), tr("无法载入图片"),
                   tr("原始图片可能已被移动或删除"));
    m_missing->hide();
    connect(this, &AsyncFileImage::stateChanged, this, [this](State state) {
        m_missing->setVisible(state == State::Unavailable && !path().isEmpty());
        if (state == State::Shown)
            m_standIn = {};
    });
    connect(&theme, &Theme::changed, this, &PicturePreview::applyTheme);
    applyTheme();
}

void PicturePreview::applyTheme()
{
    setPlaceholderColour(m_theme.colours().secondaryText);
    setAnimated(m_theme.duration(Theme::kFade).count() > 0);
    update();
}

void PicturePreview::setPicture(const QString& path, const QString& thumbnailPath, const QSize& pixelSize)
{
    m_pixelSize = pixelSize;
    if (path == this->path())
        return; // one that could not be had is tried again when the panel is shown again
    clear();
    if (!thumbnailPath.isEmpty())
        loadStandIn(thumbnailPath);
    setSource(path, wantedPixels());
}

void PicturePreview::clear()
{
    ++m_ticket;
    m_standIn = {};
    setSource({}, 0);
    m_missing->hide();
}

void PicturePreview::loadStandIn(const QString& path)
{
    QCoro::connect(loadedOrNothing(m_loader, path, kThumbnailPixels), this,
                   [this, ticket = m_ticket](const QImage& image) {
                       if (ticket != m_ticket || state() == State::Shown)
                           return;
                       m_standIn = image;
                       update();
                   });
}

QSize PicturePreview::room() const
{
    return size() - QSize(2 * kPadding, 2 * kPadding);
}

int PicturePreview::wantedPixels() const
{
    const QSizeF pixels = QSizeF(room()) * devicePixelRatioF();
    const QSizeF natural = m_pixelSize.isEmpty() ? pixels : QSizeF(m_pixelSize);
    const QSizeF upright = fitted(natural, pixels);
    const QSizeF turned = fitted(natural.transposed(), pixels);
    const double longest = std::max({upright.width(), upright.height(), turned.width(), turned.height()});
    const int steps = static_cast<int>(std::ceil(longest / kPixelStep));
    return std::max(1, steps) * kPixelStep;
}

QRect PicturePreview::pictureRect(const QImage& image) const
{
    QSizeF natural = m_pixelSize.isEmpty() ? QSizeF(image.size()) : QSizeF(m_pixelSize);
    const bool isWide = image.width() > image.height();
    if (image.width() != image.height() && isWide != (natural.width() > natural.height()))
        natural.transpose();
    QRectF place(QPointF(), fitted(natural / devicePixelRatioF(), room()).expandedTo(QSizeF(1, 1)));
    place.moveCenter(QRectF(rect()).center());
    return place.toRect();
}

void PicturePreview::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    if (state() == State::Shown)
        paintPicture(painter, image());
    else if (!m_standIn.isNull() && state() == State::Loading)
        paintPicture(painter, m_standIn);
    else if (isProgressVisible())
        paintProgress(painter);
}

void PicturePreview::paintPicture(QPainter& painter, const QImage& image) const
{
    const QRect place = pictureRect(image);
    painter.setPen(Qt::NoPen);
    for (int reach = 4; reach >= 1; --reach) { // a soft shadow of two pixels down
        painter.setBrush(QColor(0, 0, 0, 6));
        painter.drawRoundedRect(place.adjusted(-reach, 2 - reach, reach, 2 + reach),
                                Theme::kControlRadius + reach, Theme::kControlRadius + reach);
    }
    const double radius =
        std::min<double>(Theme::kControlRadius, std::min(place.width(), place.height()) / 2.0);
    QPainterPath shape;
    shape.addRoundedRect(place, radius, radius);
    painter.setClipPath(shape);
    painter.fillRect(place, m_theme.colours().mat); // seen through transparent pictures
    painter.drawImage(place, image);
    painter.setClipping(false);
    painter.setPen(m_theme.colours().hairline);
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(place).adjusted(-0.5, -0.5, 0.5, 0.5), radius, radius);
}

void PicturePreview::resizeEvent(QResizeEvent* event)
{
    AsyncFileImage::resizeEvent(event);
    m_missing->setGeometry(rect());
    if (path().isEmpty() || wantedPixels() <= maximumPixelSize())
        return;
    if (state() == State::Shown)
        m_standIn = image();
    setSource(path(), wantedPixels());
}

} // namespace tessary
