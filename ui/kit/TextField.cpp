#include "ui/kit/TextField.h"

#include "ui/kit/FieldFrame.h"
#include "ui/kit/Symbol.h"
#include "ui/kit/Theme.h"

#include <QPainter>

#include <algorithm>

namespace tessary {
namespace {

constexpr int kSymbolSize = 16;
constexpr int kGap = 8;
constexpr int kOwnMargin = 2; // what QLineEdit adds by itself
constexpr int kWidth = 200;
constexpr int kSmallestWidth = 80;

} // namespace

TextField::TextField(const Theme& theme, QWidget* parent) : QLineEdit(parent), m_theme(theme)
{
    setFrame(false);
    setContextMenuPolicy(Qt::NoContextMenu);
    connect(&theme, &Theme::changed, this, &TextField::applyTheme);
    setSymbol({});
    applyTheme();
}

void TextField::setSymbol(const QString& symbol)
{
    m_symbol = symbol;
    const int left = FieldFrame::kPadding + (symbol.isEmpty() ? 0 : kSymbolSize + kGap);
    setTextMargins(left - kOwnMargin, 0, FieldFrame::kPadding - kOwnMargin, 0);
    update();
}

void TextField::applyTheme()
{
    setFont(m_theme.font(Theme::kBodySize));
    QPalette palette = m_theme.palette();
    palette.setColor(QPalette::Base, Qt::transparent);
    setPalette(palette);
    updateGeometry();
    update();
}

QSize TextField::sizeHint() const
{
    const int height = std::max(m_theme.scaled(FieldFrame::kHeight), QLineEdit::sizeHint().height());
    return {m_theme.scaled(kWidth), height};
}

QSize TextField::minimumSizeHint() const
{
    return {m_theme.scaled(kSmallestWidth), sizeHint().height()};
}

void TextField::paintEvent(QPaintEvent* event)
{
    {
        QPainter painter(this);
        FieldFrame::paint(painter, m_theme, rect(), hasFocus());
        if (!m_symbol.isEmpty())
            painter.drawPixmap(
                FieldFrame::kPadding, (height() - kSymbolSize) / 2,
                Symbol(m_symbol).pixmap(kSymbolSize, m_theme.colours().secondaryText, devicePixelRatioF()));
    }
    QLineEdit::paintEvent(event);
}

} // namespace tessary
