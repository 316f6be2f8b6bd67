#pragma once

#include "base/SerialLane.h"
#include "store/ProjectionReconciler.h"

#include <qcoro/qcorotask.h>

#include <optional>
#include <stop_token>

namespace tessary {

/// Reads both stores at the same time, each on a thread and by a connection of its own, so that the store's
/// lane can answer meanwhile. What it finds is true of the moments at which it began to read: who uses it
/// looks whether anything was written since before. Main thread; outlives its task.
class LibraryComparison {
public:
    LibraryComparison(QString recordsPath, QString projectionPath);

    /// Throws nothing.
    [[nodiscard]] QCoro::Task<ProjectionReconciler::Outcome> compare(std::stop_token stop);

private:
    QCoro::Task<std::optional<RowSum>> readRecords(std::stop_token stop);
    QCoro::Task<std::optional<ProjectionReconciler::Reading>> readProjection(std::stop_token stop);

    QString m_recordsPath;
    QString m_projectionPath;
    SerialLane m_recordsLane;
    SerialLane m_projectionLane;
};

} // namespace tessary
