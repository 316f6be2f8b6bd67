#include "recognition/ScreenCaptureService.h"

#include "recognition/OwnWindows.h"
#include "recognition/ScreenCaptureGeometry.h"

#include <QCoreApplication>
#include <QScopeGuard>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace tessary {
namespace {

// Where a window of ours was, the programs beneath have to draw, and a compositor may fade it out.
constexpr std::chrono::milliseconds kDrawing{30};
constexpr int kFewestLooks = 3;
constexpr int kMostLooks = 16;
constexpr int kComparedLine = 4; // every fourth is enough to see that a window is still there

bool looksTheSame(const QImage& one, const QImage& other)
{
    if (one.size() != other.size() || one.format() != other.format())
        return false;
    const auto bytes = static_cast<size_t>(one.bytesPerLine());
    for (int y = 0; y < one.height(); y += kComparedLine)
        if (std::memcmp(one.constScanLine(y), other.constScanLine(y), bytes) != 0)
            return false;
    return true;
}

bool lookTheSame(const QList<ScreenPicture>& one, const QList<ScreenPicture>& other)
{
    return std::equal(
        one.cbegin(), one.cend(), other.cbegin(), other.cend(),
        [](const ScreenPicture& a, const ScreenPicture& b) { return looksTheSame(a.image, b.image); });
}

using Case = ScreenCaptureService::CaptureError::Case;

} // namespace

QString ScreenCaptureService::CaptureError::localizedDescription() const
{
    switch (m_case) {
    case Case::PermissionDenied:
        return QCoreApplication::translate("ScreenCaptureService",
                                           "未获得屏幕录制权限；本地 OCR 需要此权限，剪贴板记录仍可继续使用");
    case Case::DisplayUnavailable:
        return QCoreApplication::translate("ScreenCaptureService", "无法匹配所选区域的显示器");
    case Case::Busy:
        return QCoreApplication::translate("ScreenCaptureService", "已有本地 OCR 操作正在进行");
    case Case::ImageUnavailable:
        break;
    }
    return QCoreApplication::translate("ScreenCaptureService", "ScreenCaptureKit 没有返回图片");
}

ScreenCaptureService::ScreenCaptureService(ScreenCapture& screens, Permissions& permissions,
                                           RegionSelector& regionSelector, OwnWindows& ownWindows,
                                           Clock& clock)
    : m_screens(screens),
      m_permissions(permissions),
      m_regionSelector(regionSelector),
      m_ownWindows(ownWindows),
      m_clock(clock)
{
}

QCoro::Task<QImage> ScreenCaptureService::captureRegionImage()
{
    if (m_isCapturing)
        throw CaptureError(Case::Busy);
    m_isCapturing = true;
    const auto idle = qScopeGuard([this] { m_isCapturing = false; });
    co_await requirePermission();
    const auto shown = qScopeGuard([this] { m_ownWindows.restore(); });
    const QList<ScreenPicture> pictures = co_await picturesWithoutOurWindows();
    const RegionSelector::Selection selection = co_await m_regionSelector.begin(pictures);
    co_return captureImage(selection, pictures);
}

QCoro::Task<> ScreenCaptureService::requirePermission()
{
    bool isGranted = co_await m_permissions.hasScreenRecording();
    if (!isGranted)
        isGranted = co_await m_permissions.requestScreenRecording();
    if (!isGranted)
        throw CaptureError(Case::PermissionDenied);
}

/// The pictures are taken before the selection, not after it: so they show what the person saw when they
/// asked, and where no compositor runs the selection can be drawn on top of them.
QCoro::Task<QList<ScreenPicture>> ScreenCaptureService::picturesWithoutOurWindows()
{
    const bool hadWindows = m_ownWindows.withdraw();
    QList<ScreenPicture> pictures = co_await m_screens.pictures();
    for (int look = 1; hadWindows && look < kMostLooks; ++look) {
        co_await m_clock.sleep(kDrawing);
        QList<ScreenPicture> next = co_await m_screens.pictures();
        const bool isQuiet = lookTheSame(pictures, next);
        pictures = std::move(next);
        if (isQuiet && look >= kFewestLooks)
            break;
    }
    co_return pictures;
}

QImage ScreenCaptureService::captureImage(const RegionSelector::Selection& selection,
                                          const QList<ScreenPicture>& pictures)
{
    const auto display = std::find_if(pictures.cbegin(), pictures.cend(), [&](const ScreenPicture& one) {
        return one.screen == selection.screen.name;
    });
    if (selection.screen.name.isEmpty() || display == pictures.cend())
        throw CaptureError(Case::DisplayUnavailable);
    if (display->image.isNull())
        throw CaptureError(Case::ImageUnavailable);
    const QRectF source = ScreenCaptureGeometry::sourceRect(selection.globalRect, selection.screen.frame,
                                                            display->image.size());
    if (source.isEmpty())
        throw CaptureError(Case::DisplayUnavailable);
    // Whole pixels: the size is cut off, and the origin follows it into the picture.
    const QSize size(std::max(1, static_cast<int>(source.width())),
                     std::max(1, static_cast<int>(source.height())));
    const QPoint origin(
        std::min(static_cast<int>(std::lround(source.x())), display->image.width() - size.width()),
        std::min(static_cast<int>(std::lround(source.y())), display->image.height() - size.height()));
    QImage image = display->image.copy(QRect(origin, size));
    if (image.isNull())
        throw CaptureError(Case::ImageUnavailable);
    image.setDevicePixelRatio(selection.screen.scale);
    return image;
}

} // namespace tessary
