#include "platform/linux/InotifyDirectoryWatcher.h"

#include "base/FileError.h"

#include <QFile>
#include <QSocketNotifier>
#include <QTimer>

#include <array>
#include <cerrno>
#include <cstring>
#include <sys/inotify.h>
#include <unistd.h>

namespace tessary {
namespace {

constexpr uint32_t kEvents = IN_CREATE | IN_CLOSE_WRITE | IN_MODIFY | IN_ATTRIB | IN_MOVED_FROM |
                             IN_MOVED_TO | IN_DELETE | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
constexpr std::chrono::milliseconds kBurst{50};

} // namespace

class InotifyDirectoryWatcher::Watch : public DirectoryWatch {
public:
    Watch(InotifyDirectoryWatcher& watcher, quint64 number) : m_watcher(watcher), m_number(number) {}
    ~Watch() override { m_watcher.remove(m_number); }

private:
    InotifyDirectoryWatcher& m_watcher;
    quint64 m_number;
};

InotifyDirectoryWatcher::InotifyDirectoryWatcher() : m_inotify(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
    if (m_inotify < 0) {
        m_openError = errno;
        return;
    }
    m_notifier = std::make_unique<QSocketNotifier>(m_inotify, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, [this] { readEvents(); });
    m_burst = std::make_unique<QTimer>();
    m_burst->setSingleShot(true);
    m_burst->setInterval(kBurst);
    QObject::connect(m_burst.get(), &QTimer::timeout, [this] { tell(); });
}

InotifyDirectoryWatcher::~InotifyDirectoryWatcher()
{
    m_notifier.reset();
    if (m_inotify >= 0)
        ::close(m_inotify);
}

std::unique_ptr<DirectoryWatch> InotifyDirectoryWatcher::watch(const QString& folder,
                                                               std::function<void()> changed)
{
    if (m_inotify < 0)
        throw FileError::fromErrno(m_openError, folder, FileError::Operation::Read);
    const int descriptor = ::inotify_add_watch(m_inotify, QFile::encodeName(folder).constData(), kEvents);
    if (descriptor < 0)
        throw FileError::fromErrno(errno, folder, FileError::Operation::Read);
    const quint64 number = ++m_lastNumber;
    m_watches.emplace(number, Entry{descriptor, std::move(changed)});
    return std::make_unique<Watch>(*this, number);
}

void InotifyDirectoryWatcher::readEvents()
{
    alignas(inotify_event) std::array<char, 16 * 1024> buffer;
    for (;;) {
        const ssize_t count = ::read(m_inotify, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return;
        for (size_t offset = 0; offset < static_cast<size_t>(count);) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + offset, sizeof event);
            offset += sizeof event + event.len;
            if ((event.mask & IN_Q_OVERFLOW) != 0)
                noteChangeOfAll();
            else
                noteChange(event.wd);
        }
    }
}

void InotifyDirectoryWatcher::noteChange(int descriptor)
{
    for (const auto& [number, entry] : m_watches) {
        if (entry.descriptor == descriptor)
            m_changed.insert(number);
    }
    if (!m_changed.empty() && !m_burst->isActive())
        m_burst->start();
}

void InotifyDirectoryWatcher::noteChangeOfAll()
{
    for (const auto& [number, entry] : m_watches)
        noteChange(entry.descriptor);
}

void InotifyDirectoryWatcher::tell()
{
    for (const quint64 number : std::exchange(m_changed, {})) {
        // A callback may end any watch, its own included.
        const auto found = m_watches.find(number);
        if (found == m_watches.end())
            continue;
        const std::function<void()> changed = found->second.changed;
        changed();
    }
}

void InotifyDirectoryWatcher::remove(quint64 number)
{
    const auto found = m_watches.find(number);
    const int descriptor = found->second.descriptor;
    m_watches.erase(found);
    m_changed.erase(number);
    const bool shared = std::any_of(m_watches.begin(), m_watches.end(), [descriptor](const auto& watch) {
        return watch.second.descriptor == descriptor;
    });
    if (!shared)
        ::inotify_rm_watch(m_inotify, descriptor);
}

} // namespace tessary
