#pragma once

#include "base/SerialLane.h"
#include "capture/FileImport.h"
#include "capture/ScreenshotDirectoryMonitor.h"
#include "search/LibraryChange.h"

#include <qcoro/qcorotask.h>

#include <QObject>

namespace tessary {

class AppSettings;
class FlowSet;
class FrontmostAppTracker;
class ScreenshotImporter;
enum class CountDuplicate;

/// Takes the files that the folder monitor reports, and those that a person names: skips excluded folders
/// and applications, attributes and imports the rest. Main thread only.
class FileIntake : public QObject {
    Q_OBJECT
public:
    FileIntake(const AppSettings& settings, const FrontmostAppTracker& tracker, ScreenshotImporter& importer,
               FlowSet& flows);

    /// Returns at once; the import runs in the flow set.
    void importDiscoveredFile(const QByteArray& path, ScreenshotDirectoryMonitor::Report report);
    /// A file that the person names, under whatever name, is taken as if it had just appeared in the
    /// screenshot folder. @param path absolute, as the file system has it, any bytes.
    /// @throws FileError, StoreError, PersistenceError.
    [[nodiscard]] QCoro::Task<FileImport> importFile(QByteArray path);

Q_SIGNALS:
    /// An item is new, or a repeat was counted.
    void libraryChanged(const tessary::LibraryChange& change);
    /// A file was imported, whether or not that changed the library.
    void imported();
    /// The import of a discovered file failed. @param message the sentence for the person.
    void failed(const QString& message);

private:
    [[nodiscard]] bool isExcluded(const QString& path) const;
    QCoro::Task<> importDiscovered(QString path, ScreenshotDirectoryMonitor::Report report);
    QCoro::Task<FileImport> take(QString path, CountDuplicate countDuplicate);
    void tell(const FileImport& result, CountDuplicate countDuplicate);

    const AppSettings& m_settings;
    const FrontmostAppTracker& m_tracker;
    ScreenshotImporter& m_importer;
    FlowSet& m_flows;
    SerialLane m_lane;
};

} // namespace tessary
