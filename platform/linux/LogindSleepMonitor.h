#pragma once

#include "base/SerialLane.h"

#include <QObject>

namespace tessary {

/// Hears from the login service when the machine wakes up. Without a system bus or that service it stays
/// silent. Main thread; the bus is connected to on a thread of its own.
class LogindSleepMonitor : public QObject {
    Q_OBJECT
public:
    /// @param busAddress of the bus to listen on; empty means the system bus.
    explicit LogindSleepMonitor(QString busAddress = {}, QObject* parent = nullptr);
    ~LogindSleepMonitor() override;

Q_SIGNALS:
    void wokeUp();
    /// From now on a wake-up is heard. Comes once, or never when there is no system bus.
    void listening();

private Q_SLOTS:
    void prepareForSleep(bool goingToSleep);

private:
    void connectToBus();

    QString m_busAddress;
    QString m_connectionName;
    SerialLane m_lane;
};

} // namespace tessary
