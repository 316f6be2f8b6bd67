#include "app/PasteBack.h"

#include "app/ApplicationIdentity.h"
#include "app/WindowPresenter.h"
#include "capture/ClipboardService.h"
#include "store/SQLiteStore.h"

#include <QCoreApplication>

namespace tessary {
namespace {

constexpr double kLatestNews = 0.15; // seconds by which news of a window may be late

bool isOurs(const RunningApplication& application)
{
    return application.processIdentifier == QCoreApplication::applicationPid() ||
           application.bundleIdentifier == applicationIdentifier();
}

/// Lists cut long texts.
QCoro::Task<ScreenshotRecord> whole(ScreenshotRecord record, SQLiteStore* store)
{
    if (record.contentType != ClipboardContentType::Text || store == nullptr)
        co_return record;
    std::optional<ScreenshotRecord> stored = co_await store->record(record.id);
    co_return stored ? std::move(*stored) : std::move(record);
}

} // namespace

PasteBack::PasteBack(Platform platform, WindowPresenter& windows) : m_platform(platform), m_windows(windows)
{
    connect(&platform.workspace, &Workspace::applicationActivated, this, &PasteBack::noteActivation);
}

/// News of windows are a little late: what came to the front just before the panel was asked for may be
/// heard of only afterwards, but always before the panel itself.
void PasteBack::noteActivation(const RunningApplication& application)
{
    if (isOurs(application)) {
        m_expectsPanel = false;
        return;
    }
    m_lastOther = application;
    if (m_expectsPanel && m_platform.clock.now() < m_asked.addingSeconds(kLatestNews))
        m_previousApplication = application;
}

void PasteBack::rememberPreviousApplication()
{
    const std::optional<RunningApplication> frontmost = m_platform.workspace.frontmostApplication();
    const bool isOurWindow = frontmost && isOurs(*frontmost);
    m_previousApplication = isOurWindow ? m_lastOther : frontmost;
    m_expectsPanel = !isOurWindow;
    m_asked = m_platform.clock.now();
}

QCoro::Task<PasteBack::Result> PasteBack::copy(ScreenshotRecord record, bool pasteIntoPreviousApplication,
                                               SQLiteStore* store)
{
    const ScreenshotRecord item = co_await whole(record, store);
    if (!pasteIntoPreviousApplication)
        co_return co_await copyOnly(item);
    const PermissionState permissions = co_await m_platform.permissions.probe();
    if (permissions.accessibility)
        co_return co_await copyAndPaste(item);
    Result result = co_await copyOnly(item);
    if (result.isOnPasteboard)
        result.message = tr("内容已复制。授予辅助功能权限后可自动粘贴；现在请切换到目标 App 并按 ⌘ V。");
    co_return result;
}

QCoro::Task<PasteBack::Result> PasteBack::copyOnly(ScreenshotRecord record)
{
    const bool isWritten =
        co_await ClipboardService::copy(record, m_platform.pasteboard, PasteboardReach::Clipboard);
    Result result;
    result.isOnPasteboard = isWritten;
    if (!isWritten)
        result.message = tr("无法将内容写入剪贴板");
    co_return result;
}

QCoro::Task<PasteBack::Result> PasteBack::copyAndPaste(ScreenshotRecord record)
{
    using ClipboardService::Outcome;
    m_windows.hideQuickSearch(); // or the keys would come to us
    const Outcome outcome =
        co_await ClipboardService::copyAndPaste(record, m_previousApplication, m_platform);
    Result result;
    result.isOnPasteboard = outcome != Outcome::NotWritten;
    if (outcome == Outcome::Pasted)
        co_return result;
    result.message = outcome == Outcome::NotWritten
                         ? tr("无法将内容写入剪贴板")
                         : tr("内容已复制，但无法切回原来的 App 完成粘贴。请确认辅助功能权限已授权。");
    if (!m_windows.isQuickSearchVisible())
        m_windows.showQuickSearch();
    co_return result;
}

} // namespace tessary
