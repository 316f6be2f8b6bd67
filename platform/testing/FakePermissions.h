#pragma once

#include "platform/Permissions.h"
#include "platform/testing/NextTurn.h"

namespace tessary::testing {

/// What a test allows. Answers come after a turn of the event loop, with the state at the time of asking.
class FakePermissions : public Permissions {
public:
    [[nodiscard]] QCoro::Task<PermissionState> probe() override
    {
        ++m_probes;
        const PermissionState state = m_state;
        co_await NextTurn();
        co_return state;
    }

    void setState(PermissionState state) { m_state = state; }
    [[nodiscard]] int probes() const { return m_probes; }

private:
    PermissionState m_state;
    int m_probes = 0;
};

} // namespace tessary::testing
