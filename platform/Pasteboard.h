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

/// Where written contents can be pasted from.
enum class PasteboardReach {
    Clipboard,
    ClipboardAndSelection, ///< Also what a middle click or a terminal's own paste key inserts.
};

/// The system clipboard. Main thread only; reading and writing are asynchronous and never block it.
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
    /// Replaces the contents by plain text. Like any other program's write it raises the change count, and
    /// the text comes back through `data`. @returns false when the session did not let us.
    [[nodiscard]] virtual QCoro::Task<bool> writeText(QString text, PasteboardReach reach) = 0;
    /// Replaces the contents by the picture in that file: the file's own bytes, and a PNG made of them when
    /// somebody asks for one. The file may be deleted afterwards.
    /// @returns false when it cannot be read or is no PNG, JPEG, TIFF or HEIF picture, with the contents left
    ///          as they were; also when the session did not let us.
    [[nodiscard]] virtual QCoro::Task<bool> writeImage(QString path, PasteboardReach reach) = 0;
    /// Before the program ends: gives what we wrote to whoever keeps clipboards in this session, so that it
    /// can still be pasted. Ends within 6 s, and 2 s after the last progress.
    [[nodiscard]] virtual QCoro::Task<> handOver() = 0;
};

} // namespace tessary
