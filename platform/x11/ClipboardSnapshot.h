#pragma once

#include "platform/Pasteboard.h"

#include <QByteArray>

#include <optional>

namespace tessary {

/// What the clipboard held after one change, as far as we take it; all empty when it was secret.
struct ClipboardSnapshot {
    std::optional<QByteArray> png;
    std::optional<QByteArray> bitmap;
    std::optional<QByteArray> text; ///< UTF-8.

    [[nodiscard]] const std::optional<QByteArray>& of(PasteboardType type) const
    {
        switch (type) {
        case PasteboardType::Png:
            return png;
        case PasteboardType::Bitmap:
            return bitmap;
        case PasteboardType::Text:
            break;
        }
        return text;
    }
};

} // namespace tessary
