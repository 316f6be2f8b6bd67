#include "ui/preview/ZoomBar.h"

#include "ui/kit/AccessibleRole.h"
#include "ui/kit/Hairline.h"
#include "ui/kit/SingleLine.h"
#include "ui/kit/SymbolButton.h"
#include "ui/kit/Theme.h"
#include "ui/preview/PreviewZoom.h"

#include <QPainter>

#include <algorithm>

namespace tessary {
namespace {

constexpr int kShadow = 10; // room around the body
constexpr int kFromEdge = 16;
constexpr int kHeight = 36;
constexpr int kPadding = 4;
constexpr int kPercentWidth = 52;
constexpr int kLineHeight = 20;
constexpr int kAroundLine = 4;

} // namespace

ZoomBar::ZoomBar(const Theme& theme, QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_out(new SymbolButton(theme, QStringLiteral("minus.magnifyingglass"), this)),
      m_in(new SymbolButton(theme, QStringLiteral("plus.magnifyingglass"), this)),
      m_line(new Hairline(theme, Qt::Vertical, this)),
      m_reset(new SymbolButton(theme, {}, this))
{
    setAccessibleRole(*this, QAccessible::Grouping);
    m_out->setToolTip(tr("缩小"));
    m_out->setAccessibleName(tr("缩小"));
    m_in->setToolTip(tr("放大"));
    m_in->setAccessibleName(tr("放大"));
    m_reset->setText(tr("重置"));
    m_reset->setSymbolSize(0);
    m_reset->setShowsText(true);
    m_reset->setRestingColour(theme.colours().text);
    connect(m_out, &QAbstractButton::clicked, this, &ZoomBar::zoomOut);
    connect(m_in, &QAbstractButton::clicked, this, &ZoomBar::zoomIn);
    connect(m_reset, &QAbstractButton::clicked, this, &ZoomBar::reset);
    connect(&theme, &Theme::changed, this, [this] {
        m_reset->setRestingColour(m_theme.colours().text);
        layOut();
        update();
    });
    setScale(PreviewZoom::kReset);
}

void ZoomBar::setScale(double scale)
{
    m_scale = scale;
    m_out->setEnabled(scale > PreviewZoom::kSmallest);
    m_in->setEnabled(scale < PreviewZoom::kLargest);
    setAccessibleName(tr("缩放比例") + QLatin1Char(' ') + percentText());
    update();
}

QString ZoomBar::percentText() const
{
    return PreviewZoom::percentText(m_scale);
}

int ZoomBar::percentWidth() const
{
    return m_theme.scaled(kPercentWidth);
}

QSize ZoomBar::sizeHint() const
{
    const int width = 2 * kPadding + m_out->sizeHint().width() + percentWidth() + m_in->sizeHint().width() +
                      2 * kAroundLine + 1 + m_reset->sizeHint().width();
    const int height = std::max(
        {kHeight, m_out->sizeHint().height() + 2 * kPadding, m_reset->sizeHint().height() + 2 * kPadding});
    return {width + 2 * kShadow, height + 2 * kShadow};
}

QRect ZoomBar::body() const
{
    return rect().adjusted(kShadow, kShadow, -kShadow, -kShadow);
}

void ZoomBar::place(const QRect& canvas)
{
    const QSize size = sizeHint();
    setGeometry(QRect(QPoint(canvas.right() + 1 - kFromEdge + kShadow - size.width(),
                             canvas.bottom() + 1 - kFromEdge + kShadow - size.height()),
                      size));
    layOut();
}

void ZoomBar::layOut()
{
    int left = body().left() + kPadding;
    const auto put = [this, &left](QWidget* widget, const QSize& size) {
        widget->setGeometry(left, (height() - size.height()) / 2, size.width(), size.height());
        left += size.width();
    };
    put(m_out, m_out->sizeHint());
    left += percentWidth();
    put(m_in, m_in->sizeHint());
    left += kAroundLine;
    put(m_line, QSize(1, kLineHeight));
    left += kAroundLine;
    put(m_reset, m_reset->sizeHint());
}

void ZoomBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 5));
    for (int reach = 7; reach >= 1; --reach)
        painter.drawRoundedRect(body().adjusted(-reach, 2 - reach, reach, 2 + reach),
                                Theme::kCardRadius + reach, Theme::kCardRadius + reach);
    painter.setPen(m_theme.colours().edge);
    painter.setBrush(m_theme.colours().surface);
    painter.drawRoundedRect(QRectF(body()).adjusted(0.5, 0.5, -0.5, -0.5), Theme::kCardRadius,
                            Theme::kCardRadius);
    painter.setPen(m_theme.colours().text);
    painter.setFont(m_theme.font(Theme::kBodySize));
    drawSingleLine(painter, QRect(m_out->geometry().right() + 1, 0, percentWidth(), height()), percentText(),
                   Qt::AlignHCenter);
}

} // namespace tessary
