#include "ui/preview/TextCanvas.h"

#include "ui/kit/Theme.h"
#include "ui/preview/CodeText.h"
#include "ui/preview/PreviewZoom.h"
#include "ui/quicksearch/TextPage.h"

#include <QLocale>
#include <QNativeGestureEvent>
#include <QPainter>
#include <QWheelEvent>

#include <cmath>

namespace tessary {
namespace {

constexpr int kTextSize = 14;
constexpr int kMostColumns = 52; // Chinese characters

TextPage::Look look()
{
    TextPage::Look look;
    look.margin = 24;
    look.sidePadding = 28;
    look.topPadding = 24;
    look.textSize = kTextSize;
    look.lineHeight = 24;
    look.mostWidth = kMostColumns * kTextSize;
    return look;
}

} // namespace

TextCanvas::TextCanvas(const Theme& theme, QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_page(new TextPage(theme, this))
{
    m_page->setLook(look());
    setFocusProxy(&m_page->view());
    m_page->view().viewport()->installEventFilter(this);
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
}

void TextCanvas::setText(const QString& text, bool isCut)
{
    TextPage::Look look = m_page->look();
    look.isCode = looksLikeCode(text);
    if (look.isCode != m_page->look().isCode)
        m_page->setLook(look);
    qsizetype length = std::min(text.size(), kMostText);
    if (length < text.size() && text.at(length).isLowSurrogate())
        --length;
    const bool isWhole = length == text.size() && !isCut;
    m_page->setText(text.first(length),
                    isWhole ? QString()
                            : tr("仅显示前 %1 个字符，复制和导出时为全文").arg(QLocale().toString(length)));
}

void TextCanvas::setScale(double scale)
{
    if (scale == m_scale)
        return;
    m_scale = scale;
    TextPage::Look look = m_page->look();
    look.zoom = scale;
    m_page->setLook(look);
    Q_EMIT scaleChanged(scale);
}

/// The text view would change its font by itself.
bool TextCanvas::eventFilter(QObject* watched, QEvent* event)
{
    constexpr double kNotch = 120;
    constexpr double kNotchFactor = 1.2;
    if (event->type() == QEvent::NativeGesture) {
        const auto* gesture = static_cast<QNativeGestureEvent*>(event);
        if (gesture->gestureType() == Qt::ZoomNativeGesture) {
            setScale(PreviewZoom::moved(m_scale, 1 + gesture->value()));
            return true;
        }
    }
    if (event->type() != QEvent::Wheel)
        return QWidget::eventFilter(watched, event);
    const auto* wheel = static_cast<QWheelEvent*>(event);
    if (!wheel->modifiers().testFlag(Qt::ControlModifier))
        return QWidget::eventFilter(watched, event);
    setScale(PreviewZoom::moved(m_scale, std::pow(kNotchFactor, wheel->angleDelta().y() / kNotch)));
    return true;
}

void TextCanvas::resizeEvent(QResizeEvent*)
{
    m_page->setGeometry(rect());
}

void TextCanvas::paintEvent(QPaintEvent*)
{
    QPainter(this).fillRect(rect(), m_theme.colours().mat);
}

} // namespace tessary
