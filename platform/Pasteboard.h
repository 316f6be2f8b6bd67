#pragma once

#include "platform/Support.h"

#include <QByteArray>

#include <qcoro/qcorotask.h>

#include <optional>

namespace tessary {

enum class PasteboardType {
    Png,    ///< image/png, as it came.
    Bitmap, ///< Any other bitmap that the owner offers: TIFF, BMP, JPEG, WebP.
    Text,   ///< Plain text in UTF-8.
};

/// The system clipboard. Main thread only; reading is asynchronous and never blocks it.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;
    /// Whether changes are seen while none of our windows has the focus.
    [[nodiscard]] virtual Support support() const = 0;
    /// Grows by at least 1 whenever a program replaces the contents, never when an owner just goes away.
    /// One atomic read.
    [[nodiscard]] virtual qint64 changeCount() const = 0;
    /// What the clipboard held in that type when it had that change count. The platform fetches the
    /// contents the moment they change and keeps them until the next change that nobody is waiting for.
    /// @returns nothing when the type is not offered or empty, the owner hung (2 s without progress),
    ///          lied, died, marked the content as secret, offers over 512 MiB, or the count is too old.
    [[nodiscard]] virtual QCoro::Task<std::optional<QByteArray>> data(qint64 changeCount,
                                                                      PasteboardType type) = 0;
    /// Whether contents are fetched at all; at first they are not. Changes are counted either way.
    virtual void setFetching(bool isFetching) = 0;
    /// Lets go of what is kept for that change count or an older one; it has been dealt with.
    virtual void release(qint64 changeCount) = 0;
};

} // namespace tessary
