#pragma once

#include "platform/x11/PictureFile.h"

#include <QByteArray>
#include <QList>

#include <memory>
#include <optional>

namespace tessary {

/// Bytes that can be read piece by piece: in memory, or in a file held open. Cheap to copy; any thread.
class OfferedBytes {
public:
    explicit OfferedBytes(QByteArray bytes) : m_bytes(std::move(bytes)) {}
    explicit OfferedBytes(std::shared_ptr<const PictureFile> file) : m_file(std::move(file)) {}

    [[nodiscard]] qint64 size() const { return m_file ? m_file->size() : m_bytes.size(); }
    /// Whether `read` waits for the disk.
    [[nodiscard]] bool blocks() const { return m_file != nullptr; }
    /// Empty when the file could not be read.
    [[nodiscard]] QByteArray read(qint64 offset, qint64 length) const
    {
        return m_file ? m_file->read(offset, length) : m_bytes.sliced(offset, length);
    }

private:
    QByteArray m_bytes;
    std::shared_ptr<const PictureFile> m_file;
};

/// What we put on the clipboard, and in which forms it can be asked for. Immutable; any thread.
class ClipboardOffer {
public:
    /// How one target is answered.
    struct Form {
        QByteArray type;                   ///< The type of the answer, which may differ from its target.
        std::optional<OfferedBytes> bytes; ///< Nothing: a PNG has to be made of the picture first.
    };

    [[nodiscard]] static std::shared_ptr<const ClipboardOffer> text(QByteArray utf8);
    /// @param picture never null.
    [[nodiscard]] static std::shared_ptr<const ClipboardOffer>
    image(std::shared_ptr<const PictureFile> picture);

    /// The targets that carry the contents, best first.
    [[nodiscard]] QList<QByteArray> targets() const;
    /// Nothing when the contents are not offered in that target.
    [[nodiscard]] std::optional<Form> form(const QByteArray& target) const;
    /// The text in UTF-8; nothing for a picture.
    [[nodiscard]] const std::optional<QByteArray>& utf8() const { return m_utf8; }
    /// Null for a text.
    [[nodiscard]] const std::shared_ptr<const PictureFile>& picture() const { return m_picture; }

private:
    ClipboardOffer() = default;

    std::optional<QByteArray> m_utf8;
    std::shared_ptr<const PictureFile> m_picture;
};

} // namespace tessary
