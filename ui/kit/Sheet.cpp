#include "ui/kit/Sheet.h"

#include "ui/kit/AccessibleRole.h"
#include "ui/kit/Symbol.h"
#include "ui/kit/Theme.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace tessary {
namespace {

constexpr int kWidth = 440;
constexpr int kMargin = 16; // to the host's edges, where it is small
constexpr int kPadding = 20;
constexpr int kSymbolSize = 24;
constexpr int kGap = 16; // between symbol and text
constexpr int kTextGap = 8;
constexpr int kButtonsGap = 24; // above them; their own ring takes three pixels more
constexpr int kButtonSpace = 2; // the rings' room makes it eight
constexpr QColor kScrim(0, 0, 0, 82);
constexpr int kShadowReach = 12;
constexpr int kShadowDown = 4;

QLabel* wrappedLabel(const QString& text, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

Sheet* Sheet::ask(const Theme& theme, QWidget& host, Question question, double cornerRadius)
{
    auto* sheet = new Sheet(theme, host, std::move(question), cornerRadius);
    sheet->show();
    sheet->raise();
    sheet->focusDefault();
    return sheet;
}

Sheet::Sheet(const Theme& theme, QWidget& host, Question question, double cornerRadius)
    : QWidget(&host),
      m_theme(theme),
      m_question(std::move(question)),
      m_cornerRadius(cornerRadius),
      m_title(wrappedLabel(m_question.title, this)),
      m_text(wrappedLabel(m_question.text, this))
{
    setAccessibleRole(*this, QAccessible::Dialog);
    setAccessibleName(m_question.title);
    setAccessibleDescription(m_question.text);
    setFocusPolicy(Qt::NoFocus);
    addButtons();
    host.installEventFilter(this);
    connect(&theme, &Theme::changed, this, &Sheet::applyTheme);
    applyTheme();
}

void Sheet::addButtons()
{
    for (int index = 0; index < m_question.choices.size(); ++index) {
        const Choice& choice = m_question.choices.at(index);
        auto* button = new PushButton(m_theme, choice.role, this);
        button->setText(choice.text);
        connect(button, &QAbstractButton::clicked, this, [this, index] { answer(index); });
        m_buttons.append(button);
    }
}

void Sheet::focusDefault()
{
    for (int index = 0; index < m_buttons.size(); ++index)
        if (m_question.choices.at(index).role == PushButton::Role::Default)
            return m_buttons.at(index)->setFocus(Qt::TabFocusReason);
    if (!m_buttons.isEmpty())
        m_buttons.last()->setFocus(Qt::TabFocusReason);
}

void Sheet::answer(int choice)
{
    if (isHidden())
        return; // answered already
    const auto chosen = m_question.choices.value(choice).chosen;
    dismiss();
    if (chosen)
        chosen();
}

void Sheet::dismiss()
{
    if (isHidden())
        return;
    hide();
    deleteLater();
    Q_EMIT closed();
}

// --- keyboard and pointer ---------------------------------------------------

bool Sheet::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride: // shortcuts of the window beneath have to wait
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::NativeGesture:
    case QEvent::ContextMenu:
        event->accept();
        return true;
    default:
        return QWidget::event(event);
    }
}

void Sheet::keyPressEvent(QKeyEvent* event)
{
    event->accept();
    const auto focused =
        std::find_if(m_buttons.cbegin(), m_buttons.cend(), [](const auto* each) { return each->hasFocus(); });
    switch (event->key()) {
    case Qt::Key_Escape:
        return answer(m_question.escape);
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (focused != m_buttons.cend())
            (*focused)->click();
        return;
    case Qt::Key_Left:
        focusNextPrevChild(false);
        return;
    case Qt::Key_Right:
        focusNextPrevChild(true);
        return;
    default:
        return;
    }
}

bool Sheet::focusNextPrevChild(bool next)
{
    if (m_buttons.isEmpty())
        return true;
    const auto count = m_buttons.size();
    qsizetype current = 0;
    while (current < count && !m_buttons.at(current)->hasFocus())
        ++current;
    const qsizetype target = current == count ? 0 : (current + (next ? 1 : count - 1)) % count;
    m_buttons.at(target)->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

/// The host's size is the sheet's.
bool Sheet::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize && watched == parent())
        layOut();
    return QWidget::eventFilter(watched, event);
}

// --- looks ------------------------------------------------------------------

void Sheet::applyTheme()
{
    m_title->setFont(m_theme.font(Theme::kTitleSize, QFont::DemiBold));
    m_text->setFont(m_theme.font(Theme::kBodySize));
    QPalette palette = m_theme.palette();
    m_title->setPalette(palette);
    palette.setColor(QPalette::WindowText, m_theme.colours().secondaryText);
    m_text->setPalette(palette);
    layOut();
    update();
}

int Sheet::buttonsWidth() const
{
    int width = 0;
    for (const PushButton* button : m_buttons)
        width += button->sizeHint().width() + (width > 0 ? kButtonSpace : 0);
    return width;
}

int Sheet::placeButtons(const QRect& content, int top)
{
    constexpr int kRing = 3;
    if (buttonsWidth() <= content.width() + 2 * kRing) {
        int left = content.right() + 1 + kRing - buttonsWidth();
        int bottom = top;
        for (PushButton* button : m_buttons) {
            button->setGeometry(QRect(QPoint(left, top - kRing), button->sizeHint()));
            left += button->width() + kButtonSpace;
            bottom = button->y() + button->height() - kRing;
        }
        return bottom;
    }
    for (PushButton* button : m_buttons) {
        button->setGeometry(content.left() - kRing, top - kRing, content.width() + 2 * kRing,
                            button->sizeHint().height());
        top += button->height() - 2 * kRing + kTextGap;
    }
    return top - kTextGap;
}

void Sheet::layOut()
{
    setGeometry(parentWidget()->rect());
    const int width = std::min(m_theme.scaled(kWidth), this->width() - 2 * kMargin);
    const int left = (this->width() - width) / 2;
    const int symbol = m_question.symbol.isEmpty() ? 0 : kSymbolSize + kGap;
    const QRect content(left + kPadding, 0, width - 2 * kPadding, 0);
    const int textWidth = content.width() - symbol;
    const int titleHeight = m_title->heightForWidth(textWidth);
    const int textHeight = m_question.text.isEmpty() ? 0 : m_text->heightForWidth(textWidth) + kTextGap;
    const int below = placeButtons(content, kPadding + titleHeight + textHeight + kButtonsGap);
    const int height = below + kPadding;
    const int top = std::max(0, (this->height() - height) / 2);
    m_card = QRect(left, top, width, height);
    m_title->setGeometry(content.left() + symbol, top + kPadding, textWidth, titleHeight);
    m_text->setGeometry(content.left() + symbol, top + kPadding + titleHeight + kTextGap, textWidth,
                        std::max(0, textHeight - kTextGap));
    for (PushButton* button : m_buttons)
        button->move(button->x(), button->y() + top);
    update();
}

void Sheet::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kScrim);
    painter.drawRoundedRect(rect(), m_cornerRadius, m_cornerRadius);
    painter.setBrush(QColor(0, 0, 0, 8));
    for (int reach = kShadowReach; reach >= 1; reach -= 2)
        painter.drawRoundedRect(m_card.adjusted(-reach, kShadowDown - reach, reach, kShadowDown + reach),
                                Theme::kPanelRadius + reach, Theme::kPanelRadius + reach);
    const ThemeColours& colours = m_theme.colours();
    painter.setBrush(colours.window);
    painter.setPen(colours.edge);
    painter.drawRoundedRect(QRectF(m_card).adjusted(0.5, 0.5, -0.5, -0.5), Theme::kPanelRadius,
                            Theme::kPanelRadius);
    if (!m_question.symbol.isEmpty())
        painter.drawPixmap(
            m_card.left() + kPadding, m_card.top() + kPadding,
            Symbol(m_question.symbol).pixmap(kSymbolSize, colours.danger, devicePixelRatioF()));
}

} // namespace tessary
