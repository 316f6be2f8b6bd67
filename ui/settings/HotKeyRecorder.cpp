#include "ui/settings/HotKeyRecorder.h"

#include "ui/kit/SymbolButton.h"
#include "ui/kit/Theme.h"
#include "ui/settings/HotKeyButton.h"

#include <QHBoxLayout>

namespace tessary {
namespace {

constexpr int kGap = 5; // and 3 that the first button reaches beyond its face

} // namespace

HotKeyRecorder::HotKeyRecorder(const Theme& theme, WindowEffects& effects, const QString& name,
                               QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_effects(effects),
      m_button(new HotKeyButton(theme)),
      m_disable(new SymbolButton(theme, QStringLiteral("xmark.circle.fill")))
{
    m_button->setAccessibleDescription(name);
    m_disable->setToolTip(tr("关闭此快捷键"));
    m_disable->setAccessibleName(tr("关闭此快捷键"));
    m_disable->setAccessibleDescription(name);
    const auto applyTheme = [this] { m_disable->setRestingColour(m_theme.colours().tertiary); };
    applyTheme();
    connect(&theme, &Theme::changed, this, applyTheme);
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(kGap);
    line->addWidget(m_button);
    line->addWidget(m_disable);
    connect(m_button, &QAbstractButton::clicked, this, &HotKeyRecorder::record);
    connect(m_disable, &QAbstractButton::clicked, this, [this] {
        stop();
        Q_EMIT recorded(HotKeyShortcut());
    });
}

void HotKeyRecorder::setShortcut(const HotKeyShortcut& shortcut)
{
    m_button->setShortcut(shortcut);
    m_disable->setVisible(true);
    m_disable->setEnabled(!shortcut.isDisabled());
}

bool HotKeyRecorder::isRecording() const
{
    return m_button->isRecording();
}

void HotKeyRecorder::record()
{
    if (m_capture)
        return;
    m_capture = new HotKeyCaptureView(m_effects, this);
    m_capture->setGeometry(m_button->geometry());
    connect(m_capture, &HotKeyCaptureView::refused, this, &HotKeyRecorder::refused);
    connect(m_capture, &HotKeyCaptureView::cancelled, this, &HotKeyRecorder::end);
    connect(m_capture, &HotKeyCaptureView::captured, this, [this](const HotKeyShortcut& shortcut) {
        end();
        Q_EMIT recorded(shortcut);
    });
    connect(m_capture, &HotKeyCaptureView::finished, this,
            [this, capture = m_capture.data()] { letGo(capture); });
    if (!m_capture->begin()) {
        delete m_capture.data();
        Q_EMIT keyboardBusy();
        return;
    }
    m_button->setRecording(true);
    Q_EMIT recordingChanged(true);
}

void HotKeyRecorder::stop()
{
    if (m_capture)
        m_capture->cancel();
}

/// What was pressed counts, or nothing does; the key may still be held.
void HotKeyRecorder::end()
{
    m_button->setRecording(false);
    Q_EMIT recordingChanged(false);
}

/// Not within an event of what goes.
void HotKeyRecorder::letGo(HotKeyCaptureView* capture)
{
    if (capture->hasFocus() && isVisible())
        m_button->setFocus(Qt::TabFocusReason);
    if (m_capture == capture)
        m_capture = nullptr;
    capture->deleteLater();
}

} // namespace tessary
