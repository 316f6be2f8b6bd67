#pragma once

#include "base/SerialLane.h"
#include "platform/linux/OwnBusConnection.h"

#include <QDeadlineTimer>
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
    enum class Answer {
        Awake,   ///< It runs now.
        Absent,  ///< There is none, or it does not start.
        Refused, ///< The bus does not let us talk to it.
        Silent,  ///< It did not answer in time.
    };
    /// Sees to it that it runs, and hears from it.
    [[nodiscard]] QCoro::Task<Answer> wake(QDeadlineTimer deadline);

private:
    /// The bus names of both its parts that there are.
    [[nodiscard]] QStringList parts() const;
    [[nodiscard]] QStringList names(const QString& method) const;
    [[nodiscard]] QCoro::Task<Answer> ping(QString name, QDeadlineTimer deadline);

    OwnBusConnection m_connection;
    SerialLane m_lane;
};

} // namespace tessary
