#include "recognition/OCRStatusRow.h"

#include "ui/kit/AccessibleRole.h"
#include "ui/kit/SingleLine.h"
#include "ui/kit/Symbol.h"
#include "ui/kit/Theme.h"

#include <QPainter>

namespace tessary {
namespace {

constexpr int kHeight = 28;
constexpr int kGap = 12;
constexpr int kLineHeight = 12;
constexpr int kSymbolSize = 16;
constexpr int kSymbolGap = 6;
constexpr int kLeastStatus = 60;

struct Appearance {
    const char* symbol;
    QColor colour;
};

struct AppearanceOf {
    const ThemeColours& colours;

    Appearance operator()(const OCRReminderStatus::Ready&) const
    {
        return {"checklist", colours.secondaryText};
    }
    Appearance operator()(const OCRReminderStatus::Created&) const
    {
        return {"checkmark.circle.fill", colours.success};
    }
    Appearance operator()(const OCRReminderStatus::Failed&) const
    {
        return {"exclamationmark.circle", colours.danger};
    }
    Appearance operator()(const OCRReminderStatus::NotATask&) const
    {
        return {"text.viewfinder", colours.secondaryText};
    }
};

} // namespace

OCRStatusRow::OCRStatusRow(const Theme& theme, QWidget* parent) : QWidget(parent), m_theme(theme)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAccessibleRole(*this, QAccessible::StatusBar);
    connect(&theme, &Theme::changed, this, &OCRStatusRow::applyTheme);
    applyTheme();
}

void OCRStatusRow::applyTheme()
{
    setFont(m_theme.font(Theme::kCaptionSize));
    updateGeometry();
    describe();
}

void OCRStatusRow::setCharacterCount(qsizetype count)
{
    m_count = tr("%n 个字符", nullptr, static_cast<int>(count));
    describe();
}

void OCRStatusRow::setStatus(const OCRReminderStatus& status)
{
    m_status = status;
    m_text = status.text().simplified();
    describe();
}

void OCRStatusRow::describe()
{
    const QString name = m_count + QStringLiteral(", ") + m_text;
    if (accessibleName() != name)
        setAccessibleName(name); // which tells those who listen
    setToolTip(shownStatus() == m_text ? QString() : m_text);
    update();
}

int OCRStatusRow::countWidth() const
{
    return fontMetrics().horizontalAdvance(m_count);
}

int OCRStatusRow::statusLeft() const
{
    return countWidth() + kGap + 1 + kGap + m_theme.scaled(kSymbolSize) + kSymbolGap;
}

QString OCRStatusRow::shownStatus() const
{
    return fontMetrics().elidedText(m_text, Qt::ElideRight, std::max(0, width() - statusLeft()));
}

QSize OCRStatusRow::sizeHint() const
{
    return {statusLeft() + fontMetrics().horizontalAdvance(m_text), m_theme.fitting(kHeight, kSymbolSize)};
}

QSize OCRStatusRow::minimumSizeHint() const
{
    return {statusLeft() + m_theme.scaled(kLeastStatus), m_theme.fitting(kHeight, kSymbolSize)};
}

void OCRStatusRow::resizeEvent(QResizeEvent*)
{
    describe();
}

void OCRStatusRow::paintEvent(QPaintEvent*)
{
    const ThemeColours& colours = m_theme.colours();
    const Appearance appearance = std::visit(AppearanceOf{colours}, m_status.value);
    QPainter painter(this);
    painter.setFont(font());
    painter.setPen(colours.secondaryText);
    drawSingleLine(painter, rect(), m_count);
    int left = countWidth() + kGap;
    const int line = m_theme.scaled(kLineHeight);
    painter.fillRect(left, (height() - line) / 2, 1, line, colours.edge);
    left += 1 + kGap;
    const int size = m_theme.scaled(kSymbolSize);
    painter.drawPixmap(
        left, (height() - size) / 2,
        Symbol(QString::fromLatin1(appearance.symbol)).pixmap(size, appearance.colour, devicePixelRatioF()));
    painter.setPen(appearance.colour);
    drawSingleLine(painter, QRect(statusLeft(), 0, width() - statusLeft(), height()), shownStatus());
}

} // namespace tessary
