#pragma once

#include "app/LibraryLock.h"
#include "base/SerialLane.h"
#include "store/AppPaths.h"

#include <QList>
#include <QStringList>
#include <QUuid>

#include <qcoro/qcorotask.h>

#include <memory>
#include <optional>

namespace tessary {

class StandardFolders;

/// The files of the library as a whole, handled on a lane. To be called on the main thread.
class LibraryFiles {
public:
    LibraryFiles();

    /// Finds the library's folders, making what is missing, keeps other programs from them for as long as
    /// this lives, and clears away half-written files of an earlier run. @throws FileError, LibraryError.
    [[nodiscard]] QCoro::Task<AppPaths> prepare(const StandardFolders& folders);
    /// @returns the first of the paths at which there is a file.
    [[nodiscard]] QCoro::Task<std::optional<QString>> firstExisting(QStringList paths);
    /// Removes those of the files that lie in the library's folders; what cannot be removed is passed over.
    [[nodiscard]] QCoro::Task<> removeFiles(AppPaths paths, QStringList files);
    /// Leaves a note in the library that rows may be gone whose files are not, which a later start finds if
    /// this program ends before `endRemoval`. Without one nothing is lost but disk space, so failures are
    /// passed over.
    [[nodiscard]] QCoro::Task<> beginRemoval(AppPaths paths);
    [[nodiscard]] QCoro::Task<> endRemoval(AppPaths paths);
    [[nodiscard]] QCoro::Task<bool> wasRemovalInterrupted(AppPaths paths);
    /// Whose files there are, by their names; each once.
    [[nodiscard]] QCoro::Task<QList<QUuid>> owners(AppPaths paths);
    /// Removes whatever files these items have.
    [[nodiscard]] QCoro::Task<> removeFilesOf(AppPaths paths, QList<QUuid> owners);
    /// Removes every entry of the folders of originals, thumbnails and icons, and copied pictures that wait
    /// to become items. @throws FileError for the first that cannot be removed, once the others are gone.
    [[nodiscard]] QCoro::Task<> removeAllFiles(AppPaths paths);

private:
    std::unique_ptr<LibraryLock> m_lock; // touched only on the lane
    SerialLane m_lane;
};

} // namespace tessary
