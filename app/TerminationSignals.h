#pragma once

#include <QObject>

namespace tessary {

/// Turns SIGTERM, SIGINT and SIGHUP into a signal of the event loop. One at a time in a process.
class TerminationSignals : public QObject {
    Q_OBJECT
public:
    TerminationSignals();
    ~TerminationSignals() override;

Q_SIGNALS:
    /// The first time; a second such signal ends the process as if nobody had caught it.
    void received();

private:
    int m_descriptor = -1;
};

} // namespace tessary
