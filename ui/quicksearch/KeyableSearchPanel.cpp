#include "ui/quicksearch/KeyableSearchPanel.h"

#include "ui/kit/Theme.h"

#include <QCloseEvent>

namespace tessary {

KeyableSearchPanel::KeyableSearchPanel(const Theme& theme)
    : FramedWindow(theme, Theme::kPanelRadius, Qt::Tool | Qt::WindowStaysOnTopHint)
{
    setWindowTitle(QStringLiteral("Tessary"));
    setFixedBodySize(kSize);
}

void KeyableSearchPanel::changeEvent(QEvent* event)
{
    FramedWindow::changeEvent(event);
    if (event->type() != QEvent::ActivationChange)
        return;
    if (isActiveWindow())
        Q_EMIT becameKey();
    else
        Q_EMIT resignedKey();
}

void KeyableSearchPanel::resizeEvent(QResizeEvent* event)
{
    FramedWindow::resizeEvent(event);
    Q_EMIT resized();
}

void KeyableSearchPanel::closeEvent(QCloseEvent* event)
{
    FramedWindow::closeEvent(event);
    Q_EMIT closing();
}

} // namespace tessary
