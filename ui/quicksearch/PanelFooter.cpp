#include "ui/quicksearch/PanelFooter.h"

#include "ui/kit/KeyCap.h"
#include "ui/kit/Theme.h"

#include <QHBoxLayout>
#include <QLabel>

namespace tessary {
namespace {

constexpr int kHeight = 36;
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
    setFixedHeight(kHeight);
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
    m_count->setText(QString::number(count) + tr(" 个结果"));
}

void PanelFooter::addHint(const QString& keys, const QString& word)
{
    auto* row = static_cast<QHBoxLayout*>(layout());
    row->addSpacing(kHintGap);
    row->addWidget(new KeyCap(m_theme, keys, this));
    row->addSpacing(kWordGap);
    row->addWidget(new QLabel(word, this));
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
}

} // namespace tessary
