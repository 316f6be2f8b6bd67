#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

namespace tessary {

/// A picture file held open, so that it can still be read after it was deleted. Any thread.
class PictureFile {
public:
    /// Blocks on the disk.
    /// @returns nothing when the file cannot be read, is no regular one, or begins like no PNG, JPEG, TIFF or
    ///          HEIF picture.
    [[nodiscard]] static std::shared_ptr<const PictureFile> open(const QString& path);
    ~PictureFile();
    PictureFile(const PictureFile&) = delete;
    PictureFile& operator=(const PictureFile&) = delete;

    [[nodiscard]] qint64 size() const { return m_size; } ///< In bytes, at least 1.
    [[nodiscard]] const QByteArray& mimeType() const { return m_mimeType; }
    /// Blocks on the disk. Empty when not all of it could be read.
    [[nodiscard]] QByteArray read(qint64 offset, qint64 length) const;

private:
    PictureFile(int descriptor, qint64 size) : m_descriptor(descriptor), m_size(size) {}

    int m_descriptor;
    qint64 m_size;
    QByteArray m_mimeType;
};

/// The MIME type of a picture that begins with these bytes, of which 12 are enough; empty for anything but
/// PNG, JPEG, TIFF and HEIF.
[[nodiscard]] QByteArray pictureMimeType(QByteArrayView beginning);

} // namespace tessary
