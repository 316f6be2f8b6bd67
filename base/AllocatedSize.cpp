#include "base/AllocatedSize.h"

#include <QFile>

#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <set>
#include <sys/stat.h>
#include <vector>

namespace tessary {
namespace {

constexpr qint64 kBlock = 512; // bytes, whatever the file system's own blocks are
constexpr int kEntriesBetweenLooks = 256;

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};
using Folder = std::unique_ptr<DIR, CloseFolder>;

/// Adds up the files it is shown.
class Sum {
public:
    void add(const struct stat& status)
    {
        const bool hasMoreNames = status.st_nlink > 1;
        if (hasMoreNames && !m_seen.insert({status.st_dev, status.st_ino}).second)
            return;
        if (__builtin_add_overflow(m_bytes, static_cast<qint64>(status.st_blocks) * kBlock, &m_bytes))
            qFatal("The size of a folder does not fit into 64 bits");
    }
    [[nodiscard]] qint64 bytes() const { return m_bytes; }

private:
    std::set<std::pair<dev_t, ino_t>> m_seen;
    qint64 m_bytes = 0;
};

/// Hands out every entry of the folder but itself and its parent, with what is known of it.
template <typename Visitor>
void visit(const QByteArray& path, const std::stop_token& stop, Visitor visitor)
{
    const Folder folder(::opendir(path.constData()));
    if (!folder)
        return;
    int untilLook = kEntriesBetweenLooks;
    while (const dirent* entry = ::readdir(folder.get())) {
        if (--untilLook == 0) {
            if (stop.stop_requested())
                return;
            untilLook = kEntriesBetweenLooks;
        }
        const QByteArrayView name(entry->d_name);
        struct stat status {};
        if (name == "." || name == ".." ||
            ::fstatat(::dirfd(folder.get()), entry->d_name, &status, AT_SYMLINK_NOFOLLOW) != 0)
            continue;
        visitor(name, status);
    }
}

} // namespace

qint64 allocatedSize(const QString& folder, const std::stop_token& stop)
{
    Sum sum;
    std::vector<QByteArray> folders{QFile::encodeName(folder)};
    while (!folders.empty() && !stop.stop_requested()) {
        const QByteArray path = std::move(folders.back());
        folders.pop_back();
        visit(path, stop, [&](QByteArrayView name, const struct stat& status) {
            if (S_ISDIR(status.st_mode))
                folders.push_back(path + '/' + name.toByteArray());
            else if (S_ISREG(status.st_mode))
                sum.add(status);
        });
    }
    return sum.bytes();
}

qint64 allocatedSizeOfFiles(const QString& folder, const QString& prefix)
{
    Sum sum;
    const QByteArray beginning = QFile::encodeName(prefix);
    visit(QFile::encodeName(folder), {}, [&](QByteArrayView name, const struct stat& status) {
        if (S_ISREG(status.st_mode) && name.startsWith(beginning))
            sum.add(status);
    });
    return sum.bytes();
}

} // namespace tessary
