#include "ui/preview/PreviewWindowController.h"

#include "ui/preview/PreviewDetailView.h"
#include "ui/preview/PreviewSurroundings.h"
#include "ui/preview/PreviewWindow.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

namespace tessary {
namespace {

constexpr QSize kSize(920, 680);
constexpr QSize kSmallest(680, 480);
constexpr QSize kFrame(16, 48); // room for the desktop's own title bar and borders

} // namespace

PreviewWindowController::PreviewWindowController(const ScreenshotRecord& record, AppRuntime& runtime,
                                                 PreviewSurroundings& surroundings)
    : m_item(record.id),
      m_view(new PreviewDetailView(record, runtime, surroundings)),
      m_window(std::make_unique<PreviewWindow>(surroundings.theme, m_view))
{
    centre();
    connect(m_window.get(), &PreviewWindow::willClose, this, &PreviewWindowController::windowWillClose);
}

PreviewWindowController::~PreviewWindowController() = default;

void PreviewWindowController::centre()
{
    const QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
    if (screen == nullptr)
        screen = QGuiApplication::primaryScreen();
    const QRect there = screen->availableGeometry();
    const QSize room = there.size() - kFrame;
    m_window->setMinimumSize(kSmallest.boundedTo(room));
    QRect place(QPoint(), kSize.boundedTo(room));
    place.moveCenter(there.center());
    m_window->resize(place.size());
    m_window->move(place.topLeft());
}

void PreviewWindowController::present()
{
    if (m_window->isMinimized())
        m_window->showNormal();
    else
        m_window->show();
    m_window->raise();
    m_window->activateWindow();
}

} // namespace tessary
