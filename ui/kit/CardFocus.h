#pragma once

#include "ui/kit/FocusRing.h"

#include <QObject>

class QWidget;

namespace tessary {

/// The focus ring of something that lies on a card and does not draw one itself: follows what has the focus,
/// and the card draws the ring.
class CardFocus : public QObject {
    Q_OBJECT
public:
    /// @param card is drawn anew when the ring comes or goes; owns this.
    CardFocus(QWidget& content, QWidget& card);

    void paint(QPainter& painter, const Theme& theme, const QRectF& rectangle, double radius) const
    {
        m_ring.paint(painter, theme, rectangle, radius);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget& m_card;
    FocusRing m_ring;
};

} // namespace tessary
