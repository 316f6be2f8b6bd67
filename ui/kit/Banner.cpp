#include "ui/kit/Banner.h"

#include "ui/kit/AccessibleRole.h"
#include "ui/kit/ElidedLines.h"
#include "ui/kit/Symbol.h"
#include "ui/kit/SymbolButton.h"
#include "ui/kit/Theme.h"

#include <QPainter>
#include <QResizeEvent>

namespace tessary {
namespace {

constexpr int kSymbolSize = 20;
constexpr int kSymbolLeft = 26;
constexpr int kTextLeft = 68;
constexpr int kTextGap = 12; // to the close button
constexpr int kVerticalPadding = 8;
constexpr int kLineHeight = 18;
constexpr int kMaximumLines = 2;
constexpr int kCloseRight = 14;

} // namespace

Banner::Banner(const Theme& theme, const QString& symbol, QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_symbol(symbol),
      m_label(new QLabel(this)),
      m_close(new SymbolButton(theme, QStringLiteral("xmark"), this))
{
    setAccessibleRole(*this, QAccessible::AlertMessage);
    m_label->setTextFormat(Qt::PlainText);
    m_label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_label->setFocusPolicy(Qt::NoFocus);
    m_close->setAccessibleName(tr("关闭提示"));
    m_close->setToolTip(tr("关闭提示"));
    connect(m_close, &QAbstractButton::clicked, this, &Banner::closed);
    connect(&theme, &Theme::changed, this, &Banner::applyTheme);
    connect(&m_slide, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& height) { setFixedHeight(height.toInt()); });
    connect(&m_slide, &QAbstractAnimation::finished, this, [this] { setVisible(!m_message.isEmpty()); });
    applyTheme();
    setFixedHeight(0);
    hide();
}

void Banner::applyTheme()
{
    QPalette palette = m_theme.palette();
    palette.setColor(QPalette::WindowText, m_theme.colours().warning);
    m_label->setPalette(palette);
    m_label->setFont(m_theme.font(Theme::kBodySize));
    m_close->setRestingColour(m_theme.colours().warning);
    layOut();
    if (m_slide.state() != QAbstractAnimation::Running && !m_message.isEmpty())
        setFixedHeight(fullHeight());
    update();
}

void Banner::setMessage(const QString& message)
{
    if (m_message == message)
        return;
    m_message = message;
    setAccessibleName(message);
    setToolTip(message);
    if (message.isEmpty())
        return slideTo(0);
    layOut();
    slideTo(fullHeight());
}

int Banner::fullHeight() const
{
    const int lines = static_cast<int>(m_label->text().count(QLatin1Char('\n'))) + 1;
    return 2 * kVerticalPadding + lines * m_theme.scaled(kLineHeight);
}

void Banner::layOut()
{
    const int textWidth = width() - kTextLeft - kCloseRight - m_close->sizeHint().width() - kTextGap;
    if (!m_message.isEmpty())
        m_label->setText(elidedLines(m_message, m_label->font(), textWidth, kMaximumLines));
    const int lines = static_cast<int>(m_label->text().count(QLatin1Char('\n'))) + 1;
    const int lineHeight = m_theme.scaled(kLineHeight);
    m_label->setGeometry(kTextLeft, kVerticalPadding, textWidth, lines * lineHeight);
    const int firstLineCentre = kVerticalPadding + lineHeight / 2;
    const QSize close = m_close->sizeHint();
    m_close->setGeometry(width() - kCloseRight - close.width(), firstLineCentre - close.height() / 2,
                         close.width(), close.height());
}

void Banner::slideTo(int height)
{
    m_slide.stop();
    setVisible(true);
    const bool isSeen = isVisible() && testAttribute(Qt::WA_WState_Created);
    const int duration = isSeen ? static_cast<int>(m_theme.duration(Theme::kBanner).count()) : 0;
    if (duration == 0) {
        setFixedHeight(height);
        setVisible(height > 0);
        return;
    }
    m_slide.setDuration(duration);
    m_slide.setEasingCurve(QEasingCurve::OutCubic);
    m_slide.setStartValue(this->height());
    m_slide.setEndValue(height);
    m_slide.start();
}

void Banner::resizeEvent(QResizeEvent* event)
{
    layOut();
    const bool isSettled = m_slide.state() != QAbstractAnimation::Running && !m_message.isEmpty();
    if (isSettled && event->size().width() != event->oldSize().width())
        setFixedHeight(fullHeight());
}

void Banner::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), m_theme.colours().warningFill);
    painter.fillRect(0, height() - 1, width(), 1, m_theme.colours().hairline);
    const int top = kVerticalPadding + (m_theme.scaled(kLineHeight) - kSymbolSize) / 2;
    painter.drawPixmap(kSymbolLeft, top,
                       Symbol(m_symbol).pixmap(kSymbolSize, m_theme.colours().warning, devicePixelRatioF()));
}

} // namespace tessary
