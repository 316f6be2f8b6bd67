#include "ui/quicksearch/QuickSearchPanelController.h"

#include "app/AppRuntime.h"
#include "platform/WindowEffects.h"
#include "store/FileImageCache.h"
#include "ui/quicksearch/KeyableSearchPanel.h"
#include "ui/quicksearch/PanelKey.h"
#include "ui/quicksearch/QuickSearchView.h"
#include "ui/quicksearch/SearchField.h"

#include <QApplication>
#include <QCursor>
#include <QScreen>
#include <QTimerEvent>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>
#include <chrono>

namespace tessary {
namespace {

using namespace std::chrono_literals;

constexpr auto kRestUntilRelease = 20s;
constexpr int kSurelyKey = 50;    // milliseconds after showing
constexpr double kFromTop = 0.12; // of the usable height
constexpr double kStoredWidth = 780;

/// The first screen with the pointer, else the main one; null when there is none.
QScreen* screenUnderPointer()
{
    const QPoint pointer = QCursor::pos();
    const QList<QScreen*> screens = QGuiApplication::screens();
    for (QScreen* screen : screens) {
        if (screen->geometry().contains(pointer))
            return screen;
    }
    return QGuiApplication::primaryScreen();
}

} // namespace

QuickSearchPanelController::QuickSearchPanelController(AppRuntime& runtime, const Theme& theme,
                                                       WindowEffects& effects)
    : m_runtime(runtime),
      m_effects(effects),
      m_model(runtime),
      m_panel(std::make_unique<KeyableSearchPanel>(theme)),
      m_view(new QuickSearchView(theme, runtime, m_model))
{
    auto* layout = new QVBoxLayout(&m_panel->body());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_view);
    m_rest.setSingleShot(true);
    m_rest.setInterval(kRestUntilRelease);
    connect(&m_rest, &QTimer::timeout, this, &QuickSearchPanelController::releaseMemory);
    connect(m_panel.get(), &KeyableSearchPanel::becameKey, this, &QuickSearchPanelController::panelBecameKey);
    connect(m_panel.get(), &KeyableSearchPanel::resignedKey, this,
            &QuickSearchPanelController::panelResignedKey);
    connect(m_panel.get(), &KeyableSearchPanel::resized, this, &QuickSearchPanelController::panelResized);
    connect(m_panel.get(), &KeyableSearchPanel::closing, this, &QuickSearchPanelController::hide);
    connect(m_panel.get(), &KeyableSearchPanel::bodyPlaced, this,
            &QuickSearchPanelController::leaveShadowAlone);
    connect(m_view, &QuickSearchView::menuClosed, this, [this] {
        if (!m_panel->isActiveWindow())
            panelResignedKey();
    });
    connect(&m_view->field(), &QLineEdit::textEdited, this, [this] { m_isNavigatingResults = false; });
    m_panel->setComposited(m_effects.isComposited());
    m_model.scheduleRefresh(
        ScreenshotSearchViewModel::Refresh::Immediate); // so that the first show has something to show
}

QuickSearchPanelController::~QuickSearchPanelController()
{
    removeEventMonitor();
}

// --- showing and hiding -----------------------------------------------------

void QuickSearchPanelController::show()
{
    m_rest.stop();
    m_panel->setComposited(m_effects.isComposited());
    m_view->setComposited(m_panel->isComposited());
    m_model.setQuery({});
    m_model.scheduleRefresh(ScreenshotSearchViewModel::Refresh::Debounced);
    m_isNavigatingResults = false;
    m_view->prepareToShow();
    position();
    installEventMonitor();
    m_isShown = true;
    m_effects.setFloating(m_panel->winId());
    m_panel->show();
    m_panel->raise();
    m_panel->activateWindow();
    m_effects.activate(m_panel->winId());
    if (QGuiApplication::focusWindow() == m_panel->windowHandle()) // hidden a moment ago: no change for Qt
        m_settling.start(kSurelyKey, this);
}

void QuickSearchPanelController::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_settling.timerId())
        return QObject::timerEvent(event);
    m_settling.stop();
    Q_EMIT becameKey(m_panel->winId());
}

void QuickSearchPanelController::hide()
{
    removeEventMonitor();
    if (!std::exchange(m_isShown, false))
        return; // losing the focus hides it too
    m_panel->hide();
    m_model.setQuery({}); // so that the next show starts with the whole list at once
    m_rest.start();
    Q_EMIT gaveUpKeyboard();
}

bool QuickSearchPanelController::isVisible() const
{
    return m_isShown;
}

QPoint QuickSearchPanelController::place(const QRect& visibleFrame, const QSize& size)
{
    const int x = visibleFrame.left() + (visibleFrame.width() - size.width()) / 2;
    const int wanted = visibleFrame.top() + static_cast<int>(kFromTop * visibleFrame.height());
    const int lowest = visibleFrame.bottom() + 1 - size.height();
    return {x, std::max(visibleFrame.top(), std::min(wanted, lowest))};
}

void QuickSearchPanelController::position()
{
    QScreen* screen = screenUnderPointer();
    if (screen == nullptr)
        return;
    m_panel->winId(); // there is a native window to put on that screen
    m_panel->windowHandle()->setScreen(screen);
    const QRect room = screen->availableGeometry();
    const QSize size = KeyableSearchPanel::kSize.boundedTo(room.size());
    m_panel->setFixedBodySize(size);
    m_panel->moveBody(place(room, size));
}

/// What the shadow lies on gets the clicks on it.
void QuickSearchPanelController::leaveShadowAlone()
{
    if (m_panel->isComposited())
        m_effects.setInputRegion(m_panel->winId(), m_panel->body().geometry(), m_panel->devicePixelRatioF());
}

void QuickSearchPanelController::panelBecameKey()
{
    leaveShadowAlone(); // once more: some window managers only hear of it once they manage the window
    Q_EMIT becameKey(m_panel->winId());
}

void QuickSearchPanelController::panelResignedKey()
{
    if (QApplication::activePopupWidget() != nullptr || m_panel->isMoving() || !m_isShown)
        return; // one of our own menus is open, or the panel is being dragged
    if (!m_runtime.settings().quickSearchPinned())
        hide();
}

void QuickSearchPanelController::panelResized()
{
    m_runtime.settings().setQuickSearchWidth(kStoredWidth);
}

void QuickSearchPanelController::releaseMemory()
{
    m_view->releaseMemory();
    FileImageCache::shared().clear();
}

// --- keys -------------------------------------------------------------------

void QuickSearchPanelController::installEventMonitor()
{
    removeEventMonitor();
    QApplication::instance()->installEventFilter(this);
    m_isMonitoring = true;
}

void QuickSearchPanelController::removeEventMonitor()
{
    if (!m_isMonitoring)
        return;
    QApplication::instance()->removeEventFilter(this);
    m_isMonitoring = false;
}

/// Keys are taken as they come in, before any widget of the panel sees them; what an input method is
/// composing with does not come in at all.
bool QuickSearchPanelController::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress && watched == m_panel->windowHandle() &&
        QApplication::activePopupWidget() == nullptr)
        return handle(static_cast<const QKeyEvent&>(*event));
    return QObject::eventFilter(watched, event);
}

bool QuickSearchPanelController::handle(const QKeyEvent& event)
{
    if (m_view->field().isComposing())
        return false;
    const bool hasCommand = event.modifiers().testFlag(Qt::ControlModifier);
    if (handleKey(event, hasCommand))
        return true;
    if (!hasCommand && panelKey(event) != PanelKey::Modifier) {
        m_isNavigatingResults = false;
        typeIntoField(event);
    }
    return false;
}

bool QuickSearchPanelController::handleKey(const QKeyEvent& event, bool hasCommand)
{
    const std::optional<ScreenshotRecord> selected = m_model.selectedRecord();
    switch (panelKey(event)) {
    case PanelKey::Up:
        moveSelection(-1);
        return true;
    case PanelKey::Down:
        moveSelection(1);
        return true;
    case PanelKey::Return:
        useSelected(hasCommand ? std::optional(true) : std::nullopt);
        return true;
    case PanelKey::Escape:
        hide();
        return true;
    case PanelKey::Space:
        if (!m_isNavigatingResults)
            return false;
        if (selected)
            m_runtime.preview(*selected);
        return true;
    case PanelKey::C:
        if (hasCommand)
            useSelected(false);
        return hasCommand;
    case PanelKey::Y:
        if (hasCommand && selected)
            m_runtime.preview(*selected);
        return hasCommand;
    case PanelKey::O:
        if (hasCommand && selected)
            m_runtime.revealInFinder(*selected);
        return hasCommand;
    case PanelKey::D:
        if (hasCommand)
            m_model.favoriteSelected();
        return hasCommand;
    case PanelKey::P:
        if (hasCommand)
            m_model.pinSelected();
        return hasCommand;
    case PanelKey::Backspace:
        if (hasCommand)
            m_model.deleteSelected();
        return hasCommand;
    case PanelKey::Other:
    case PanelKey::Modifier:
        return false;
    }
    Q_UNREACHABLE();
}

void QuickSearchPanelController::useSelected(std::optional<bool> directPaste)
{
    if (!m_model.isRefreshDue())
        return m_model.useSelected(directPaste);
    if (std::exchange(m_isUseDue, true))
        return;
    QCoro::connect(m_model.refresh(), this, [this, directPaste] {
        m_isUseDue = false;
        if (m_isShown)
            useSelected(directPaste);
    });
}

void QuickSearchPanelController::moveSelection(int step)
{
    m_isNavigatingResults = true;
    const bool isAtEnd = m_model.selectedIndex() + 1 == m_model.results().size();
    if (step > 0 && isAtEnd && m_model.hasMore())
        QCoro::connect(m_model.loadMore(), this, [] {});
    m_model.moveSelection(step);
}

/// Whatever has the focus: what is typed goes into the field.
void QuickSearchPanelController::typeIntoField(const QKeyEvent& event)
{
    const bool isPrintable =
        !event.text().isEmpty() && event.text().front().isPrint() && event.key() != Qt::Key_Space;
    if (isPrintable && QApplication::focusWidget() != &m_view->field())
        m_view->field().setFocus(Qt::OtherFocusReason);
}

} // namespace tessary
