#include "ui/preview/PreviewWindow.h"

#include "ui/kit/AccessibleRole.h"
#include "ui/kit/Theme.h"
#include "ui/preview/PreviewDetailView.h"
#include "ui/quicksearch/RowTitle.h"

#include <QCloseEvent>

namespace tessary {

PreviewWindow::PreviewWindow(const Theme& theme, PreviewDetailView* view) : m_view(view)
{
    setAccessibleRole(*this, QAccessible::Window);
    view->setParent(this);
    setFocusProxy(view);
    setPalette(theme.palette());
    connect(&theme, &Theme::changed, this, [this, &theme] { setPalette(theme.palette()); });
    const auto followTitle = [this] { setWindowTitle(rowTitle(m_view->record())); };
    followTitle();
    connect(view, &PreviewDetailView::titleChanged, this, followTitle);
    connect(view, &PreviewDetailView::closeAsked, this, &QWidget::close);
}

void PreviewWindow::closeEvent(QCloseEvent* event)
{
    if (m_view->hasUnsavedEdits()) {
        event->ignore();
        m_view->askAboutEdits([this] { close(); });
        return;
    }
    event->accept();
    Q_EMIT willClose();
}

void PreviewWindow::resizeEvent(QResizeEvent*)
{
    m_view->setGeometry(rect());
}

} // namespace tessary
