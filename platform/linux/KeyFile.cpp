#include "platform/linux/KeyFile.h"

#include <QFile>
#include <QStringList>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tessary {

KeyFile KeyFile::parse(QByteArrayView bytes)
{
    KeyFile file;
    QByteArray group;
    const QByteArray all = bytes.toByteArray();
    for (const QByteArray& rawLine : all.split('\n')) {
        const QByteArray line = rawLine.trimmed();
        if (line.isEmpty() || line.startsWith('#'))
            continue;
        if (line.startsWith('[') && line.endsWith(']')) {
            group = line.sliced(1, line.size() - 2);
            continue;
        }
        const qsizetype equals = line.indexOf('=');
        if (equals <= 0)
            continue;
        const QByteArray key = line.first(equals).trimmed();
        auto& keys = file.m_groups[group];
        if (!keys.contains(key))
            keys.insert(key, line.sliced(equals + 1).trimmed());
    }
    return file;
}

std::optional<KeyFile> KeyFile::read(const QString& path, qint64 maximumBytes)
{
    const std::optional<QByteArray> bytes = readRegularFile(path, maximumBytes);
    if (!bytes)
        return std::nullopt;
    return parse(*bytes);
}

std::optional<QString> KeyFile::value(const QByteArray& group, const QByteArray& key) const
{
    const auto keys = m_groups.constFind(group);
    if (keys == m_groups.constEnd())
        return std::nullopt;
    const auto found = keys->constFind(key);
    if (found == keys->constEnd())
        return std::nullopt;
    return QString::fromUtf8(*found);
}

bool KeyFile::isTrue(const QByteArray& group, const QByteArray& key) const
{
    const std::optional<QString> text = value(group, key);
    return text == QLatin1String("true") || text == QLatin1String("1");
}

QStringList KeyFile::list(const QByteArray& group, const QByteArray& key, QChar separator) const
{
    return value(group, key).value_or(QString()).split(separator, Qt::SkipEmptyParts);
}

std::optional<QByteArray> readRegularFile(const QString& path, qint64 maximumBytes)
{
    // Opening a pipe for reading would wait for a writer without O_NONBLOCK.
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        return std::nullopt;
    struct stat status {};
    QFile file;
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode) ||
        !file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(descriptor);
        return std::nullopt;
    }
    QByteArray bytes = file.read(maximumBytes + 1);
    if (bytes.size() > maximumBytes || file.error() != QFileDevice::NoError)
        return std::nullopt;
    return bytes;
}

} // namespace tessary
