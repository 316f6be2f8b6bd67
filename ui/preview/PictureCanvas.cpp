#include "ui/preview/PictureCanvas.h"

#include "ui/kit/AccessibleRole.h"
#include "ui/kit/EmptyState.h"
#include "ui/kit/Theme.h"
#include "ui/preview/PictureTiles.h"
#include "ui/preview/PreviewZoom.h"

#include <QGestureEvent>
#include <QKeyEvent>
#include <QTimerEvent>

#include <algorithm>
#include <cmath>

namespace tessary {
namespace {

constexpr int kThumbnailPixels = 480; // as large as they are made
constexpr int kPixelStep = 128;       // so that a window that is being resized does not load it every time
constexpr int kRestMs = 60;           // of the view, before parts are loaded
constexpr double kNotch = 120;        // of a wheel
constexpr double kNotchDistance = 60; // moved by one
constexpr double kKeyDistance = 40;
constexpr double kNotchFactor = 1.2;
constexpr qsizetype kMostPixels = 16'777'216; // of one request
constexpr qsizetype kBytesPerPixel = 4;

} // namespace

PictureCanvas::PictureCanvas(const Theme& theme, Loader loader, ImagePartLoader partLoader,
                             PictureTiles& tiles, QWidget* parent)
    : AsyncFileImage(loader, parent),
      m_theme(theme),
      m_loader(std::move(loader)),
      m_partLoader(std::move(partLoader)),
      m_tiles(tiles),
      m_missing(new EmptyState(theme, this))
{
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleRole(*this, QAccessible::Graphic);
    setAccessibleName(tr("图片"));
    grabGesture(Qt::PinchGesture);
    m_missing->set(QStringLiteral("exclamationmark.triangle"), tr("无法载入图片"),
                   tr("原始图片可能已被移动或删除"));
    m_missing->hide();
    connect(this, &AsyncFileImage::stateChanged, this, [this](State state) {
        m_missing->setVisible(state == State::Unavailable);
        if (state == State::Shown) {
            takeShape(image());
            m_standIn = {};
        }
        viewChanged();
    });
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
}

void PictureCanvas::setPicture(const QString& path, const QString& thumbnailPath, const QSize& pixelSize)
{
    if (path == this->path())
        return;
    ++m_ticket;
    m_isAsking = false;
    m_lacksParts = false;
    m_pixelSize = pixelSize;
    m_standIn = {};
    m_geometry.setPicture(pixelSize);
    if (!thumbnailPath.isEmpty())
        loadStandIn(thumbnailPath);
    setSource(path, wantedPixels());
}

void PictureCanvas::loadStandIn(const QString& path)
{
    QCoro::connect(loadedOrNothing(m_loader, path, kThumbnailPixels), this,
                   [this, ticket = m_ticket](const QImage& image) {
                       if (ticket != m_ticket || state() == State::Shown || image.isNull())
                           return;
                       m_standIn = image;
                       takeShape(image);
                       update();
                   });
}

/// The image knows which way up the picture is, the header how large it is.
void PictureCanvas::takeShape(const QImage& image)
{
    QSize size = m_pixelSize.isEmpty() ? image.size() : m_pixelSize;
    const bool isWide = image.width() > image.height();
    if (image.width() != image.height() && isWide != (size.width() > size.height()))
        size.transpose();
    m_geometry.setPicture(size);
}

int PictureCanvas::wantedPixels() const
{
    const QSizeF room = QSizeF(size() - QSize(2, 2) * CanvasGeometry::kInset) * devicePixelRatioF();
    const QSizeF natural = m_pixelSize.isEmpty() ? room : QSizeF(m_pixelSize);
    const auto longest = [&room](const QSizeF& picture) {
        const bool isLarger = picture.width() > room.width() || picture.height() > room.height();
        const QSizeF shown = isLarger ? picture.scaled(room, Qt::KeepAspectRatio) : picture;
        return std::max(shown.width(), shown.height());
    };
    const double pixels = std::max(longest(natural), longest(natural.transposed()));
    return std::max(1, static_cast<int>(std::ceil(pixels / kPixelStep))) * kPixelStep;
}

// --- zooming and moving -----------------------------------------------------

void PictureCanvas::setScale(double scale)
{
    zoomTo(scale, QRectF(rect()).center());
}

void PictureCanvas::zoomTo(double scale, const QPointF& fixed)
{
    if (scale == m_geometry.scale())
        return;
    m_geometry.setScale(scale, fixed);
    viewChanged();
    Q_EMIT scaleChanged(scale);
}

void PictureCanvas::moveBy(const QPointF& distance)
{
    m_geometry.moveBy(distance);
    viewChanged();
}

void PictureCanvas::viewChanged()
{
    showCursor();
    update();
    m_rest.start(kRestMs, this);
}

void PictureCanvas::showCursor()
{
    if (m_grip)
        setCursor(Qt::ClosedHandCursor);
    else if (m_geometry.canMove() && state() != State::Unavailable)
        setCursor(Qt::OpenHandCursor);
    else
        unsetCursor();
}

bool PictureCanvas::event(QEvent* event)
{
    if (event->type() == QEvent::Gesture)
        return pinch(*static_cast<QGestureEvent*>(event));
    if (event->type() == QEvent::NativeGesture && pinch(*static_cast<QNativeGestureEvent*>(event)))
        return true;
    return AsyncFileImage::event(event);
}

bool PictureCanvas::pinch(const QGestureEvent& event)
{
    const auto* gesture = static_cast<const QPinchGesture*>(event.gesture(Qt::PinchGesture));
    if (gesture == nullptr)
        return false;
    const QPointF about = mapFromGlobal(gesture->centerPoint());
    zoomTo(PreviewZoom::moved(scale(), gesture->scaleFactor()), about);
    return true;
}

bool PictureCanvas::pinch(const QNativeGestureEvent& event)
{
    if (event.gestureType() != Qt::ZoomNativeGesture)
        return false;
    zoomTo(PreviewZoom::moved(scale(), 1 + event.value()), event.position());
    return true;
}

void PictureCanvas::wheelEvent(QWheelEvent* event)
{
    event->accept();
    const QPointF angle(event->angleDelta());
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        const double notches = angle.y() / kNotch;
        return zoomTo(PreviewZoom::moved(scale(), std::pow(kNotchFactor, notches)), event->position());
    }
    QPointF distance =
        event->hasPixelDelta() ? QPointF(event->pixelDelta()) : angle / kNotch * kNotchDistance;
    if (event->modifiers().testFlag(Qt::ShiftModifier) && distance.x() == 0)
        distance = {distance.y(), 0};
    moveBy(distance);
}

void PictureCanvas::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !m_geometry.canMove())
        return AsyncFileImage::mousePressEvent(event);
    m_grip = event->position();
    showCursor();
}

void PictureCanvas::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_grip)
        return AsyncFileImage::mouseMoveEvent(event);
    moveBy(event->position() - *m_grip);
    m_grip = event->position();
}

void PictureCanvas::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !m_grip)
        return AsyncFileImage::mouseReleaseEvent(event);
    m_grip.reset();
    showCursor();
}

void PictureCanvas::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Left:
        return moveBy({kKeyDistance, 0});
    case Qt::Key_Right:
        return moveBy({-kKeyDistance, 0});
    case Qt::Key_Up:
        return moveBy({0, kKeyDistance});
    case Qt::Key_Down:
        return moveBy({0, -kKeyDistance});
    default:
        AsyncFileImage::keyPressEvent(event);
    }
}

void PictureCanvas::resizeEvent(QResizeEvent* event)
{
    AsyncFileImage::resizeEvent(event);
    m_missing->setGeometry(rect());
    m_geometry.setCanvas(size(), devicePixelRatioF());
    viewChanged();
    if (path().isEmpty() || wantedPixels() <= maximumPixelSize())
        return;
    if (state() == State::Shown)
        m_standIn = image();
    setSource(path(), wantedPixels());
}

// --- sharpening -------------------------------------------------------------

std::optional<PictureCanvas::Wanted> PictureCanvas::needed() const
{
    const QRectF part = m_geometry.visiblePart();
    const double magnification = m_geometry.magnification();
    const double shown = magnification * m_geometry.picture().width();
    const bool isEnough = base().width() >= std::min<double>(shown, m_geometry.picture().width()) - 1;
    if (part.isEmpty() || isEnough)
        return std::nullopt;
    constexpr qsizetype kShare = 4; // of the store: a quarter is left for what lies around
    const qsizetype kept = m_tiles.costLimit() / kBytesPerPixel / kShare * (kShare - 1);
    const int level = PictureTiles::level(magnification, part, std::min(kMostPixels, kept));
    return Wanted{level, PictureTiles::squares(level, part)};
}

std::optional<PictureCanvas::Wanted> PictureCanvas::missing() const
{
    const std::optional<Wanted> all = needed();
    if (!all)
        return std::nullopt;
    QRect squares;
    for (int row = all->squares.top(); row <= all->squares.bottom(); ++row)
        for (int column = all->squares.left(); column <= all->squares.right(); ++column)
            if (m_tiles.tile(path(), {all->level, QPoint(column, row)}) == nullptr)
                squares |= QRect(column, row, 1, 1);
    if (squares.isEmpty())
        return std::nullopt;
    return Wanted{all->level, squares};
}

bool PictureCanvas::isSharp() const
{
    return state() == State::Shown && !missing();
}

void PictureCanvas::askForParts()
{
    if (m_isAsking || m_lacksParts || !m_partLoader || state() != State::Shown || !isVisible())
        return;
    const std::optional<Wanted> wanted = missing();
    if (!wanted)
        return;
    m_isAsking = true;
    const QRect part = PictureTiles::part(wanted->level, wanted->squares, m_geometry.picture());
    const QSize size = PictureTiles::sizeAt(wanted->level, part.size());
    QCoro::connect(partOrNothing(m_partLoader, path(), part, size), this,
                   [this, ticket = m_ticket, wanted = *wanted, size](const QImage& image) {
                       if (ticket != m_ticket)
                           return;
                       m_isAsking = false;
                       m_lacksParts = image.size() != size;
                       m_tiles.insert(path(), wanted.level, wanted.squares, image);
                       update();
                       askForParts(); // the view may have moved on
                   });
}

void PictureCanvas::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_rest.timerId())
        return AsyncFileImage::timerEvent(event);
    m_rest.stop();
    askForParts();
}

} // namespace tessary
