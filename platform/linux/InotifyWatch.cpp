#include "platform/linux/InotifyWatch.h"

#include "base/ExpendableLane.h"
#include "base/FileError.h"

#include <QFile>

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>

namespace tessary {
namespace {

using namespace std::chrono_literals;

constexpr uint32_t kGone = IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT | IN_IGNORED;
constexpr uint32_t kEvents = IN_CREATE | IN_CLOSE_WRITE | IN_MODIFY | IN_ATTRIB | IN_MOVED_FROM |
                             IN_MOVED_TO | IN_DELETE | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
constexpr auto kBurst = 50ms;
constexpr int kMostReads = 8; // in one turn of the event loop: some 4,000 events

FileError errorOf(const QString& folder)
{
    return FileError::fromErrno(errno, folder, FileError::Operation::Read);
}

} // namespace

InotifyFolder InotifyFolder::open(const QString& folder)
{
    FileDescriptor inotify(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    if (inotify.get() < 0)
        throw errorOf(folder);
    // Through a descriptor, so that what is watched is the folder whose identity is told.
    const FileDescriptor directory(
        ::open(QFile::encodeName(folder).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    struct stat found {};
    if (directory.get() < 0 || ::fstat(directory.get(), &found) != 0)
        throw errorOf(folder);
    const QByteArray path = "/proc/self/fd/" + QByteArray::number(directory.get());
    if (::inotify_add_watch(inotify.get(), path.constData(), kEvents) < 0)
        throw errorOf(folder);
    return {std::move(inotify), {found.st_dev, found.st_ino}};
}

InotifyWatch::InotifyWatch(InotifyFolder folder, DirectoryWatchRequest request)
    : m_folder(std::move(folder)),
      m_request(std::move(request)),
      m_notifier(m_folder.inotify.get(), QSocketNotifier::Read)
{
    m_burst.setSingleShot(true);
    m_burst.setInterval(kBurst);
    QObject::connect(&m_notifier, &QSocketNotifier::activated, [this] { readEvents(); });
    QObject::connect(&m_burst, &QTimer::timeout, [this] { tell(); });
}

InotifyWatch::~InotifyWatch()
{
    m_notifier.setEnabled(false);
    // Closing lets go of the folder's inode, for which a file system may take its time.
    auto closing = std::make_shared<FileDescriptor>(std::move(m_folder.inotify));
    ExpendableLane(QStringLiteral("com.tessary.directory-monitor")).postDetached([closing] {
        closing->close();
    });
}

void InotifyWatch::readEvents()
{
    alignas(inotify_event) std::array<char, 16 * 1024> buffer;
    for (int reads = 0; reads < kMostReads; ++reads) {
        const ssize_t count = ::read(m_folder.inotify.get(), buffer.data(), buffer.size());
        if (count <= 0)
            return;
        for (size_t offset = 0; offset < static_cast<size_t>(count);) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + offset, sizeof event);
            const char* name = buffer.data() + offset + sizeof event; // padded with zeros
            note(event.mask, event.len > 0 ? QByteArray(name) : QByteArray());
            offset += sizeof event + event.len;
        }
    }
}

void InotifyWatch::note(uint32_t mask, const QByteArray& name)
{
    if ((mask & kGone) != 0)
        m_change = DirectoryChange::FolderGone;
    else if (m_change || (!name.isEmpty() && !m_request.concerns(name)))
        return;
    else
        m_change = DirectoryChange::Entries; // without a name, of the folder itself, or events were lost
    if (!m_burst.isActive())
        m_burst.start();
}

void InotifyWatch::tell()
{
    const DirectoryChange change = *std::exchange(m_change, std::nullopt);
    if (change == DirectoryChange::FolderGone)
        m_notifier.setEnabled(false);
    const std::function<void(DirectoryChange)> changed = m_request.changed;
    changed(change); // may be the end of this watch
}

} // namespace tessary
