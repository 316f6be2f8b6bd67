#include "app/ClipboardIntake.h"

#include "app/AppSettings.h"
#include "app/ApplicationIdentity.h"
#include "base/Error.h"
#include "base/FlowSet.h"
#include "capture/FrontmostAppTracker.h"
#include "capture/ScreenshotImporter.h"

namespace tessary {

ClipboardIntake::ClipboardIntake(const AppSettings& settings, const FrontmostAppTracker& tracker,
                                 ScreenshotImporter& importer, FlowSet& flows)
    : m_settings(settings),
      m_tracker(tracker),
      m_importer(importer),
      m_flows(flows)
{
}

void ClipboardIntake::take(const ClipboardPayload& payload)
{
    const std::optional<SourceApplicationSnapshot> source = sourceApplication();
    if (source && m_settings.excludes(source->bundleIdentifier))
        return;
    m_flows.add(import(payload, source));
}

std::optional<SourceApplicationSnapshot> ClipboardIntake::sourceApplication() const
{
    std::optional<SourceApplicationSnapshot> current = m_tracker.currentApplication();
    if (!current || current->bundleIdentifier == applicationIdentifier())
        return m_tracker.latestApplication(applicationIdentifier());
    return current;
}

QCoro::Task<> ClipboardIntake::import(ClipboardPayload payload,
                                      std::optional<SourceApplicationSnapshot> source)
{
    try {
        const ScreenshotImporter::Record record = co_await m_importer.importClipboardPayload(payload, source);
        if (record)
            Q_EMIT libraryChanged({LibraryChange::Kind::Added, {record->id}});
        else
            Q_EMIT libraryChanged({LibraryChange::Kind::Repeated, {}});
    } catch (const std::exception& error) {
        Q_EMIT failed(tr("无法记录剪贴板：") + localizedDescription(error));
    }
}

} // namespace tessary
