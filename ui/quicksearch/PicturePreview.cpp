#include "ui/quicksearch/PicturePreview.h"

#include "ui/kit/EmptyState.h"
#include "ui/kit/Spinner.h"
#include "ui/kit/Theme.h"

#include <QPainter>
#include <QPainterPath>
#include <QTimerEvent>

#include <cmath>

namespace tessary {
namespace {

constexpr int kPadding = 20;
constexpr int kThumbnailPixels = 480; // as large as they are made
constexpr int kPatience = 150;        // milliseconds until something is seen to go on

QCoro::Task<QImage> loadedOrNothing(PicturePreview::Loader loader, QString path, int maximumPixelSize)
{
    try {
        co_return co_await loader(path, maximumPixelSize);
    } catch (const std::exception&) {
        co_return QImage(); // told as missing
    }
}

} // namespace

PicturePreview::PicturePreview(const Theme& theme, Loader loader, QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_loader(std::move(loader)),
      m_missing(new EmptyState(theme, this)),
      m_spinner(new Spinner(theme, this))
{
    m_missing->set(QStringLiteral("exclamationmark.triangle"), tr("无法载入图片"),
                   tr("原始图片可能已被移动或删除"));
    m_missing->hide();
    m_spinner->hide();
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
}

void PicturePreview::show(const QString& path, const QString& thumbnailPath, const QSize& pixelSize)
{
    if (m_path == path && (m_isSharp || m_patience.isActive()))
        return;
    clear();
    m_path = path;
    m_pixelSize = pixelSize;
    m_patience.start(kPatience, this);
    if (!thumbnailPath.isEmpty())
        load(thumbnailPath, true);
    load(path, false);
}

void PicturePreview::clear()
{
    ++m_ticket;
    m_patience.stop();
    m_path.clear();
    m_image = {};
    m_isSharp = false;
    m_missing->hide();
    m_spinner->hide();
    update();
}

void PicturePreview::load(const QString& path, bool isThumbnail)
{
    const auto take = [this, ticket = m_ticket, isThumbnail](const QImage& image) {
        if (ticket != m_ticket)
            return;
        if (isThumbnail)
            takeThumbnail(image);
        else
            takePicture(image);
    };
    QCoro::connect(loadedOrNothing(m_loader, path, isThumbnail ? kThumbnailPixels : wantedPixels()), this,
                   take);
}

void PicturePreview::takeThumbnail(const QImage& image)
{
    if (m_isSharp || image.isNull() || m_missing->isVisibleTo(this))
        return;
    m_image = image;
    update();
}

void PicturePreview::takePicture(const QImage& image)
{
    m_patience.stop();
    m_spinner->hide();
    m_image = image;
    m_isSharp = !image.isNull();
    m_missing->setVisible(image.isNull());
    update();
}

int PicturePreview::wantedPixels() const
{
    const QSize room = size() - QSize(2 * kPadding, 2 * kPadding);
    const QSizeF pixels = QSizeF(room) * devicePixelRatioF();
    // The longer side is limited; one that is fitted to the shorter side of the room is smaller still.
    QSizeF fitted = m_pixelSize.isEmpty() ? pixels : QSizeF(m_pixelSize);
    if (fitted.width() > pixels.width() || fitted.height() > pixels.height())
        fitted.scale(pixels, Qt::KeepAspectRatio);
    // What the header says may be lying on its side.
    QSizeF turned = m_pixelSize.isEmpty() ? pixels : QSizeF(m_pixelSize.transposed());
    if (turned.width() > pixels.width() || turned.height() > pixels.height())
        turned.scale(pixels, Qt::KeepAspectRatio);
    const double longest =
        std::max(std::max(fitted.width(), fitted.height()), std::max(turned.width(), turned.height()));
    return std::max(1, static_cast<int>(std::ceil(longest)));
}

QRect PicturePreview::pictureRect() const
{
    QSizeF natural = m_pixelSize.isEmpty() ? QSizeF(m_image.size()) : QSizeF(m_pixelSize);
    const bool isTurned = (m_image.width() > m_image.height()) != (natural.width() > natural.height()) &&
                          m_image.width() != m_image.height();
    if (isTurned)
        natural.transpose();
    QSizeF fitted = natural / devicePixelRatioF();
    const QSizeF room = size() - QSize(2 * kPadding, 2 * kPadding);
    if (fitted.width() > room.width() || fitted.height() > room.height())
        fitted.scale(room, Qt::KeepAspectRatio);
    fitted = fitted.expandedTo(QSizeF(1, 1));
    QRectF place(QPointF(), fitted);
    place.moveCenter(QRectF(rect()).center());
    return place.toRect();
}

void PicturePreview::paintEvent(QPaintEvent*)
{
    if (m_image.isNull())
        return;
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const QRect place = pictureRect();
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
    painter.drawImage(place, m_image);
    painter.setClipping(false);
    painter.setPen(m_theme.colours().hairline);
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(place).adjusted(-0.5, -0.5, 0.5, 0.5), radius, radius);
}

void PicturePreview::resizeEvent(QResizeEvent*)
{
    m_missing->setGeometry(rect());
    m_spinner->move((width() - m_spinner->width()) / 2, (height() - m_spinner->height()) / 2);
}

void PicturePreview::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_patience.timerId())
        return;
    m_patience.stop();
    m_spinner->setVisible(m_image.isNull());
}

} // namespace tessary
