#pragma once

#include <QByteArray>
#include <QFile>

namespace tessary::bench {

struct WrittenBytes {
    double handedOver = 0; ///< To the system, by this process.
    double toDisks = 0;    ///< Whole pages, or larger blocks, of the system's that it made differ from disks.
};

[[nodiscard]] inline WrittenBytes writtenBytes()
{
    WrittenBytes written;
    QFile file(QStringLiteral("/proc/self/io"));
    if (!file.open(QIODevice::ReadOnly))
        return written;
    for (const QByteArray& line : file.readAll().split('\n')) {
        const double number = line.mid(line.indexOf(':') + 1).toDouble();
        if (line.startsWith("wchar:"))
            written.handedOver = number;
        else if (line.startsWith("write_bytes:"))
            written.toDisks = number;
    }
    return written;
}

} // namespace tessary::bench
