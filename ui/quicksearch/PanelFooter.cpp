#include "ui/quicksearch/PanelFooter.h"

#include "ui/kit/AccessibleRole.h"
#include "ui/kit/KeyCap.h"
#include "ui/kit/Theme.h"

#include <QHBoxLayout>
#include <QLabel>

namespace tessary {
namespace {

constexpr int kHeight = 36;
constexpr int kLineHeight = 16;
constexpr int kLeft = 16;
constexpr int kRight = 20;
constexpr int kHintGap = 16;
constexpr int kWordGap = 6;

} // namespace

PanelFooter::PanelFooter(const Theme& theme, QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_count(new QLabel(this))
{
    setAccessibleRole(*m_count, QAccessible::StatusBar);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(kLeft, 0, kRight, 0);
    layout->setSpacing(0);
    layout->addWidget(m_count);
    layout->addStretch(1);
    addHint(QStringLiteral("↑↓"), tr("选择"));
    addHint(QStringLiteral("Space"), tr("预览"));
    addHint(QStringLiteral("↵"), tr("复制"));
    addHint(QStringLiteral("⌘V"), tr("粘贴"));
    addHint(QStringLiteral("esc"), tr("关闭"));
    connect(&theme, &Theme::changed, this, &PanelFooter::applyTheme);
    applyTheme();
    setCount(0);
}

void PanelFooter::setCount(qsizetype count)
{
    const QString text = tr("%n 个结果", nullptr, static_cast<int>(count));
    if (m_count->text() == text)
        return;
    m_count->setText(text);
    m_count->setAccessibleName(text); // which tells those who listen
    showHints();
}

void PanelFooter::addHint(const QString& keys, const QString& word)
{
    auto* hint = new QWidget(this);
    auto* inside = new QHBoxLayout(hint);
    inside->setContentsMargins(kHintGap, 0, 0, 0);
    inside->setSpacing(kWordGap);
    inside->addWidget(new KeyCap(m_theme, keys, hint));
    inside->addWidget(new QLabel(word, hint));
    layout()->addWidget(hint);
    m_hints.append(hint);
}

/// As many of the last ones as there is room for: how to close and to paste is harder to guess than how to
/// choose.
void PanelFooter::showHints()
{
    int room = width() - kLeft - kRight - m_count->sizeHint().width();
    for (auto hint = m_hints.crbegin(); hint != m_hints.crend(); ++hint) {
        room -= (*hint)->sizeHint().width();
        (*hint)->setVisible(room >= 0);
    }
}

void PanelFooter::resizeEvent(QResizeEvent*)
{
    showHints();
}

void PanelFooter::applyTheme()
{
    QPalette palette = m_theme.palette();
    palette.setColor(QPalette::WindowText, m_theme.colours().secondaryText);
    const QList<QLabel*> labels = findChildren<QLabel*>();
    for (QLabel* label : labels) {
        label->setPalette(palette);
        label->setFont(m_theme.font(Theme::kCaptionSize));
    }
    setFixedHeight(m_theme.fitting(kHeight, kLineHeight));
    showHints();
}

} // namespace tessary
