#include "ui/quicksearch/SearchField.h"

#include "ui/kit/Theme.h"

#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleHints>
#include <QTimerEvent>

namespace tessary {

namespace {

constexpr int kCaretWidth = 2;
constexpr int kCaretHeight = 24;

/// Takes Qt's own caret away: it comes in the text's colour only.
class CaretlessStyle : public QProxyStyle {
public:
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override
    {
        return metric == PM_TextCursorWidth ? 0 : QProxyStyle::pixelMetric(metric, option, widget);
    }
};

} // namespace

SearchField::SearchField(const Theme& theme, QWidget* parent) : QLineEdit(parent), m_theme(theme)
{
    auto* style = new CaretlessStyle;
    style->setParent(this);
    setStyle(style);
    connect(this, &QLineEdit::cursorPositionChanged, this, &SearchField::restartCaret);
    connect(this, &QLineEdit::textChanged, this, &SearchField::restartCaret);
    setFrame(false);
    setTextMargins(-2, 0, 0, 0); // what QLineEdit adds by itself
    setPlaceholderText(tr("搜索剪贴板文字、来源 App..."));
    setAccessibleName(tr("搜索剪贴板文字、来源 App..."));
    setContextMenuPolicy(Qt::NoContextMenu);
    connect(&theme, &Theme::changed, this, &SearchField::applyTheme);
    applyTheme();
}

void SearchField::applyTheme()
{
    setFont(m_theme.font(Theme::kSearchSize));
    QPalette palette = m_theme.palette();
    palette.setColor(QPalette::Base, Qt::transparent);
    setPalette(palette);
}

void SearchField::restartCaret()
{
    const int flash = QGuiApplication::styleHints()->cursorFlashTime();
    m_isCaretShown = hasFocus();
    if (hasFocus() && flash > 0)
        m_caretTimer.start(flash / 2, this);
    else
        m_caretTimer.stop();
    update();
}

void SearchField::paintEvent(QPaintEvent* event)
{
    constexpr int kFromCursorRect = 4; // Qt makes it wider than the caret; half of ours is on either side
    QLineEdit::paintEvent(event);
    if (!m_isCaretShown || !hasFocus())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_theme.colours().accentText);
    const QRect place = cursorRect();
    const int caretHeight = m_theme.scaled(kCaretHeight);
    painter.drawRoundedRect(
        QRect(place.left() + kFromCursorRect, (height() - caretHeight) / 2, kCaretWidth, caretHeight), 1, 1);
}

void SearchField::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_caretTimer.timerId())
        return QLineEdit::timerEvent(event);
    m_isCaretShown = !m_isCaretShown;
    update();
}

void SearchField::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    restartCaret();
}

void SearchField::inputMethodEvent(QInputMethodEvent* event)
{
    m_isComposing = !event->preeditString().isEmpty();
    QLineEdit::inputMethodEvent(event);
}

void SearchField::focusOutEvent(QFocusEvent* event)
{
    m_isComposing = false;
    QLineEdit::focusOutEvent(event);
    restartCaret();
}

} // namespace tessary
