#include "ui/settings/SettingsWindowController.h"

#include "app/AppRuntime.h"
#include "platform/WindowEffects.h"
#include "ui/kit/FramedWindow.h"
#include "ui/settings/SettingsView.h"

#include <QCursor>
#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>
#include <QWindow>

#include <array>

namespace tessary {
namespace {

QScreen* screenUnderPointer()
{
    QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
    return screen != nullptr ? screen : QGuiApplication::primaryScreen();
}

} // namespace

SettingsWindowController::SettingsWindowController(const Theme& theme, AppRuntime& runtime,
                                                   WindowEffects& effects, const ApplicationSources& sources)
    : m_runtime(runtime),
      m_effects(effects),
      m_window(std::make_unique<FramedWindow>(theme, SettingsView::kCornerRadius, Qt::Window)),
      m_view(new SettingsView(theme, runtime, effects, sources, &m_window->body()))
{
    m_window->setWindowTitle(tr("Tessary 设置"));
    m_window->setBodySizes(kFirst, kSmallest, kLargest);
    auto* layout = new QVBoxLayout(&m_window->body());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_view);
    connect(m_view, &SettingsView::closeRequested, this, &SettingsWindowController::close);
    connect(m_view, &SettingsView::minimizeRequested, m_window.get(), &QWidget::showMinimized);
    connect(m_view, &SettingsView::pickingBegan, this, &SettingsWindowController::standAside);
    connect(m_view, &SettingsView::pickingEnded, this, &SettingsWindowController::comeBack);
    connect(m_window.get(), &FramedWindow::bodyPlaced, this, &SettingsWindowController::leaveShadowAlone);
    m_window->installEventFilter(this);
    addShortcuts();
}

SettingsWindowController::~SettingsWindowController() = default;

void SettingsWindowController::addShortcuts()
{
    const auto add = [this](const QKeySequence& keys, auto slot) {
        connect(new QShortcut(keys, m_window.get()), &QShortcut::activated, this, slot);
    };
    for (const QKeySequence& keys : {QKeySequence(Qt::Key_Escape), QKeySequence(Qt::CTRL | Qt::Key_W)})
        add(keys, [this] { close(); });
    constexpr std::array kDigits{Qt::Key_1, Qt::Key_2, Qt::Key_3, Qt::Key_4};
    for (std::size_t i = 0; i < kDigits.size(); ++i)
        add(Qt::CTRL | kDigits.at(i), [this, i] { m_view->selectTab(static_cast<SettingsTab>(i)); });
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_PageDown})
        add(Qt::CTRL | key, [this] { m_view->selectNextTab(1); });
    for (const QKeySequence& keys :
         {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab),
          QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab), QKeySequence(Qt::CTRL | Qt::Key_PageUp)})
        add(keys, [this] { m_view->selectNextTab(-1); });
}

void SettingsWindowController::show()
{
    if (!m_window->isVisible()) {
        m_window->setComposited(m_effects.isComposited());
        place();
    }
    if (m_window->isMinimized())
        m_window->showNormal();
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
    m_effects.activate(m_window->winId());
    m_runtime.refreshPermissions();
}

void SettingsWindowController::close()
{
    m_window->hide();
}

/// In the middle of the screen that has the pointer at first, then where the person left it, as long as
/// that can be seen.
void SettingsWindowController::place()
{
    QScreen* screen = screenUnderPointer();
    if (screen == nullptr)
        return;
    QScreen* const last =
        m_wasPlaced ? QGuiApplication::screenAt(m_window->bodyGeometry().center()) : nullptr;
    m_window->winId(); // there is a native window to put on that screen
    if (last != nullptr) {
        fitScreen(*last);
        m_window->moveBody(m_window->bodyGeometry().topLeft());
        return;
    }
    m_wasPlaced = true;
    m_window->windowHandle()->setScreen(screen);
    fitScreen(*screen);
    const QRect room = screen->availableGeometry();
    const QSize size = m_window->bodyGeometry().size();
    m_window->moveBody(room.topLeft() +
                       QPoint((room.width() - size.width()) / 2, (room.height() - size.height()) / 2));
}

/// Never larger than there is room, shadow included, as window managers push larger ones about.
void SettingsWindowController::fitScreen(QScreen& screen)
{
    const QSize around(2 * m_window->margin(), 2 * m_window->margin());
    const QSize room = screen.availableGeometry().size() - around;
    const QSize size = m_window->bodyGeometry().size().boundedTo(room);
    m_window->setBodySizes(size, kSmallest.boundedTo(room), kLargest.boundedTo(room));
}

/// What the shadow lies on gets the clicks on it.
void SettingsWindowController::leaveShadowAlone()
{
    if (m_window->isComposited())
        m_effects.setInputRegion(m_window->winId(), m_window->body().geometry(),
                                 m_window->devicePixelRatioF());
}

bool SettingsWindowController::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::WindowActivate)
        m_runtime.refreshPermissions(); // they may have been changed meanwhile
    if (event->type() == QEvent::WindowActivate || event->type() == QEvent::Resize)
        QMetaObject::invokeMethod(this, &SettingsWindowController::leaveShadowAlone, Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}

/// While the person points at a window that ours may lie on.
void SettingsWindowController::standAside()
{
    m_window->hide();
}

void SettingsWindowController::comeBack()
{
    show();
}

} // namespace tessary
