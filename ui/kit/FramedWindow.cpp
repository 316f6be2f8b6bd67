#include "ui/kit/FramedWindow.h"

#include "ui/kit/AccessibleRole.h"
#include "ui/kit/RoundedMask.h"
#include "ui/kit/Theme.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QWindow>

namespace tessary {
namespace {

constexpr int kEdge = 6;    // how far inside an edge the pointer takes hold of it
constexpr int kCorner = 16; // so near to two of them it takes both; a round corner leaves little else

/// The line around a window that has no shadow; above everything and touched by nothing.
class WindowEdge : public QWidget {
public:
    WindowEdge(const Theme& theme, int radius, QWidget* parent)
        : QWidget(parent),
          m_theme(theme),
          m_radius(radius)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setAttribute(Qt::WA_NoSystemBackground);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(m_theme.colours().solidEdge);
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), m_radius - 0.5,
                                m_radius - 0.5);
    }

private:
    const Theme& m_theme;
    int m_radius;
};

} // namespace

FramedWindow::FramedWindow(const Theme& theme, int radius, Qt::WindowFlags flags)
    : QWidget(nullptr, flags | Qt::FramelessWindowHint),
      m_theme(theme),
      m_radius(radius),
      m_body(new QWidget(this)),
      m_edge(new WindowEdge(theme, radius, this))
{
    setAccessibleRole(*this, QAccessible::Window);
    setPalette(theme.palette());
    connect(&theme, &Theme::changed, this, [this] {
        setPalette(m_theme.palette());
        update();
    });
}

void FramedWindow::setComposited(bool isComposited)
{
    if (m_isComposited == isComposited)
        return;
    const QSize size = m_body->size();
    const QPoint place = bodyGeometry().topLeft();
    m_isComposited = isComposited;
    if (windowHandle() != nullptr)
        destroy();
    setAttribute(Qt::WA_TranslucentBackground, isComposited);
    setAttribute(Qt::WA_NoSystemBackground, isComposited);
    if (m_sizes)
        setBodySizes(size, m_sizes->smallest, m_sizes->largest);
    else
        setFixedBodySize(size);
    moveBody(place);
}

void FramedWindow::setBodySizes(const QSize& size, const QSize& smallest, const QSize& largest)
{
    m_sizes = Sizes{smallest, largest};
    setAttribute(Qt::WA_Hover);
    const QSize around(2 * margin(), 2 * margin());
    m_body->resize(size);
    setMinimumSize(smallest + around);
    setMaximumSize(largest + around);
    resize(size + around);
    layOut();
}

Qt::Edges FramedWindow::edgesAt(const QPoint& position) const
{
    const QRect body = m_body->geometry();
    if (!m_sizes || !body.contains(position))
        return {};
    const auto within = [&](int reach) {
        Qt::Edges edges;
        edges.setFlag(Qt::LeftEdge, position.x() - body.left() < reach);
        edges.setFlag(Qt::RightEdge, body.right() - position.x() < reach);
        edges.setFlag(Qt::TopEdge, position.y() - body.top() < reach);
        edges.setFlag(Qt::BottomEdge, body.bottom() - position.y() < reach);
        return edges;
    };
    const Qt::Edges near = within(kCorner);
    const bool isCorner =
        near.testAnyFlags(Qt::LeftEdge | Qt::RightEdge) && near.testAnyFlags(Qt::TopEdge | Qt::BottomEdge);
    return isCorner ? near : within(kEdge);
}

void FramedWindow::showEdgeCursor(const QPoint& position)
{
    const Qt::Edges edges = edgesAt(position);
    if (!edges)
        return unsetCursor();
    const bool sideways = edges.testAnyFlags(Qt::LeftEdge | Qt::RightEdge);
    const bool upright = edges.testAnyFlags(Qt::TopEdge | Qt::BottomEdge);
    if (!sideways || !upright)
        return setCursor(sideways ? Qt::SizeHorCursor : Qt::SizeVerCursor);
    const bool falling = edges.testFlag(Qt::LeftEdge) == edges.testFlag(Qt::TopEdge);
    setCursor(falling ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor);
}

void FramedWindow::setFixedBodySize(const QSize& size)
{
    m_body->resize(size);
    setFixedSize(size + QSize(2 * margin(), 2 * margin()));
    layOut();
}

void FramedWindow::moveBody(const QPoint& topLeft)
{
    move(topLeft - QPoint(margin(), margin()));
}

void FramedWindow::layOut()
{
    m_body->setGeometry(rect().adjusted(margin(), margin(), -margin(), -margin()));
    m_edge->setGeometry(rect());
    m_edge->setVisible(!m_isComposited);
    m_edge->raise();
    if (m_isComposited)
        clearMask();
    else
        setMask(roundedMask(size(), m_radius));
}

void FramedWindow::resizeEvent(QResizeEvent*)
{
    layOut();
}

void FramedWindow::showEvent(QShowEvent*)
{
    Q_EMIT bodyPlaced(m_body->geometry());
}

void FramedWindow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRect body = m_body->geometry();
    if (!m_isComposited) {
        painter.fillRect(body, m_theme.colours().window);
        return;
    }
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(rect(), Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    m_shadow.paint(painter, body, m_radius, m_theme.colours(), devicePixelRatioF());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_theme.colours().edge);
    painter.drawRoundedRect(QRectF(body).adjusted(-1, -1, 1, 1), m_radius + 1, m_radius + 1);
    painter.setBrush(m_theme.colours().window);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.drawRoundedRect(body, m_radius, m_radius);
}

void FramedWindow::mousePressEvent(QMouseEvent* event)
{
    const Qt::Edges edges = event->button() == Qt::LeftButton ? edgesAt(event->pos()) : Qt::Edges();
    if (edges && windowHandle() != nullptr) {
        m_isMoving = windowHandle()->startSystemResize(edges);
        return;
    }
    m_grip = event->button() == Qt::LeftButton ? std::optional(event->pos()) : std::nullopt;
}

/// A mere click moves nothing: the window manager takes the keyboard while it moves a window.
void FramedWindow::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_grip || (event->pos() - *m_grip).manhattanLength() < QApplication::startDragDistance())
        return;
    m_grip.reset();
    m_isMoving = windowHandle() != nullptr && windowHandle()->startSystemMove();
}

/// Some window managers take the keyboard while they move, and give it back; all give the pointer back.
bool FramedWindow::event(QEvent* event)
{
    if (event->type() == QEvent::WindowActivate || event->type() == QEvent::Enter)
        m_isMoving = false;
    if (m_sizes && (event->type() == QEvent::HoverMove || event->type() == QEvent::HoverEnter))
        showEdgeCursor(static_cast<QHoverEvent*>(event)->position().toPoint());
    return QWidget::event(event);
}

} // namespace tessary
