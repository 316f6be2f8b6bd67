#include "ui/settings/SettingsCard.h"

#include "ui/kit/Theme.h"
#include "ui/settings/SettingsRow.h"

#include <QPainter>
#include <QVBoxLayout>

#include <utility>

namespace tessary {
namespace {

constexpr int kSeparatorLeft = 44;

} // namespace

SettingsCard::SettingsCard(const Theme& theme, QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_column(new QVBoxLayout(this))
{
    m_column->setContentsMargins(0, 0, 0, 0);
    m_column->setSpacing(0);
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
}

SettingsRow& SettingsCard::add(SettingsRow* row)
{
    m_column->addWidget(row);
    row->show(); // now: it may be given the focus
    m_rows.append(row);
    return *row;
}

/// Rows are let go of later: one of their buttons may have asked for this.
void SettingsCard::replace(const QList<SettingsRow*>& rows)
{
    for (SettingsRow* row : std::exchange(m_rows, {})) {
        m_column->removeWidget(row);
        row->hide();
        row->deleteLater();
    }
    for (SettingsRow* row : rows)
        add(row);
}

void SettingsCard::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(m_theme.colours().hairline);
    painter.setBrush(m_theme.colours().surface);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Theme::kCardRadius,
                            Theme::kCardRadius);
    for (qsizetype i = 1; i < m_rows.size(); ++i)
        painter.fillRect(kSeparatorLeft, m_rows.at(i)->y(), width() - kSeparatorLeft, 1,
                         m_theme.colours().hairline);
}

} // namespace tessary
