#pragma once

#include "platform/StatusHosts.h"

namespace tessary::testing {

/// Panels that a test starts and ends, which is told in the next turn of the event loop.
class FakeStatusHosts : public StatusHosts {
    Q_OBJECT
public:
    using StatusHosts::StatusHosts;

    [[nodiscard]] Kind kind() const override { return m_kind; }

    void setKind(Kind kind)
    {
        const auto tell = [this, kind] {
            m_kind = kind;
            Q_EMIT changed();
        };
        QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
    }

private:
    Kind m_kind = Kind::Unknown;
};

} // namespace tessary::testing
