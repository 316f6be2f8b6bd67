#pragma once

#include "platform/ScreenCapture.h"

#include <QRectF>

namespace tessary {

/// Lets the person drag a rectangle on one of the screens. Main thread only.
class RegionSelector {
public:
    struct Screen {
        QString name;    ///< As QScreen has it.
        QRectF frame;    ///< Where it is on the desktop, in logical pixels; y grows downwards.
        qreal scale = 1; ///< Device pixels in a logical one.

        friend bool operator==(const Screen&, const Screen&) = default;
    };
    struct Selection {
        Screen screen;
        QRectF globalRect; ///< In the coordinates of `Screen::frame`.

        friend bool operator==(const Selection&, const Selection&) = default;
    };
    class SelectionError : public Error {
    public:
        enum class Case {
            Cancelled, ///< By the person, a newer selection, or a change of the screens.
            NoScreen,
        };
        explicit SelectionError(Case which) : m_case(which) {}

        [[nodiscard]] Case which() const noexcept { return m_case; }
        [[nodiscard]] QString localizedDescription() const override;

    private:
        Case m_case;
    };

    virtual ~RegionSelector() = default;
    /// @param pictures what the screens show meanwhile, as far as there is one.
    /// @throws SelectionError; ScreenCaptureError when another program keeps pointer or keyboard.
    [[nodiscard]] virtual QCoro::Task<Selection> begin(QList<ScreenPicture> pictures) = 0;
    /// Ends a selection under way as cancelled.
    virtual void cancel() = 0;
};

} // namespace tessary
