#pragma once

#include "app/DiscoveredFiles.h"
#include "base/ExpendableLane.h"
#include "capture/FileImport.h"
#include "capture/ScreenshotDirectoryMonitor.h"
#include "search/LibraryChange.h"

#include <qcoro/qcorotask.h>

#include <QObject>

namespace tessary {

class AppSettings;
class FlowSet;
class FrontmostAppTracker;

/// Takes the files that the folder monitor reports, and those that a person names: skips excluded folders
/// and applications, attributes and imports the rest. Main thread only.
class FileIntake : public QObject {
    Q_OBJECT
public:
    FileIntake(const AppSettings& settings, const FrontmostAppTracker& tracker, ScreenshotImporter& importer,
               FlowSet& flows);
    ~FileIntake() override;

    /// Returns at once; the import runs in the flow set, after those that wait already.
    void importDiscoveredFile(const QByteArray& path, ScreenshotDirectoryMonitor::Report report);
    /// A file that the person names, under whatever name, is taken as if it had just appeared in the
    /// screenshot folder. @param path absolute, as the file system has it, any bytes.
    /// @throws FileError, StoreError, PersistenceError.
    [[nodiscard]] QCoro::Task<FileImport> importFile(QByteArray path);

    /// Forgets the discovered files that wait. Those being imported go on, but hold up no later ones.
    void forgetDiscovered();
    /// Ends the imports whose files do not come; what had been read goes on.
    void giveUp();

Q_SIGNALS:
    /// An item is new, or a repeat was counted.
    void libraryChanged(const tessary::LibraryChange& change);
    /// A file was imported, whether or not that changed the library.
    void imported();
    /// The import of a discovered file failed. @param message the sentence for the person.
    void failed(const QString& message);

private:
    /// One folder's files: they hang together, should its file system hang.
    struct Folder;

    [[nodiscard]] bool isExcluded(const QString& path) const;
    void advance();
    QCoro::Task<> importDiscovered(std::shared_ptr<Folder> folder, DiscoveredFiles::Entry entry);
    QCoro::Task<TakenFile> take(ForeignFile file, CountDuplicate countDuplicate,
                                std::shared_ptr<Folder> folder);
    QCoro::Task<> report(ForeignFile file, QString message);
    void tell(const FileImport& result, CountDuplicate countDuplicate);

    const AppSettings& m_settings;
    const FrontmostAppTracker& m_tracker;
    ScreenshotImporter& m_importer;
    FlowSet& m_flows;
    std::shared_ptr<Folder> m_folder;
    std::stop_source m_giveUp;
    bool m_isAdvancing = false;
};

} // namespace tessary
