#pragma once

#include "base/SerialLane.h"
#include "platform/linux/OwnBusConnection.h"

#include <QStringList>

#include <qcoro/qcorotask.h>

namespace tessary {

/// The service on the session bus that keeps the desktop's tasks: Evolution Data Server. Main thread only;
/// the bus is asked on a lane.
class TaskService {
public:
    /// @param busAddress of the bus with the service; empty means the session bus.
    explicit TaskService(const QString& busAddress = {});
    ~TaskService();

    /// Whether it runs or can be started by asking it; false also when there is no bus, or none that answers
    /// within two seconds.
    [[nodiscard]] QCoro::Task<bool> isReachable();
    /// Sees to it that it runs. @throws PermissionError.
    [[nodiscard]] QCoro::Task<> start();

private:
    /// The bus names of both its parts that there are.
    [[nodiscard]] QStringList parts() const;
    [[nodiscard]] QStringList names(const QString& method) const;
    void startNow() const;

    OwnBusConnection m_connection;
    SerialLane m_lane;
};

} // namespace tessary
