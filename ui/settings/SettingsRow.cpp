#include "ui/settings/SettingsRow.h"

#include "ui/kit/SymbolView.h"
#include "ui/kit/Theme.h"
#include "ui/kit/ThemedLabel.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace tessary {
namespace {

constexpr int kLowest = 44;
constexpr int kLeft = 16;
constexpr int kRight = 12;
constexpr int kSymbol = 16;
constexpr int kGap = 12;
constexpr int kControlGap = 8;
constexpr int kPadding = 8;     // above and below texts
constexpr int kRingPadding = 5; // above and below controls, which have room for their ring
constexpr int kWarningSymbol = 12;
constexpr int kSmallGap = 4;
constexpr int kLabelLine = 20;

} // namespace

SettingsRow::SettingsRow(const Theme& theme, const QString& symbol, const QString& label, QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_symbol(new SymbolView(theme, symbol, kSymbol, &ThemeColours::secondaryText)),
      m_label(new ThemedLabel(theme, ThemedLabel::kBody, label)),
      m_warningLine(new QWidget),
      m_warning(new ThemedLabel(theme, ThemedLabel::kWarning)),
      m_line(new QHBoxLayout(this)),
      m_texts(new QVBoxLayout),
      m_controls(new QHBoxLayout)
{
    m_label->setWordWrap(true);
    m_warning->setWordWrap(true);
    auto* warning = new QHBoxLayout(m_warningLine);
    warning->setContentsMargins(0, kSmallGap, 0, 0);
    warning->setSpacing(kSmallGap);
    warning->addWidget(new SymbolView(theme, QStringLiteral("exclamationmark.triangle.fill"), kWarningSymbol,
                                      &ThemeColours::warning));
    warning->addWidget(m_warning, 1);
    m_warningLine->hide();
    m_texts->setContentsMargins(0, kPadding - kRingPadding, 0, kPadding - kRingPadding);
    m_texts->setSpacing(0);
    m_texts->addStretch(1);
    m_texts->addWidget(m_label);
    m_texts->addWidget(m_warningLine);
    m_texts->addStretch(1);
    m_controls->setSpacing(kControlGap);
    m_line->setContentsMargins(kLeft, kRingPadding, kRight, kRingPadding);
    m_line->setSpacing(kGap);
    m_line->addWidget(m_symbol);
    m_line->addLayout(m_texts, 1);
    m_line->addLayout(m_controls);
    const auto applyTheme = [this] { setMinimumHeight(m_theme.scaled(kLowest)); };
    applyTheme();
    connect(&theme, &Theme::changed, this, applyTheme);
}

ThemedLabel& SettingsRow::note()
{
    if (m_note == nullptr) {
        m_note = new ThemedLabel(m_theme, ThemedLabel::kNote);
        m_texts->insertWidget(m_texts->indexOf(m_warningLine), m_note);
    }
    return *m_note;
}

void SettingsRow::setNote(const QString& text)
{
    note().setWordWrap(true);
    note().setText(text);
}

void SettingsRow::setPath(const QString& path)
{
    note().setElided(path);
}

void SettingsRow::setWarning(const QString& text)
{
    m_warning->setText(text);
    m_warningLine->setVisible(!text.isEmpty());
}

QString SettingsRow::warning() const
{
    return m_warning->text();
}

void SettingsRow::setPicture(const QImage& picture)
{
    m_symbol->setPicture(picture);
}

void SettingsRow::setLabelElided(const QString& text)
{
    m_label->setWordWrap(false);
    m_label->setElided(text);
}

void SettingsRow::setPlaceholder()
{
    m_label->setColour(&ThemeColours::secondaryText);
}

void SettingsRow::alignAtTop()
{
    m_line->removeItem(m_controls);
    m_controls->setParent(nullptr);
    m_texts->removeWidget(m_label);
    auto* first = new QHBoxLayout;
    first->setSpacing(kGap);
    first->addWidget(m_label, 1);
    first->addLayout(m_controls);
    m_texts->insertLayout(1, first);
    m_texts->insertSpacing(2, kSmallGap);
    // In the middle of the first line.
    auto* column = new QVBoxLayout;
    m_line->removeWidget(m_symbol);
    column->addSpacing(kPadding - kRingPadding + (m_theme.scaled(kLabelLine) - kSymbol) / 2);
    column->addWidget(m_symbol);
    column->addStretch(1);
    m_line->insertLayout(0, column);
}

void SettingsRow::addControl(QWidget& control, Bleed bleed)
{
    if (control.accessibleName().isEmpty()) {
        control.setAccessibleName(label());
        m_label->setBuddy(&control); // what a screen reader calls a combo box, whose name is its value
    }
    m_controls->addWidget(&control, 0, Qt::AlignVCenter);
    m_line->setContentsMargins(kLeft, m_line->contentsMargins().top(), kRight - static_cast<int>(bleed),
                               kRingPadding);
}

QString SettingsRow::label() const
{
    return m_label->wholeText();
}

} // namespace tessary
