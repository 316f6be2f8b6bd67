#include "recognition/LocalOCRResultWindowController.h"

#include "platform/WindowEffects.h"
#include "recognition/LocalOCRResultView.h"
#include "ui/kit/FramedWindow.h"
#include "ui/kit/Theme.h"

#include <QCursor>
#include <QEvent>
#include <QGuiApplication>
#include <QPointer>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>

namespace tessary {
namespace {

constexpr int kRadius = 18;

QScreen* screenUnderPointer()
{
    QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
    return screen != nullptr ? screen : QGuiApplication::primaryScreen();
}

} // namespace

LocalOCRResultWindowController::LocalOCRResultWindowController(const Theme& theme, WindowEffects& effects)
    : m_theme(theme),
      m_effects(effects)
{
    connect(&theme, &Theme::changed, this, &LocalOCRResultWindowController::fitText);
}

LocalOCRResultWindowController::~LocalOCRResultWindowController()
{
    discard();
}

void LocalOCRResultWindowController::show(RecognitionResult result)
{
    discard();
    m_window = std::make_unique<FramedWindow>(m_theme, kRadius, Qt::Window | Qt::WindowStaysOnTopHint);
    m_window->setWindowTitle(tr("OCR 识别结果"));
    m_window->setComposited(m_effects.isComposited());
    m_window->setBodySizes(kSmallest, kSmallest, kLargest);
    fitText();
    m_view = new LocalOCRResultView(m_theme, std::move(result), &m_window->body());
    auto* layout = new QVBoxLayout(&m_window->body());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_view);
    connect(m_view, &LocalOCRResultView::closeRequested, this, &LocalOCRResultWindowController::closeSoon);
    connect(m_view, &LocalOCRResultView::minimizeRequested, m_window.get(), &QWidget::showMinimized);
    connect(m_window.get(), &FramedWindow::bodyPlaced, this,
            &LocalOCRResultWindowController::leaveShadowAlone);
    addShortcuts();
    m_window->installEventFilter(this);
    place();
    // A window that can be minimised has to be found again.
    m_effects.setListed(m_window->winId(), true);
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
    m_effects.activate(m_window->winId());
    m_view->appeared();
}

void LocalOCRResultWindowController::close()
{
    if (!isOpen())
        return;
    discard();
    Q_EMIT closed();
}

/// Not within an event of what goes, and not another window that has taken its place by then.
void LocalOCRResultWindowController::closeSoon()
{
    QMetaObject::invokeMethod(
        this,
        [this, window = QPointer<FramedWindow>(m_window.get())] {
            if (window != nullptr && window == m_window.get())
                close();
        },
        Qt::QueuedConnection);
}

void LocalOCRResultWindowController::discard()
{
    m_view = nullptr;
    m_smallest = kSmallest;
    m_window.reset();
}

void LocalOCRResultWindowController::addShortcuts()
{
    for (const QKeySequence& key : {QKeySequence(Qt::Key_Escape), QKeySequence(Qt::CTRL | Qt::Key_W)})
        connect(new QShortcut(key, m_window.get()), &QShortcut::activated, this,
                &LocalOCRResultWindowController::closeSoon);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter})
        connect(new QShortcut(QKeySequence(Qt::CTRL | key), m_window.get()), &QShortcut::activated, m_view,
                &LocalOCRResultView::addReminder);
}

void LocalOCRResultWindowController::place()
{
    QScreen* screen = screenUnderPointer();
    if (screen == nullptr)
        return;
    m_window->winId(); // there is a native window to put on that screen
    m_window->windowHandle()->setScreen(screen);
    const QRect room = screen->availableGeometry();
    const QSize size = m_window->body().size();
    m_window->moveBody(room.topLeft() +
                       QPoint((room.width() - size.width()) / 2, (room.height() - size.height()) / 2));
}

/// Larger text wants a larger window, as far as there is room.
void LocalOCRResultWindowController::fitText()
{
    if (!m_window)
        return;
    const QScreen* screen = m_window->isVisible() ? m_window->screen() : screenUnderPointer();
    const QRect usable = screen != nullptr ? screen->availableGeometry() : QRect(QPoint(), kLargest);
    const QSize wanted(m_theme.scaled(kSmallest.width()), m_theme.scaled(kSmallest.height()));
    const QSize smallest = wanted.boundedTo(kLargest).boundedTo(usable.size()).expandedTo(kSmallest);
    const QSize now = m_window->body().size();
    if (smallest != m_smallest || !now.isValid())
        m_window->setBodySizes(now.expandedTo(smallest), smallest, kLargest);
    m_smallest = smallest;
    if (!m_window->isVisible())
        return;
    const QRect body = m_window->bodyGeometry(); // which may have grown over the edge
    const QPoint last = usable.bottomRight() - QPoint(body.width() - 1, body.height() - 1);
    m_window->moveBody({std::max(usable.left(), std::min(body.left(), last.x())),
                        std::max(usable.top(), std::min(body.top(), last.y()))});
}

/// What the shadow lies on gets the clicks on it.
void LocalOCRResultWindowController::leaveShadowAlone()
{
    if (m_window && m_window->isComposited())
        m_effects.setInputRegion(m_window->winId(), m_window->body().geometry(),
                                 m_window->devicePixelRatioF());
}

bool LocalOCRResultWindowController::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_window.get())
        return QObject::eventFilter(watched, event);
    if (event->type() == QEvent::Close) {
        closeSoon(); // by the window manager
    } else if (event->type() == QEvent::WindowActivate || event->type() == QEvent::Resize) {
        QMetaObject::invokeMethod(this, &LocalOCRResultWindowController::leaveShadowAlone,
                                  Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

} // namespace tessary
