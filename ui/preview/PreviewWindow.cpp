#include "ui/preview/PreviewWindow.h"

#include "ui/kit/Theme.h"
#include "ui/quicksearch/DetailPane.h"
#include "ui/quicksearch/RowTitle.h"

#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>

namespace tessary {
namespace {

constexpr QSize kSize(920, 680);
constexpr QSize kSmallest(680, 480);

} // namespace

PreviewWindow::PreviewWindow(const Theme& theme, TileImages::Loader loader, const ScreenshotRecord& record)
    : m_theme(theme),
      m_item(record.id),
      m_tiles(loader),
      m_detail(new DetailPane(theme, m_tiles, std::move(loader)))
{
    setWindowTitle(rowTitle(record));
    setMinimumSize(kSmallest);
    resize(kSize);
    setPalette(theme.palette());
    connect(&theme, &Theme::changed, this, [this] {
        setPalette(m_theme.palette());
        update();
    });
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_detail);
    layout->activate(); // pictures are loaded at the size that they will have
    m_detail->set(record);
}

void PreviewWindow::present()
{
    const QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
    if (!isVisible() && screen != nullptr) {
        QRect place(QPoint(), size());
        place.moveCenter(screen->availableGeometry().center());
        move(place.topLeft());
    }
    show();
    raise();
    activateWindow();
}

void PreviewWindow::keyPressEvent(QKeyEvent* event)
{
    const bool isClose = event->matches(QKeySequence::Close) || event->key() == Qt::Key_Escape;
    if (isClose)
        close();
    else
        QWidget::keyPressEvent(event);
}

void PreviewWindow::paintEvent(QPaintEvent* event)
{
    QPainter(this).fillRect(event->rect(), m_theme.colours().window);
}

} // namespace tessary
