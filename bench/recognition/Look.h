#pragma once

#include "bench/recognition/Dice.h"

#include <QColor>
#include <QFont>

namespace tessary::bench {

enum class Half { Tuning, Reporting };
enum class Smoothing {
    Grey,
    Subpixel, ///< With the colours of a panel whose pixels are red, green and blue stripes.
};
enum class Face { Proportional, Monospaced };

/// How a picture's text looks: fonts of a desktop, its colours, its scale.
struct Look {
    QFont font; ///< With the Latin family first, as desktops have it.
    QColor background;
    QColor text;
    QColor secondary; ///< For captions; still easy to read.
    QColor card;      ///< For cards, bubbles and rows; `text` is readable on it.
    QColor accent;    ///< For icons and default buttons, with white text on it.
    bool dark = false;
    Smoothing smoothing = Smoothing::Grey;
    int scale = 1; ///< Device pixels to a logical one.
};

/// The halves have no font in common. `script` as in SourceTexts.
[[nodiscard]] Look makeLook(Dice& dice, Half half, const QString& script, Face face = Face::Proportional);

} // namespace tessary::bench
