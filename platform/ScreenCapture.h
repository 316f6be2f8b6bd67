#pragma once

#include "base/Error.h"

#include <QImage>
#include <QList>
#include <QString>

#include <qcoro/qcorotask.h>

namespace tessary {

/// What one screen shows.
struct ScreenPicture {
    QString screen; ///< Its name, as QScreen has it.
    QImage image;   ///< Every pixel of the screen, without the pointer; null when the screen gave none.
};

class ScreenCaptureError : public Error {
public:
    enum class Case {
        NotConnected,  ///< The display server is not there, or refused.
        UnknownFormat, ///< Its pixels are of a kind that we cannot read.
        ScreensInUse,  ///< Another program holds the pointer or the keyboard.
    };
    explicit ScreenCaptureError(Case which) : m_case(which) {}

    [[nodiscard]] Case which() const noexcept { return m_case; }
    [[nodiscard]] QString localizedDescription() const override;

private:
    Case m_case;
};

/// Reads the screens. Main thread only; the work happens elsewhere.
class ScreenCapture {
public:
    virtual ~ScreenCapture() = default;
    /// Everything that can be seen now, our own windows included, in the order of the screens.
    /// @throws ScreenCaptureError.
    [[nodiscard]] virtual QCoro::Task<QList<ScreenPicture>> pictures() = 0;
};

} // namespace tessary
