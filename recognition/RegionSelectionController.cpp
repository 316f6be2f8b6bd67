#include "recognition/RegionSelectionController.h"

#include "base/Milestone.h"
#include "platform/Clock.h"
#include "recognition/RegionSelectionView.h"
#include "recognition/RegionSelectionWindow.h"

#include <QAccessible>
#include <QCursor>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QMouseEvent>
#include <QScreen>

#include <algorithm>

Q_LOGGING_CATEGORY(lcSelection, "tessary.selection")

namespace tessary {
namespace {

// The shortcut's own grab may take a moment to end, as may a menu that is just closing.
constexpr std::chrono::milliseconds kGrabInterval{20};
constexpr int kGrabAttempts = 50;

std::exception_ptr selectionError(RegionSelector::SelectionError::Case which)
{
    return std::make_exception_ptr(RegionSelector::SelectionError(which));
}

QImage pictureOf(const QScreen& screen, const QList<ScreenPicture>& pictures)
{
    const auto found = std::find_if(pictures.cbegin(), pictures.cend(),
                                    [&](const ScreenPicture& one) { return one.screen == screen.name(); });
    return found != pictures.cend() ? found->image : QImage();
}

} // namespace

struct RegionSelectionController::Completion {
    Milestone done;
    std::exception_ptr error;
    std::optional<Selection> selection;
};

RegionSelectionController::RegionSelectionController(const Theme& theme, WindowEffects& effects, Clock& clock)
    : m_theme(theme),
      m_effects(effects),
      m_clock(clock)
{
}

RegionSelectionController::~RegionSelectionController()
{
    cancel();
}

QCoro::Task<RegionSelector::Selection> RegionSelectionController::begin(QList<ScreenPicture> pictures)
{
    cancel();
    if (QGuiApplication::screens().isEmpty())
        throw SelectionError(SelectionError::Case::NoScreen);
    const auto completion = std::make_shared<Completion>();
    m_completion = completion;
    cover(pictures);
    pictures.clear(); // the windows have them now
    auto taking = takeInput(completion);
    auto done = completion->done.reached();
    co_await done;
    co_await taking;
    if (completion->error)
        std::rethrow_exception(completion->error);
    co_return *completion->selection;
}

void RegionSelectionController::cancel()
{
    if (m_completion)
        finish(selectionError(SelectionError::Case::Cancelled), std::nullopt);
}

// --- covering the screens ---------------------------------------------------

void RegionSelectionController::cover(const QList<ScreenPicture>& pictures)
{
    const auto* application = qGuiApp;
    m_screenChanges.push_back(
        connect(application, &QGuiApplication::screenAdded, this, [this] { cancel(); }));
    m_screenChanges.push_back(
        connect(application, &QGuiApplication::screenRemoved, this, [this] { cancel(); }));
    const QList<QScreen*> screens = QGuiApplication::screens();
    for (QScreen* screen : screens)
        coverScreen(*screen, pictureOf(*screen, pictures));
    for (RegionSelectionWindow* window : m_windows) {
        window->show();
        window->raise();
    }
    m_keyWindow = windowUnderMouse();
    // No window manager tells the screen reader of these windows.
    QAccessibleEvent event(&m_keyWindow->view(), QAccessible::Focus);
    QAccessible::updateAccessibility(&event);
}

void RegionSelectionController::coverScreen(QScreen& screen, const QImage& picture)
{
    m_screenChanges.push_back(connect(&screen, &QScreen::geometryChanged, this, [this] { cancel(); }));
    auto* window = new RegionSelectionWindow(m_theme, screen, picture);
    RegionSelectionView& view = window->view();
    const Screen described{screen.name(), screen.geometry(), screen.devicePixelRatio()};
    view.onSelection = [this, described](const QRectF& rect) { select(described, rect); };
    view.onCancel = [this] { cancel(); };
    view.installEventFilter(this);
    window->installEventFilter(this); // which hears of the pointer while that is on another screen
    m_windows.push_back(window);
}

RegionSelectionWindow* RegionSelectionController::windowUnderMouse() const
{
    RegionSelectionWindow* const found = windowAt(QCursor::pos());
    return found != nullptr ? found : m_windows.front();
}

RegionSelectionWindow* RegionSelectionController::windowAt(const QPointF& globalPosition) const
{
    const auto found = std::find_if(m_windows.cbegin(), m_windows.cend(), [&](const auto* window) {
        return window->geometry().contains(globalPosition.toPoint());
    });
    return found != m_windows.cend() ? *found : nullptr;
}

/// Nobody else may hear of the pointer or of keys until the selection ends.
QCoro::Task<> RegionSelectionController::takeInput(std::shared_ptr<Completion> completion)
{
    for (int attempt = 0; attempt < kGrabAttempts && !completion->done.isReached(); ++attempt) {
        if (m_effects.takeInput(m_keyWindow->winId())) {
            qCInfo(lcSelection, "a region is being selected");
            co_return;
        }
        co_await m_clock.sleep(kGrabInterval);
    }
    if (!completion->done.isReached())
        finish(std::make_exception_ptr(ScreenCaptureError(ScreenCaptureError::Case::ScreensInUse)),
               std::nullopt);
}

// --- selecting --------------------------------------------------------------

bool RegionSelectionController::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        follow(*static_cast<const QMouseEvent*>(event));
        return true;
    default:
        return QObject::eventFilter(watched, event);
    }
}

/// One window gets everything the pointer does, wherever it is.
void RegionSelectionController::follow(const QMouseEvent& event)
{
    const QPointF position = event.globalPosition();
    const bool isPress =
        event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick;
    if (isPress && event.button() == Qt::RightButton)
        return cancel();
    if (isPress && event.button() == Qt::LeftButton) {
        m_dragged = windowAt(position);
        if (m_dragged != nullptr)
            m_dragged->view().mouseDown(m_dragged->view().mapFromGlobal(position));
        return;
    }
    if (m_dragged == nullptr)
        return;
    RegionSelectionView& view = m_dragged->view();
    if (event.type() == QEvent::MouseMove)
        view.mouseDragged(view.mapFromGlobal(position));
    else if (event.type() == QEvent::MouseButtonRelease && event.button() == Qt::LeftButton)
        view.mouseUp(view.mapFromGlobal(position));
}

void RegionSelectionController::select(const Screen& screen, const QRectF& rect)
{
    finish(nullptr, Selection{screen, rect.translated(screen.frame.topLeft())});
}

/// The windows are in the middle of an event perhaps, so they only go away for now.
void RegionSelectionController::finish(std::exception_ptr error, const std::optional<Selection>& selection)
{
    for (const QMetaObject::Connection& connection : std::exchange(m_screenChanges, {}))
        disconnect(connection);
    if (m_keyWindow != nullptr)
        m_effects.releaseInput(std::exchange(m_keyWindow, nullptr)->winId());
    m_dragged = nullptr;
    for (RegionSelectionWindow* window : std::exchange(m_windows, {})) {
        window->view().removeEventFilter(this);
        window->removeEventFilter(this);
        window->hide();
        window->deleteLater();
    }
    const std::shared_ptr<Completion> completion = std::exchange(m_completion, nullptr);
    completion->error = std::move(error);
    completion->selection = selection;
    completion->done.reach();
}

} // namespace tessary
