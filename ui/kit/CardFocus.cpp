#include "ui/kit/CardFocus.h"

#include <QEvent>
#include <QWidget>

namespace tessary {

CardFocus::CardFocus(QWidget& content, QWidget& card) : QObject(&card), m_card(card)
{
    content.installEventFilter(this);
}

bool CardFocus::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn)
        m_ring.focusIn(*static_cast<QFocusEvent*>(event));
    else if (event->type() == QEvent::FocusOut)
        m_ring.focusOut();
    else
        return QObject::eventFilter(watched, event);
    m_card.update();
    return false;
}

} // namespace tessary
