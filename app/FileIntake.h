#pragma once

#include "capture/ScreenshotDirectoryMonitor.h"
#include "search/LibraryChange.h"

#include <qcoro/qcorotask.h>

#include <QObject>

namespace tessary {

class AppSettings;
class FlowSet;
class FrontmostAppTracker;
class ScreenshotImporter;

/// Takes the files that the folder monitor reports: skips excluded folders and applications, attributes
/// and imports the rest. Main thread only.
class FileIntake : public QObject {
    Q_OBJECT
public:
    FileIntake(const AppSettings& settings, const FrontmostAppTracker& tracker, ScreenshotImporter& importer,
               FlowSet& flows);

    /// Returns at once; the import runs in the flow set.
    void importDiscoveredFile(const QString& path, ScreenshotDirectoryMonitor::Report report);

Q_SIGNALS:
    void libraryChanged(const tessary::LibraryChange& change);
    /// An import failed. @param message the sentence for the person.
    void failed(const QString& message);

private:
    [[nodiscard]] bool isExcluded(const QString& path) const;
    QCoro::Task<> import(QString path, ScreenshotDirectoryMonitor::Report report);

    const AppSettings& m_settings;
    const FrontmostAppTracker& m_tracker;
    ScreenshotImporter& m_importer;
    FlowSet& m_flows;
};

} // namespace tessary
