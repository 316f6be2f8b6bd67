#pragma once

#include <QRect>

#include <vector>

namespace tessary::recognizer {

/// Where one line of text is, in pixels of the picture.
struct TextLine {
    QRect box;                      ///< Around its ink.
    std::vector<QRect> pieces = {}; ///< Around each connected piece of it, in no order.
    bool maybeIcon = false;         ///< So short that it may be a picture instead.

    void add(const QRect& piece)
    {
        box |= piece;
        pieces.push_back(piece);
    }
    void add(const TextLine& other)
    {
        box |= other.box;
        pieces.insert(pieces.end(), other.pieces.begin(), other.pieces.end());
    }
};

/// The height that the line's pieces have which, weighed by their width, are in the middle.
[[nodiscard]] int usualHeight(const TextLine& line);

/// How many rows both cover.
[[nodiscard]] inline int commonHeight(const QRect& one, const QRect& other)
{
    return std::min(one.bottom(), other.bottom()) - std::max(one.top(), other.top()) + 1;
}

/// The free columns between two boxes; negative where they overlap.
[[nodiscard]] inline int gapBetween(const QRect& one, const QRect& other)
{
    return std::max(one.left(), other.left()) - std::min(one.right(), other.right()) - 1;
}

} // namespace tessary::recognizer
