#pragma once

#include <qcoro/qcorotask.h>

namespace tessary {

/// Whether this program is started when the person logs in. Main thread only; never blocks. All throw
/// FileError.
class LoginItem {
public:
    virtual ~LoginItem() = default;
    /// Whether the next login would start a program that is there.
    [[nodiscard]] virtual QCoro::Task<bool> isEnabled() = 0;
    [[nodiscard]] virtual QCoro::Task<> enable() = 0;
    [[nodiscard]] virtual QCoro::Task<> disable() = 0;
};

} // namespace tessary
