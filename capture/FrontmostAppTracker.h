#pragma once

#include "base/SerialLane.h"
#include "capture/FrontmostAppSample.h"
#include "platform/Clock.h"
#include "platform/Workspace.h"

#include <QObject>

#include <memory>

namespace tessary {

/// A short history, kept across restarts, of which application was in front when, so that a captured item
/// can be attributed even when the capture is noticed a moment later. Main thread only; the log is read
/// and written on a lane, and its failures are silent: the tracker then works from memory.
class FrontmostAppTracker : public QObject {
    Q_OBJECT
public:
    /// Reads the log, drops what is too old and records the application in front.
    [[nodiscard]] static QCoro::Task<std::unique_ptr<FrontmostAppTracker>>
    open(QString logPath, Workspace& workspace, Clock& clock);
    ~FrontmostAppTracker() override;

    /// The application in front now.
    [[nodiscard]] std::optional<SourceApplicationSnapshot> currentApplication() const;
    /// The newest in the history with another identifier.
    [[nodiscard]] std::optional<SourceApplicationSnapshot>
    latestApplication(const QString& excludingBundleIdentifier) const;
    /// @param maxDistance in seconds; see `closestSample`.
    [[nodiscard]] std::optional<SourceApplicationSnapshot> application(Date closestTo,
                                                                       double maxDistance) const;
    /// The newest sample at or before the target and at most `maxDistance` seconds from it; without one,
    /// the earliest in the 2 seconds after it.
    [[nodiscard]] static std::optional<FrontmostAppSample>
    closestSample(Date target, const QList<FrontmostAppSample>& samples, double maxDistance);
    [[nodiscard]] const QList<FrontmostAppSample>& samples() const { return m_samples; } ///< Oldest first.
    /// Forgets the history, in memory only.
    void clear() { m_samples.clear(); }
    /// Forgets the history and removes the log, also what is about to be written to it. What happens from
    /// now on is recorded anew. @throws FileError when the log cannot be removed.
    [[nodiscard]] QCoro::Task<> erase();

private:
    enum class Repeats { Dropped, Recorded };

    FrontmostAppTracker(QString logPath, Workspace& workspace, Clock& clock);

    void observe();
    void record(const std::optional<RunningApplication>& application, Date at, Repeats repeats);
    void prune(Date now);
    void persist();

    QString m_logPath;
    Workspace& m_workspace;
    Clock& m_clock;
    QList<FrontmostAppSample> m_samples;
    std::unique_ptr<RepeatingTimer> m_heartbeatTimer;
    SerialLane m_persistenceQueue;
};

} // namespace tessary
