#include "capture/FileFacts.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>

namespace tessary {
namespace {

Date dateOf(const statx_timestamp& time)
{
    constexpr double kNanosecond = 1e-9;
    return Date{static_cast<double>(time.tv_sec) + kNanosecond * time.tv_nsec};
}

} // namespace

FileFacts factsOf(const QString& path)
{
    constexpr unsigned kWanted = STATX_TYPE | STATX_SIZE | STATX_MTIME | STATX_BTIME;
    struct statx found {};
    if (::statx(AT_FDCWD, QFile::encodeName(path).constData(), 0, kWanted, &found) != 0)
        return {};
    FileFacts facts;
    if ((found.stx_mask & STATX_BTIME) != 0)
        facts.created = dateOf(found.stx_btime);
    if ((found.stx_mask & STATX_MTIME) != 0)
        facts.modified = dateOf(found.stx_mtime);
    facts.size = static_cast<qint64>(found.stx_size);
    facts.isRegular = S_ISREG(found.stx_mode);
    return facts;
}

qint64 fileSize(const QString& path)
{
    return factsOf(path).size;
}

} // namespace tessary
