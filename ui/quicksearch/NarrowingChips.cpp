#include "ui/quicksearch/NarrowingChips.h"

#include "ui/kit/Chip.h"
#include "ui/kit/SymbolButton.h"
#include "ui/kit/Theme.h"

#include <QHBoxLayout>
#include <QScrollBar>
#include <QWheelEvent>

namespace tessary {
namespace {

constexpr int kHeight = 36;
constexpr int kLineHeight = 16;
constexpr int kLeft = 68;
constexpr int kRight = 20;
constexpr int kBelow = 12;
constexpr int kGap = 8;

} // namespace

NarrowingChips::NarrowingChips(const Theme& theme, QWidget* parent)
    : QScrollArea(parent),
      m_theme(theme),
      m_row(new QWidget),
      m_layout(new QHBoxLayout(m_row))
{
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    setViewportMargins(kLeft, 0, kRight, 0);
    m_row->setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
    m_layout->setContentsMargins(0, 0, 0, kBelow);
    m_layout->setSpacing(kGap);
    setWidget(m_row);
    m_row->setAutoFillBackground(false); // setWidget turned it on
    connect(&theme, &Theme::changed, this, &NarrowingChips::applyTheme);
    applyTheme();
    hide();
}

void NarrowingChips::applyTheme()
{
    setFixedHeight(m_theme.fitting(kHeight, kLineHeight));
}

void NarrowingChips::set(const QList<Narrowing>& narrowings)
{
    if (m_narrowings == narrowings)
        return;
    m_narrowings = narrowings;
    rebuild();
}

void NarrowingChips::rebuild()
{
    while (QLayoutItem* item = m_layout->takeAt(0)) {
        if (QWidget* chip = item->widget()) {
            chip->hide();
            chip->deleteLater(); // its own button may be what removed it
        }
        delete item;
    }
    QWidget* before = m_tabbedAfter; // new widgets would be the last ones that Tab comes to
    for (const Narrowing& narrowing : m_narrowings) {
        auto* chip = new Chip(m_theme, narrowing.text, m_row);
        connect(chip, &Chip::removed, this, [this, narrowing] { Q_EMIT removed(narrowing); });
        m_layout->addWidget(chip);
        if (before != nullptr)
            setTabOrder(before, &chip->removeButton());
        before = &chip->removeButton();
        chip->show();
    }
    m_layout->addStretch(1);
    setVisible(!m_narrowings.isEmpty());
}

void NarrowingChips::wheelEvent(QWheelEvent* event)
{
    const QPoint step = event->angleDelta();
    const int distance = step.x() != 0 ? step.x() : step.y();
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - distance / 2);
    event->accept();
}

} // namespace tessary
