#pragma once

#include "base/SerialLane.h"
#include "store/AppPaths.h"
#include "store/ScreenshotRecord.h"

#include <qcoro/qcorotask.h>

namespace tessary {

class StandardFolders;

/// The files of the library as a whole, handled on a lane. To be called on the main thread.
class LibraryFiles {
public:
    LibraryFiles();

    /// Finds the library's folders, making what is missing and clearing away half-written files of an
    /// earlier run. @throws FileError.
    [[nodiscard]] QCoro::Task<AppPaths> prepare(const StandardFolders& folders);
    /// @returns the first of the paths at which there is a file.
    [[nodiscard]] QCoro::Task<std::optional<QString>> firstExisting(QStringList paths);
    /// Removes the original, thumbnail and icon of each; what cannot be removed is passed over.
    [[nodiscard]] QCoro::Task<> removeFilesOf(QList<ScreenshotRecord> records);

private:
    SerialLane m_lane;
};

} // namespace tessary
