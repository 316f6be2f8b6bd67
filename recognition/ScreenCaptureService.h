#pragma once

#include "platform/Clock.h"
#include "platform/Permissions.h"
#include "recognition/RegionSelector.h"

namespace tessary {

class OwnWindows;

/// Brings the picture of a region that the person drags. Main thread only.
class ScreenCaptureService {
public:
    class CaptureError : public Error {
    public:
        enum class Case { PermissionDenied, DisplayUnavailable, ImageUnavailable, Busy };
        explicit CaptureError(Case which) : m_case(which) {}

        [[nodiscard]] Case which() const noexcept { return m_case; }
        [[nodiscard]] QString localizedDescription() const override;

    private:
        Case m_case;
    };

    ScreenCaptureService(ScreenCapture& screens, Permissions& permissions, RegionSelector& regionSelector,
                         OwnWindows& ownWindows, Clock& clock);

    /// @returns the region at the screen's full resolution, without our windows; its device pixel ratio is
    ///          the screen's. @throws CaptureError, RegionSelector::SelectionError, ScreenCaptureError.
    [[nodiscard]] QCoro::Task<QImage> captureRegionImage();
    [[nodiscard]] bool isCapturing() const { return m_isCapturing; }
    /// Ends a selection under way as cancelled.
    void cancel() { m_regionSelector.cancel(); }

    /// The piece of the pictures that was selected. @throws CaptureError.
    [[nodiscard]] static QImage captureImage(const RegionSelector::Selection& selection,
                                             const QList<ScreenPicture>& pictures);

private:
    QCoro::Task<> requirePermission();
    QCoro::Task<QList<ScreenPicture>> picturesWithoutOurWindows();

    ScreenCapture& m_screens;
    Permissions& m_permissions;
    RegionSelector& m_regionSelector;
    OwnWindows& m_ownWindows;
    Clock& m_clock;
    bool m_isCapturing = false;
};

} // namespace tessary
