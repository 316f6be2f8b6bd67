#include "ui/quicksearch/FactsPanel.h"

#include "ui/kit/SingleLine.h"
#include "ui/kit/Theme.h"
#include "ui/quicksearch/TileImages.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace tessary {
namespace {

constexpr int kHeight = 68;
constexpr int kSidePadding = 20;
constexpr int kTop = 12;
constexpr int kRowHeight = 18;
constexpr int kRowStep = 26;
constexpr int kFirstValue = 68;
constexpr int kSecondLabel = 68 + 148;
constexpr int kSecondValue = 68 + 148 + 60;
constexpr int kValueGap = 8;
constexpr int kIcon = 16;
constexpr int kIconGap = 6;

} // namespace

FactsPanel::FactsPanel(const Theme& theme, TileImages& tiles, QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_tiles(tiles)
{
    setFixedHeight(kHeight);
    connect(&tiles, &TileImages::arrived, this, qOverload<>(&QWidget::update));
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
}

void FactsPanel::set(const ItemFacts& facts, const QString& iconPath)
{
    if (m_facts == facts && m_iconPath == iconPath)
        return;
    m_facts = facts;
    m_iconPath = iconPath;
    QStringList lines;
    const QList<Cell> all = cells();
    for (const Cell& cell : all)
        lines.append(cell.label + QStringLiteral(": ") + cell.value);
    setAccessibleName(lines.join(QStringLiteral("; ")));
    update();
}

QList<FactsPanel::Cell> FactsPanel::cells() const
{
    const auto cell = [this](const QString& label, const QString& value, int column, int row) {
        const int top = kTop + row * kRowStep;
        const int labelLeft = kSidePadding + (column == 0 ? 0 : kSecondLabel);
        const int valueLeft = kSidePadding + (column == 0 ? kFirstValue : kSecondValue);
        const int valueEnd = column == 0 ? kSidePadding + kSecondLabel - kValueGap : width() - kSidePadding;
        return Cell{label, value, QRect(labelLeft, top, valueLeft - labelLeft, kRowHeight),
                    QRect(valueLeft, top, valueEnd - valueLeft, kRowHeight)};
    };
    QList<Cell> cells{cell(tr("类型"), m_facts.kind, 0, 0), cell(tr("复制时间"), m_facts.time, 1, 0),
                      cell(tr("尺寸与大小"), m_facts.extent, 0, 1),
                      cell(tr("来源 App"), m_facts.source, 1, 1)};
    cells.last().hasIcon = true;
    return cells;
}

void FactsPanel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QFont font = m_theme.font(Theme::kCaptionSize);
    const QFontMetrics metrics(font);
    painter.setFont(font);
    const QList<Cell> all = cells();
    for (const Cell& cell : all) {
        painter.setPen(m_theme.colours().secondaryText);
        drawSingleLine(painter, cell.labelArea, cell.label);
        QRect area = cell.valueArea;
        const QPixmap icon =
            cell.hasIcon ? m_tiles.tile(m_iconPath, kIcon, TileImages::Fit::Whole, devicePixelRatioF())
                         : QPixmap();
        if (!icon.isNull()) {
            painter.drawPixmap(area.left(), area.top() + (kRowHeight - kIcon) / 2, icon);
            area.setLeft(area.left() + kIcon + kIconGap);
        }
        painter.setPen(m_theme.colours().text);
        drawSingleLine(painter, area, metrics.elidedText(cell.value, Qt::ElideRight, area.width()));
    }
}

bool FactsPanel::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const QFontMetrics metrics(m_theme.font(Theme::kCaptionSize));
    const QList<Cell> all = cells();
    for (const Cell& cell : all) {
        if (cell.valueArea.contains(help->pos()) &&
            metrics.horizontalAdvance(cell.value) >
                cell.valueArea.width() - (cell.hasIcon ? kIcon + kIconGap : 0)) {
            QToolTip::showText(help->globalPos(), cell.value, this);
            return true;
        }
    }
    QToolTip::hideText();
    return true;
}

} // namespace tessary
