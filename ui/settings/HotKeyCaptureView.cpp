#include "ui/settings/HotKeyCaptureView.h"

#include "platform/WindowEffects.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QTimerEvent>

#include <utility>

namespace tessary {
namespace {

constexpr quint32 kEscape = 53;
/// A held key repeats much sooner; this much later its release must have been missed.
constexpr int kLongestSilence = 3000; // milliseconds

bool isModifier(int key)
{
    switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_Hyper_L:
    case Qt::Key_Hyper_R:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
    case Qt::Key_ScrollLock:
        return true;
    default:
        return false;
    }
}

/// What is written on the key, as far as the layout tells; control characters are no writing.
QString charactersOf(int key)
{
    if (key == 0 || key == Qt::Key_unknown)
        return {};
    return QKeySequence(key).toString(QKeySequence::PortableText);
}

} // namespace

HotKeyCaptureView::HotKeyCaptureView(WindowEffects& effects, QWidget* parent)
    : QWidget(parent),
      m_effects(effects)
{
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("正在录制..."));
    setAccessibleDescription(tr("按下新的快捷键，按 Esc 取消"));
}

HotKeyCaptureView::~HotKeyCaptureView()
{
    if (m_window != 0)
        m_effects.releaseKeyboard(m_window);
}

bool HotKeyCaptureView::begin()
{
    const quintptr window = this->window()->winId();
    if (!m_effects.takeKeyboard(window))
        return false;
    m_window = window;
    m_state = State::Recording;
    show();
    setFocus(Qt::OtherFocusReason);
    // Clicks anywhere in our windows; those elsewhere take the focus.
    QCoreApplication* application = QCoreApplication::instance();
    application->installEventFilter(this);
    return true;
}

void HotKeyCaptureView::cancel()
{
    if (m_state != State::Recording)
        return finish();
    m_state = State::KeyHeld;
    Q_EMIT cancelled();
    finish();
}

void HotKeyCaptureView::capture(const QKeyEvent& event)
{
    if (event.isAutoRepeat() || isModifier(event.key()))
        return;
    const std::optional<quint32> keyCode = m_effects.virtualKey(event.nativeScanCode());
    if (keyCode == kEscape || event.key() == Qt::Key_Escape) {
        waitForRelease();
        Q_EMIT cancelled();
        return;
    }
    const std::optional<quint32> modifiers = HotKeyShortcut::carbonModifiers(event.modifiers());
    if (!modifiers)
        return;
    if (*modifiers == HotKeyModifier::kShift)
        return refused(Refusal::OnlyShift);
    if (!keyCode)
        return refused(Refusal::UnknownKey);
    const QString label = HotKeyShortcut::label(*keyCode, charactersOf(event.key()));
    waitForRelease();
    Q_EMIT captured({*keyCode, *modifiers, label});
}

void HotKeyCaptureView::waitForRelease()
{
    m_state = State::KeyHeld;
    m_patience.start(kLongestSilence, this);
}

void HotKeyCaptureView::finish()
{
    if (m_state == State::Idle || m_state == State::Ended)
        return;
    m_state = State::Ended;
    m_patience.stop();
    m_effects.releaseKeyboard(std::exchange(m_window, 0));
    Q_EMIT finished();
}

/// Everything is ours, Tab and the shortcuts of our own window included.
bool HotKeyCaptureView::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        event->accept();
        return true;
    case QEvent::KeyPress:
        event->accept();
        if (m_state == State::Recording)
            capture(*static_cast<QKeyEvent*>(event));
        else if (m_state == State::KeyHeld)
            m_patience.start(kLongestSilence, this);
        return true;
    case QEvent::KeyRelease:
        event->accept();
        if (m_state == State::KeyHeld && !static_cast<QKeyEvent*>(event)->isAutoRepeat())
            finish();
        return true;
    default:
        return QWidget::event(event);
    }
}

/// A click beside it ends recording, and does what it does otherwise.
bool HotKeyCaptureView::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress && watched != this && watched->isWidgetType() &&
        m_state == State::Recording)
        cancel();
    return QWidget::eventFilter(watched, event);
}

void HotKeyCaptureView::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    if (m_state == State::Recording || m_state == State::KeyHeld)
        cancel();
}

void HotKeyCaptureView::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    if (m_state == State::Recording || m_state == State::KeyHeld)
        cancel();
}

void HotKeyCaptureView::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_patience.timerId())
        finish();
}

} // namespace tessary
