#include "ui/settings/SettingsPage.h"

#include "ui/kit/OverlayScrollBar.h"
#include "ui/kit/Switch.h"
#include "ui/kit/Theme.h"
#include "ui/kit/ThemedLabel.h"
#include "ui/settings/SettingsCard.h"
#include "ui/settings/SettingsRow.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include <algorithm>

namespace tessary {
namespace {

constexpr int kWidest = 640;
constexpr int kLeastMargin = 24;
constexpr int kTop = 4;
constexpr int kBottom = 20;
constexpr int kGroupGap = 20;
constexpr int kHeadingInset = 4;
constexpr int kHeadingGap = 8;
constexpr int kNoteGap = 2;
constexpr int kRing = 3; // that buttons reach beyond what is seen of them

} // namespace

SettingsPage::SettingsPage(const Theme& theme, QWidget* parent) : QScrollArea(parent), m_theme(theme)
{
    auto* content = new QWidget;
    m_column = new QVBoxLayout(content);
    m_column->setSpacing(0);
    m_column->addStretch(1);
    setWidget(content);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    // Our corners are the window's.
    viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    new OverlayScrollBar(theme, *this);
    connect(&theme, &Theme::changed, this, &SettingsPage::layOut);
}

void SettingsPage::addWidget(QWidget* widget)
{
    // The ends of all faces, and of the cards, are in one line: what has no ring stays away from it.
    if (m_column->count() > 1)
        m_column->insertSpacing(m_column->count() - 1, kGroupGap);
    m_column->insertWidget(m_column->count() - 1, widget);
}

SettingsCard& SettingsPage::addGroup(const QString& title, const QString& note, QWidget* button)
{
    auto* group = new QWidget;
    auto* column = new QVBoxLayout(group);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    auto* card = new SettingsCard(m_theme);
    if (!title.isEmpty()) {
        auto* texts = new QVBoxLayout;
        texts->setContentsMargins(kHeadingInset, 0, kHeadingInset, 0);
        texts->setSpacing(kNoteGap);
        texts->addStretch(1);
        texts->addWidget(new ThemedLabel(m_theme, ThemedLabel::kTitle, title));
        if (!note.isEmpty()) {
            auto* label = new ThemedLabel(m_theme, ThemedLabel::kNote, note);
            label->setWordWrap(true);
            texts->addWidget(label);
        }
        auto* heading = new QHBoxLayout;
        heading->setContentsMargins(0, 0, 0, kHeadingGap - (button != nullptr ? kRing : 0));
        heading->addLayout(texts, 1);
        if (button != nullptr)
            heading->addWidget(button, 0, Qt::AlignBottom);
        column->addLayout(heading);
        card->setAccessibleName(title);
    }
    auto* line = new QHBoxLayout;
    line->setContentsMargins(0, 0, kRing, 0);
    line->addWidget(card);
    column->addLayout(line);
    addWidget(group);
    return *card;
}

Switch& SettingsPage::addSwitch(SettingsRow& row, AppSettings& settings, const Toggle& toggle,
                                std::function<void()> then)
{
    auto* control = new Switch(m_theme);
    control->setChecked((settings.*toggle.value)());
    row.addControl(*control);
    connect(&settings, toggle.changed, control, [control, &settings, toggle] {
        const QSignalBlocker quiet(control); // the person did not do it
        control->setChecked((settings.*toggle.value)());
    });
    connect(control, &QAbstractButton::toggled, this, [&settings, toggle, then = std::move(then)](bool isOn) {
        (settings.*toggle.assign)(isOn);
        if (then)
            then();
    });
    return *control;
}

void SettingsPage::layOut()
{
    const int wanted = std::min(m_theme.scaled(kWidest), width() - 2 * kLeastMargin);
    const int margin = (width() - wanted) / 2;
    m_column->setContentsMargins(margin, kTop, margin - kRing, kBottom);
}

void SettingsPage::resizeEvent(QResizeEvent* event)
{
    layOut();
    QScrollArea::resizeEvent(event);
}

} // namespace tessary
