#include "ui/kit/Picker.h"

#include "ui/kit/SingleLine.h"
#include "ui/kit/Symbol.h"
#include "ui/kit/Theme.h"

#include <QPainter>
#include <QWheelEvent>

#include <algorithm>

namespace tessary {
namespace {

constexpr int kRing = 3; // around the face, for the focus ring
constexpr int kHeight = 28;
constexpr int kNarrowest = 104;
constexpr int kLeft = 12;
constexpr int kRight = 8;
constexpr int kGap = 8;
constexpr int kChevrons = 12;
constexpr int kMenuGap = 4;

} // namespace

Picker::Picker(const Theme& theme, QList<int> choices, Naming naming, QWidget* parent)
    : QComboBox(parent),
      m_theme(theme),
      m_choices(std::move(choices)),
      m_naming(std::move(naming)),
      m_hover(theme, *this)
{
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    fill(m_choices.value(0));
    connect(this, &QComboBox::activated, this, [this] { Q_EMIT picked(value()); });
    connect(&theme, &Theme::changed, this, [this] {
        updateGeometry();
        update();
    });
}

void Picker::setValue(int value)
{
    const bool isListed = count() == m_choices.size() || !m_choices.contains(value);
    if (value == this->value() && isListed)
        return;
    fill(value);
    updateGeometry();
    update();
}

/// The choices, with the value among them, in order.
void Picker::fill(int value)
{
    const QSignalBlocker quiet(this);
    QList<int> values = m_choices;
    if (!values.contains(value))
        values.insert(std::upper_bound(values.begin(), values.end(), value), value);
    clear();
    for (const int one : values)
        addItem(m_naming(one), one);
    setCurrentIndex(static_cast<int>(values.indexOf(value)));
}

QSize Picker::sizeHint() const
{
    const QFontMetrics metrics(m_theme.font(Theme::kBodySize));
    int widest = 0;
    for (int i = 0; i < count(); ++i)
        widest = std::max(widest, metrics.horizontalAdvance(itemText(i)));
    const int width = std::max(m_theme.scaled(kNarrowest), kLeft + widest + kGap + kChevrons + kRight);
    return {width + 2 * kRing, m_theme.scaled(kHeight) + 2 * kRing};
}

void Picker::showPopup()
{
    if (m_menu || !isEnabled())
        return;
    // Corners may be round where our window's are.
    m_menu = new Menu(m_theme, window()->testAttribute(Qt::WA_TranslucentBackground), this);
    m_menu->setAttribute(Qt::WA_DeleteOnClose);
    m_menu->setAccessibleName(accessibleName());
    for (int i = 0; i < count(); ++i) {
        QAction* choice = m_menu->add({}, itemText(i));
        choice->setCheckable(true);
        choice->setChecked(i == currentIndex());
        connect(choice, &QAction::triggered, this, [this, index = i] {
            setCurrentIndex(index);
            Q_EMIT activated(index);
        });
    }
    m_menu->setActiveAction(m_menu->actions().value(currentIndex()));
    // The menu is the wider one, and ends where the picker does.
    m_menu->popup(
        mapToGlobal(QPoint(width() - kRing - m_menu->sizeHint().width(), height() - kRing + kMenuGap)));
    update();
}

void Picker::hidePopup()
{
    if (m_menu)
        m_menu->close();
}

QColor Picker::face() const
{
    const ThemeColours& colours = m_theme.colours();
    const QColor rest = m_theme.isDark() ? colours.raised : colours.surface;
    if (!isEnabled() || (!m_menu && m_hover.value() <= 0.5))
        return rest;
    return m_theme.isDark() ? QColor(0x3C, 0x3C, 0x41) : colours.raised;
}

void Picker::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const ThemeColours& colours = m_theme.colours();
    const QRect area = rect().adjusted(kRing, kRing, -kRing, -kRing);
    painter.setPen(colours.edge);
    painter.setBrush(face());
    painter.drawRoundedRect(QRectF(area).adjusted(0.5, 0.5, -0.5, -0.5), Theme::kControlRadius,
                            Theme::kControlRadius);
    painter.setPen(isEnabled() ? colours.text : colours.tertiary);
    painter.setFont(m_theme.font(Theme::kBodySize));
    drawSingleLine(painter, area.adjusted(kLeft, 0, -kRight - kChevrons - kGap, 0), currentText());
    painter.drawPixmap(
        area.right() + 1 - kRight - kChevrons, area.top() + (area.height() - kChevrons) / 2,
        Symbol(QStringLiteral("chevron.up.chevron.down"))
            .pixmap(kChevrons, isEnabled() ? colours.secondaryText : colours.tertiary, devicePixelRatioF()));
    m_focusRing.paint(painter, m_theme, rect(), Theme::kControlRadius + kRing);
}

/// Turning the wheel scrolls what the picker stands in and changes nothing.
void Picker::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}

} // namespace tessary
