#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QHash>
#include <QString>

#include <optional>

namespace tessary {

/// The lines of a desktop entry, an icon theme's index or a similar file: groups of `key=value`.
///
/// Takes any bytes: lines that are neither are skipped, and the first of two equal keys in a group wins.
/// Keys and values are trimmed of blanks; escapes in values are left as they are.
class KeyFile {
public:
    [[nodiscard]] static KeyFile parse(QByteArrayView bytes);
    /// Nothing when there is no such regular file or it is larger than the limit. Blocks on the disk.
    [[nodiscard]] static std::optional<KeyFile> read(const QString& path, qint64 maximumBytes);

    /// Nothing when absent; lines before the first group belong to the group "".
    [[nodiscard]] std::optional<QString> value(const QByteArray& group, const QByteArray& key) const;
    [[nodiscard]] bool isTrue(const QByteArray& group, const QByteArray& key) const;
    /// The pieces between the separators, without empty ones.
    [[nodiscard]] QStringList list(const QByteArray& group, const QByteArray& key, QChar separator) const;

private:
    QHash<QByteArray, QHash<QByteArray, QByteArray>> m_groups;
};

/// All bytes of a regular file; nothing when it is something else, unreadable or larger than the limit.
/// Never waits on a pipe. Blocks on the disk.
[[nodiscard]] std::optional<QByteArray> readRegularFile(const QString& path, qint64 maximumBytes);

} // namespace tessary
