#include "recognition/RegionSelectionView.h"

#include "ui/kit/AccessibleRole.h"
#include "ui/kit/Theme.h"

#include <QPaintEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace tessary {
namespace {

constexpr qreal kSmallestSide = 4; // less is a click, or a slip

constexpr qreal kDim = 0.28;
constexpr qreal kSurroundings = 0.48; // on top of the dim
constexpr qreal kOutline = 2;

constexpr int kInstructionSize = 15;
constexpr qreal kPlate = 0.82;
constexpr qreal kPlateRadius = 10;
constexpr QMarginsF kPlatePadding(16, 8, 16, 8);

constexpr int kLabelSize = 12;
constexpr qreal kLabelFill = 0.72;
constexpr qreal kLabelRadius = 4;
constexpr int kLabelHeight = 20;
constexpr int kLabelLine = 16;
constexpr qreal kLabelPadding = 6;
constexpr qreal kLabelDrop = 24; // of its lower edge below the selection
constexpr qreal kLabelEdge = 8;  // at least this far from the lower edge of the screen

QColor black(qreal alpha)
{
    return QColor::fromRgbF(0, 0, 0, static_cast<float>(alpha));
}

} // namespace

RegionSelectionView::RegionSelectionView(const Theme& theme, QImage picture, QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_picture(std::move(picture))
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(tr("拖动选择需要识别的文字区域 · Esc 取消"));
    setAccessibleRole(*this, QAccessible::StaticText);
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
}

// --- dragging ---------------------------------------------------------------

void RegionSelectionView::mouseDown(const QPointF& point)
{
    moveTo(inside(point), inside(point));
}

void RegionSelectionView::mouseDragged(const QPointF& point)
{
    moveTo(m_startPoint, inside(point));
}

void RegionSelectionView::mouseUp(const QPointF& point)
{
    mouseDragged(point);
    const QRectF rect = selection();
    if (rect.width() < kSmallestSide || rect.height() < kSmallestSide)
        onCancel();
    else
        onSelection(rect);
}

QRectF RegionSelectionView::selection() const
{
    return QRectF(m_startPoint, m_currentPoint).normalized();
}

void RegionSelectionView::moveTo(const QPointF& startPoint, const QPointF& currentPoint)
{
    const QRectF before = selection();
    const QRegion drawnBefore = drawnAround();
    m_startPoint = startPoint;
    m_currentPoint = currentPoint;
    const QRectF after = selection();
    if (before.isEmpty() != after.isEmpty())
        update(); // the instruction and the surroundings change everywhere
    else
        update(QRegion(before.toAlignedRect()).xored(after.toAlignedRect()) + drawnBefore + drawnAround());
}

QPointF RegionSelectionView::inside(const QPointF& point) const
{
    return {std::clamp<qreal>(point.x(), 0, width()), std::clamp<qreal>(point.y(), 0, height())};
}

QRegion RegionSelectionView::drawnAround() const
{
    const QRectF selected = selection();
    if (selected.isEmpty())
        return {};
    const QRegion outer(selected.adjusted(-kOutline, -kOutline, kOutline, kOutline).toAlignedRect());
    const QRegion inner(selected.adjusted(kOutline, kOutline, -kOutline, -kOutline).toRect());
    return outer.subtracted(inner) + labelRect().toAlignedRect();
}

// --- drawing ----------------------------------------------------------------

void RegionSelectionView::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    painter.setClipRegion(event->region());
    painter.fillRect(rect(), Qt::black);
    painter.drawImage(QRectF(rect()), m_picture);
    painter.fillRect(rect(), black(kDim));
    if (selection().isEmpty())
        drawInstruction(painter);
    else
        drawSelection(painter);
}

void RegionSelectionView::drawInstruction(QPainter& painter) const
{
    const QString text = tr("拖动选择需要识别的文字区域 · Esc 取消");
    painter.setFont(m_theme.font(kInstructionSize));
    const QRectF room = QRectF(rect()).marginsRemoved(kPlatePadding);
    const QRectF place = painter.boundingRect(room, Qt::AlignCenter | Qt::TextWordWrap, text);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(black(kPlate));
    painter.drawRoundedRect(place.marginsAdded(kPlatePadding), kPlateRadius, kPlateRadius);
    painter.setPen(Qt::white);
    painter.drawText(place, Qt::AlignCenter | Qt::TextWordWrap, text);
}

void RegionSelectionView::drawSelection(QPainter& painter) const
{
    const QRectF selected = selection();
    QPainterPath surroundings;
    surroundings.setFillRule(Qt::OddEvenFill);
    surroundings.addRect(rect());
    surroundings.addRect(selected);
    painter.fillPath(surroundings, black(kSurroundings));
    constexpr qreal kInset = 0.5;
    painter.setPen(QPen(m_theme.overlayOutline(), kOutline, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(selected.adjusted(kInset, kInset, -kInset, -kInset));
    drawLabel(painter);
}

void RegionSelectionView::drawLabel(QPainter& painter) const
{
    const QRectF label = labelRect();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(black(kLabelFill));
    painter.drawRoundedRect(label, kLabelRadius, kLabelRadius);
    painter.setFont(m_theme.font(kLabelSize));
    painter.setPen(Qt::white);
    painter.drawText(label, Qt::AlignCenter, sizeText());
}

QString RegionSelectionView::sizeText() const
{
    const QRectF selected = selection();
    return QStringLiteral("%1 × %2")
        .arg(static_cast<int>(selected.width()))
        .arg(static_cast<int>(selected.height()));
}

/// Under the selection, or inside it where the screen ends; never off the screen.
QRectF RegionSelectionView::labelRect() const
{
    const QRectF selected = selection();
    if (selected.isEmpty())
        return {};
    const qreal wanted = QFontMetricsF(m_theme.font(kLabelSize)).horizontalAdvance(sizeText());
    const qreal labelWidth = wanted + 2 * kLabelPadding;
    const qreal labelHeight = m_theme.fitting(kLabelHeight, kLabelLine);
    const qreal drop = kLabelDrop + labelHeight - kLabelHeight;
    const qreal bottom = std::min(selected.bottom() + drop, height() - kLabelEdge);
    const qreal left = std::max<qreal>(0, std::min(selected.left(), width() - labelWidth));
    return {left, bottom - labelHeight, labelWidth, labelHeight};
}

} // namespace tessary
