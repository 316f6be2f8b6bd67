#pragma once

#include "capture/SourceApplicationSnapshot.h"
#include "search/LibraryChange.h"
#include "store/ScreenshotRecord.h"

#include <qcoro/qcorotask.h>

#include <QObject>

namespace tessary {

class AppSettings;
class FlowSet;
class FrontmostAppTracker;
class ScreenshotImporter;

/// Takes what the clipboard monitor delivers: drops what comes from an excluded application, attributes
/// and imports the rest. Main thread only.
class ClipboardIntake : public QObject {
    Q_OBJECT
public:
    ClipboardIntake(const AppSettings& settings, const FrontmostAppTracker& tracker,
                    ScreenshotImporter& importer, FlowSet& flows);

    /// Returns at once; the import runs in the flow set.
    void take(const ClipboardPayload& payload);

Q_SIGNALS:
    void libraryChanged(const tessary::LibraryChange& change);
    /// An import failed. @param message the sentence for the person.
    void failed(const QString& message);

private:
    [[nodiscard]] std::optional<SourceApplicationSnapshot> sourceApplication() const;
    QCoro::Task<> import(ClipboardPayload payload, std::optional<SourceApplicationSnapshot> source);

    const AppSettings& m_settings;
    const FrontmostAppTracker& m_tracker;
    ScreenshotImporter& m_importer;
    FlowSet& m_flows;
};

} // namespace tessary
