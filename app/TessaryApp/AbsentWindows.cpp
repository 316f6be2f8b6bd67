#include "app/TessaryApp/AbsentWindows.h"

#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcWindows, "tessary.windows")

namespace tessary {

void AbsentWindows::showQuickSearch()
{
    qCInfo(lcWindows, "the quick-search panel was asked for; this version has no windows yet");
}

void AbsentWindows::showSettings()
{
    qCInfo(lcWindows, "the settings window was asked for; this version has no windows yet");
}

void AbsentWindows::showPreview(const ScreenshotRecord&)
{
    qCInfo(lcWindows, "a preview window was asked for; this version has none yet");
}

void AbsentWindows::showRegionSelection()
{
    qCInfo(lcWindows, "text recognition was asked for; this version has no windows yet");
}

} // namespace tessary
