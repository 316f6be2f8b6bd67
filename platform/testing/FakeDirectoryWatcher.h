#pragma once

#include "base/FileError.h"
#include "platform/DirectoryWatch.h"

#include <QHash>
#include <QObject>
#include <QStringList>

#include <list>
#include <optional>

namespace tessary::testing {

/// Folders whose changes a test announces; they need not exist. Must outlive its watches.
class FakeDirectoryWatcher : public DirectoryWatcher {
public:
    [[nodiscard]] std::unique_ptr<DirectoryWatch> watch(const QString& folder,
                                                        std::function<void()> changed) override
    {
        if (const auto failure = m_failures.constFind(folder); failure != m_failures.constEnd())
            throw FileError(*failure, folder);
        return std::make_unique<Watch>(*this, folder, std::move(changed));
    }

    /// Tells the watches of the folder, in the next turn of the event loop.
    void announceChange(const QString& folder)
    {
        for (Watch* watch : m_watches) {
            if (watch->folder == folder)
                QMetaObject::invokeMethod(
                    &watch->context, [watch] { watch->changed(); }, Qt::QueuedConnection);
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
    /// The watched folders, in the order of the watches.
    [[nodiscard]] QStringList watched() const
    {
        QStringList folders;
        for (const Watch* watch : m_watches)
            folders.append(watch->folder);
        return folders;
    }

private:
    struct Watch : DirectoryWatch {
        Watch(FakeDirectoryWatcher& owner, const QString& watchedFolder, std::function<void()> onChange)
            : watcher(owner),
              folder(watchedFolder),
              changed(std::move(onChange))
        {
            watcher.m_watches.push_back(this);
        }
        ~Watch() override { watcher.m_watches.remove(this); }

        FakeDirectoryWatcher& watcher;
        QString folder;
        std::function<void()> changed;
        QObject context; // what is queued for a watch that is gone is dropped
    };

    std::list<Watch*> m_watches;
    QHash<QString, FileError::Case> m_failures;
};

} // namespace tessary::testing
