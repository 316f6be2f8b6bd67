#include "ui/kit/AsyncFileImage.h"

#include "ui/kit/Symbol.h"

#include <QPainter>
#include <QStyle>
#include <QTimerEvent>

namespace tessary {
namespace {

constexpr int kPatienceMs = 150;
constexpr int kSpinnerStepMs = 80;
constexpr int kSpinnerSpokes = 12;
constexpr int kSpinnerSize = 16; // logical pixels

} // namespace

AsyncFileImage::AsyncFileImage(Loader loader, QWidget* parent) : QWidget(parent), m_loader(std::move(loader))
{
}

AsyncFileImage::~AsyncFileImage() = default;

void AsyncFileImage::setSource(const QString& path, int maximumPixelSize)
{
    if (path == m_path && maximumPixelSize == m_maximumPixelSize)
        return;
    m_path = path;
    m_maximumPixelSize = maximumPixelSize;
    forget();
    m_image = QImage();
    setState(State::Idle);
    if (isVisible())
        load();
}

void AsyncFileImage::setPlaceholderSystemImage(const QString& name)
{
    m_placeholder = name;
    update();
}

void AsyncFileImage::setPlaceholderColour(const QColor& colour)
{
    m_placeholderColour = colour;
    update();
}

QRect AsyncFileImage::imageRect() const
{
    const QSizeF natural = QSizeF(m_image.size()) / devicePixelRatioF();
    QSizeF fitted = natural;
    if (natural.width() > width() || natural.height() > height())
        fitted.scale(size(), Qt::KeepAspectRatio);
    QRectF rect(QPointF(), fitted);
    rect.moveCenter(QRectF(this->rect()).center());
    return rect.toRect();
}

QSize AsyncFileImage::sizeHint() const
{
    constexpr int kTile = 40;
    return m_image.isNull() ? QSize(kTile, kTile) : (QSizeF(m_image.size()) / devicePixelRatioF()).toSize();
}

void AsyncFileImage::load()
{
    if (m_path.isEmpty() || !m_loader) {
        setState(State::Unavailable);
        return;
    }
    const quint64 ticket = ++m_ticket;
    setState(State::Loading);
    m_patience.start(kPatienceMs, this);
    QCoro::connect(loadedOrNothing(m_loader, m_path, m_maximumPixelSize), this,
                   [this, ticket](const QImage& image) {
                       if (ticket == m_ticket)
                           take(image);
                   });
}

void AsyncFileImage::forget()
{
    ++m_ticket;
    m_patience.stop();
    m_spinner.stop();
}

void AsyncFileImage::take(const QImage& image)
{
    forget();
    m_image = image;
    updateGeometry();
    setState(image.isNull() ? State::Unavailable : State::Shown);
}

void AsyncFileImage::setState(State state)
{
    update();
    if (std::exchange(m_state, state) != state)
        Q_EMIT stateChanged(state);
}

void AsyncFileImage::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    // What could not be had is tried again.
    if (m_state == State::Idle || m_state == State::Unavailable)
        load();
}

void AsyncFileImage::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    if (m_state != State::Loading)
        return;
    forget();
    setState(State::Idle);
}

void AsyncFileImage::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_patience.timerId()) {
        m_patience.stop();
        m_spinner.start(kSpinnerStepMs, this);
    } else if (event->timerId() == m_spinner.timerId()) {
        m_spinnerStep = m_isAnimated ? (m_spinnerStep + 1) % kSpinnerSpokes : 0;
    } else {
        QWidget::timerEvent(event);
        return;
    }
    update();
}

void AsyncFileImage::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    if (m_state == State::Shown)
        painter.drawImage(imageRect(), m_image);
    else if (m_state == State::Unavailable)
        paintPlaceholder(painter);
    else if (isProgressVisible())
        paintProgress(painter);
}

void AsyncFileImage::paintPlaceholder(QPainter& painter) const
{
    constexpr int kLargest = 32;
    const int side = std::min({kLargest, width() / 2, height() / 2});
    const QColor colour =
        m_placeholderColour.isValid() ? m_placeholderColour : palette().color(QPalette::PlaceholderText);
    const QPixmap pixmap = Symbol(m_placeholder).pixmap(side, colour, devicePixelRatioF());
    if (!pixmap.isNull())
        painter.drawPixmap(QPointF(width() - side, height() - side) / 2, pixmap);
}

void AsyncFileImage::paintProgress(QPainter& painter) const
{
    const qreal radius = std::min({kSpinnerSize, width(), height()}) / 2.0;
    QColor colour = palette().color(QPalette::PlaceholderText);
    painter.translate(QRectF(rect()).center());
    painter.rotate(360.0 * m_spinnerStep / kSpinnerSpokes);
    for (int spoke = 0; spoke < kSpinnerSpokes; ++spoke) {
        colour.setAlphaF(static_cast<float>(spoke + 1) / kSpinnerSpokes);
        painter.setPen(QPen(colour, radius / 5, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(0, -radius * 0.5), QPointF(0, -radius * 0.9));
        painter.rotate(360.0 / kSpinnerSpokes);
    }
}

} // namespace tessary
