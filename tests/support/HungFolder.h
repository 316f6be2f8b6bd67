#pragma once

#include "base/FileDescriptor.h"

#include <QFile>
#include <QString>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/mount.h>

namespace tessary::testing {

/// While it lives, every look into the folder hangs: a file system in user space is mounted there that never
/// answers. Needs the right to mount.
class HungFolder {
public:
    explicit HungFolder(const QString& path)
        : m_path(QFile::encodeName(path)),
          m_server(::open("/dev/fuse", O_RDWR | O_CLOEXEC))
    {
        const QByteArray options =
            "fd=" + QByteArray::number(m_server.get()) + ",rootmode=40000,user_id=0,group_id=0";
        m_isHanging =
            m_server.get() >= 0 && ::mount("hung", m_path.constData(), "fuse", 0, options.constData()) == 0;
        if (!m_isHanging)
            m_reason = QString::fromLocal8Bit(std::strerror(errno));
    }
    ~HungFolder()
    {
        if (!m_isHanging)
            return;
        m_server.close(); // what hangs fails now
        ::umount2(m_path.constData(), MNT_DETACH);
    }
    HungFolder(const HungFolder&) = delete;
    HungFolder& operator=(const HungFolder&) = delete;

    [[nodiscard]] bool isHanging() const { return m_isHanging; }
    [[nodiscard]] const QString& reason() const { return m_reason; }

private:
    QByteArray m_path;
    FileDescriptor m_server;
    bool m_isHanging = false;
    QString m_reason;
};

} // namespace tessary::testing
