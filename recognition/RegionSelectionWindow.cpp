#include "recognition/RegionSelectionWindow.h"

#include "recognition/RegionSelectionView.h"
#include "ui/kit/AccessibleRole.h"

#include <QKeyEvent>
#include <QScreen>

namespace tessary {

RegionSelectionWindow::RegionSelectionWindow(const Theme& theme, QScreen& screen, const QImage& picture)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                           Qt::BypassWindowManagerHint | Qt::NoDropShadowWindowHint),
      m_view(new RegionSelectionView(theme, picture, this))
{
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAccessibleRole(*this, QAccessible::Window);
    setCursor(Qt::CrossCursor);
    setWindowTitle(QStringLiteral("Tessary Region"));
    setScreen(&screen);
    setGeometry(screen.geometry());
}

void RegionSelectionWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        m_view->onCancel();
    event->accept();
}

void RegionSelectionWindow::resizeEvent(QResizeEvent*)
{
    m_view->setGeometry(rect());
}

} // namespace tessary
