#pragma once

#include "base/FileDescriptor.h"
#include "platform/DirectoryWatch.h"

#include <QSocketNotifier>
#include <QTimer>

#include <optional>

namespace tessary {

/// An inotify instance that watches one folder, and which folder that was when it began.
struct InotifyFolder {
    FileDescriptor inotify;
    FolderIdentity identity;

    /// Blocks for as long as the file system does. @throws FileError.
    [[nodiscard]] static InotifyFolder open(const QString& folder);
};

/// Reads the events of one folder. Main thread only.
class InotifyWatch : public DirectoryWatch {
public:
    InotifyWatch(InotifyFolder folder, DirectoryWatchRequest request);
    ~InotifyWatch() override;
    InotifyWatch(const InotifyWatch&) = delete;
    InotifyWatch& operator=(const InotifyWatch&) = delete;

    [[nodiscard]] FolderIdentity identity() const override { return m_folder.identity; }

private:
    void readEvents();
    void note(uint32_t mask, const QByteArray& name);
    void tell();

    InotifyFolder m_folder;
    DirectoryWatchRequest m_request;
    QSocketNotifier m_notifier;
    QTimer m_burst;
    std::optional<DirectoryChange> m_change; // not yet told
};

} // namespace tessary
