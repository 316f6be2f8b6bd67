#pragma once

#include "base/ExpendableLane.h"
#include "base/FileError.h"
#include "platform/DirectoryWatch.h"
#include "platform/testing/NextTurn.h"

#include <QFile>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QStringList>

#include <list>
#include <optional>

#include <sys/stat.h>

namespace tessary::testing {

/// Folders whose changes a test announces; they need not exist. Must outlive its watches.
class FakeDirectoryWatcher : public DirectoryWatcher {
public:
    [[nodiscard]] QCoro::Task<std::unique_ptr<DirectoryWatch>> watch(DirectoryWatchRequest request) override
    {
        ++m_openings;
        co_await NextTurn();
        while (m_hung.contains(request.folder) && !request.stop.stop_requested())
            co_await NextTurn();
        if (request.stop.stop_requested())
            throw Abandoned();
        if (const auto failure = m_failures.constFind(request.folder); failure != m_failures.constEnd())
            throw FileError(*failure, request.folder);
        co_return std::make_unique<Watch>(*this, request);
    }

    /// Tells the watches of the folder, in the next turn of the event loop.
    void announceChange(const QString& folder, DirectoryChange change = DirectoryChange::Entries)
    {
        for (Watch* watch : m_watches) {
            if (watch->request.folder == folder)
                QMetaObject::invokeMethod(
                    &watch->context, [watch, change] { watch->tell(change); }, Qt::QueuedConnection);
        }
    }
    /// From now on this folder cannot be watched; with nothing, it can again.
    void failWith(const QString& folder, std::optional<FileError::Case> failure)
    {
        if (failure)
            m_failures.insert(folder, *failure);
        else
            m_failures.remove(folder);
    }
    /// From now on the opening of a watch on this folder does not come back.
    void hang(const QString& folder) { m_hung.insert(folder); }
    /// The watched folders, in the order of the watches.
    [[nodiscard]] QStringList watched() const
    {
        QStringList folders;
        for (const Watch* watch : m_watches)
            folders.append(watch->request.folder);
        return folders;
    }
    /// How often a watch was asked for.
    [[nodiscard]] int openings() const { return m_openings; }

private:
    struct Watch : DirectoryWatch {
        Watch(FakeDirectoryWatcher& owner, DirectoryWatchRequest asked)
            : watcher(owner),
              request(std::move(asked)),
              folderIdentity(identityOf(request.folder))
        {
            watcher.m_watches.push_back(this);
        }
        ~Watch() override { watcher.m_watches.remove(this); }
        [[nodiscard]] FolderIdentity identity() const override { return folderIdentity; }
        void tell(DirectoryChange change) const
        {
            const std::function<void(DirectoryChange)> changed = request.changed;
            changed(change); // may be the end of this watch
        }
        static FolderIdentity identityOf(const QString& folder)
        {
            struct stat found {};
            if (::stat(QFile::encodeName(folder).constData(), &found) != 0)
                return {};
            return {found.st_dev, found.st_ino};
        }

        FakeDirectoryWatcher& watcher;
        DirectoryWatchRequest request;
        FolderIdentity folderIdentity;
        QObject context; // what is queued for a watch that is gone is dropped
    };

    std::list<Watch*> m_watches;
    QHash<QString, FileError::Case> m_failures;
    QSet<QString> m_hung;
    int m_openings = 0;
};

} // namespace tessary::testing
