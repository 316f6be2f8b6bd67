#include "ui/quicksearch/FactsPanel.h"

#include "ui/kit/AccessibleRole.h"
#include "ui/kit/SingleLine.h"
#include "ui/kit/Theme.h"
#include "ui/quicksearch/TileImages.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace tessary {
namespace {

constexpr int kSidePadding = 20;
constexpr int kTop = 12;
constexpr int kRowHeight = 18;
constexpr int kRowGap = 8;
constexpr int kFirstLabel = 68; // the columns, where the words are no wider
constexpr int kFirstValue = 148;
constexpr int kSecondLabel = 60;
constexpr int kNarrowestValue = 120; // with less beside each other the facts stand below each other
constexpr int kTightGap = 2;         // between them then
constexpr int kLabelGap = 8;
constexpr int kValueGap = 8;
constexpr int kIcon = 16;
constexpr int kIconGap = 6;

} // namespace

FactsPanel::FactsPanel(const Theme& theme, TileImages& tiles, QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_tiles(tiles)
{
    setAccessibleRole(*this, QAccessible::StaticText);
    connect(&tiles, &TileImages::arrived, this, qOverload<>(&QWidget::update));
    connect(&theme, &Theme::changed, this, &FactsPanel::layOut);
    layOut();
}

void FactsPanel::layOut()
{
    const int row = m_theme.scaled(kRowHeight);
    setFixedHeight(isOneColumn() ? 2 * kTop + 4 * row + 3 * kTightGap : 2 * kTop + 2 * row + kRowGap);
    update();
}

int FactsPanel::labelWidth(const QStringList& labels, int designed) const
{
    const QFontMetrics metrics(m_theme.font(Theme::kCaptionSize));
    int width = designed;
    for (const QString& label : labels)
        width = std::max(width, metrics.horizontalAdvance(label) + kLabelGap);
    return width;
}

bool FactsPanel::isOneColumn() const
{
    const int labels = labelWidth({tr("类型"), tr("尺寸与大小")}, kFirstLabel) +
                       labelWidth({tr("复制时间"), tr("来源 App")}, kSecondLabel);
    const int values = width() - 2 * kSidePadding - labels - kValueGap;
    return values < 2 * m_theme.scaled(kNarrowestValue);
}

void FactsPanel::resizeEvent(QResizeEvent*)
{
    layOut();
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
    QList<Cell> cells{{tr("类型"), m_facts.kind},
                      {tr("复制时间"), m_facts.time},
                      {tr("尺寸与大小"), m_facts.extent},
                      {tr("来源 App"), m_facts.source}};
    cells.last().hasIcon = true;
    const int row = m_theme.scaled(kRowHeight);
    const int end = width() - kSidePadding;
    const auto place = [row](Cell& cell, const QPoint& at, int label, int valueEnd) {
        cell.labelArea = QRect(at, QSize(label, row));
        cell.valueArea = QRect(at.x() + label, at.y(), valueEnd - at.x() - label, row);
    };
    if (isOneColumn()) {
        const int label = labelWidth({cells[0].label, cells[1].label, cells[2].label, cells[3].label}, 0);
        for (int i = 0; i < cells.size(); ++i)
            place(cells[i], QPoint(kSidePadding, kTop + i * (row + kTightGap)), label, end);
        return cells;
    }
    const int first = labelWidth({cells[0].label, cells[2].label}, kFirstLabel);
    const int second = labelWidth({cells[1].label, cells[3].label}, kSecondLabel);
    const int middle = kSidePadding + first + m_theme.scaled(kFirstValue);
    for (int i = 0; i < cells.size(); ++i) {
        const int top = kTop + i / 2 * (row + kRowGap);
        if (i % 2 == 0)
            place(cells[i], QPoint(kSidePadding, top), first, middle - kValueGap);
        else
            place(cells[i], QPoint(middle, top), second, end);
    }
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
            painter.drawPixmap(area.left(), area.top() + (area.height() - kIcon) / 2, icon);
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
