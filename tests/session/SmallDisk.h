#pragma once

#include <QFile>
#include <QString>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace tessary::testing {

/// A file system in memory that is mounted for this process and those that it starts, until it is destroyed.
class SmallDisk {
public:
    SmallDisk() = default;
    ~SmallDisk()
    {
        if (!m_mount.isEmpty())
            ::umount2(m_mount.constData(), MNT_DETACH);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    /// @param options of tmpfs, as size=1m. @returns false where that is not allowed.
    [[nodiscard]] bool mount(const QString& folder, const char* options)
    {
        if (::geteuid() != 0 || ::unshare(CLONE_NEWNS) != 0 ||
            ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
            return false;
        const QByteArray place = QFile::encodeName(folder);
        if (::mount("tmpfs", place.constData(), "tmpfs", 0, options) != 0)
            return false;
        m_mount = place;
        return true;
    }

private:
    QByteArray m_mount;
};

} // namespace tessary::testing
