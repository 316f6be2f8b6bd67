#include "store/LibraryComparison.h"

#include "store/sqlite/SQLiteConnection.h"
#include "store/sqlite/SQLiteInterruption.h"

namespace tessary {
namespace {

/// @returns nothing when the store cannot be read, or no longer need be.
template <typename Read>
auto readQuietly(const QString& path, const std::stop_token& stop, Read read)
    -> std::optional<std::invoke_result_t<Read, SQLiteConnection&>>
{
    if (stop.stop_requested())
        return std::nullopt;
    try {
        SQLiteConnection connection(path, SQLiteConnection::Access::ReadingOnly);
        connection.run("PRAGMA busy_timeout = 5000");
        // Each page is needed once: a small cache stays in the processor's.
        connection.run("PRAGMA cache_size = -200");
        const SQLiteInterruption interruption(connection.handle(), stop);
        return read(connection);
    } catch (const std::exception& error) {
        if (!stop.stop_requested())
            qWarning("The library could not be compared beside its work: %s", error.what());
        return std::nullopt;
    }
}

} // namespace

LibraryComparison::LibraryComparison(QString recordsPath, QString projectionPath)
    : m_recordsPath(std::move(recordsPath)),
      m_projectionPath(std::move(projectionPath)),
      m_recordsLane(QStringLiteral("tessary.compare")),
      m_projectionLane(QStringLiteral("tessary.compare"))
{
}

QCoro::Task<ProjectionReconciler::Outcome> LibraryComparison::compare(std::stop_token stop)
{
    const QCoro::Task<std::optional<RowSum>> readingRecords = readRecords(stop);
    const QCoro::Task<std::optional<ProjectionReconciler::Reading>> readingProjection = readProjection(stop);
    const std::optional<RowSum> records = co_await readingRecords;
    const std::optional<ProjectionReconciler::Reading> projection = co_await readingProjection;
    using Outcome = ProjectionReconciler::Outcome;
    if (!records || !projection)
        co_return Outcome::Unknown;
    co_return projection->isInStepWith(*records) ? Outcome::InStep : Outcome::Different;
}

QCoro::Task<std::optional<RowSum>> LibraryComparison::readRecords(std::stop_token stop)
{
    auto work = m_recordsLane.post(
        [path = m_recordsPath, stop] { return readQuietly(path, stop, &ProjectionReconciler::readRecords); });
    co_return co_await work;
}

QCoro::Task<std::optional<ProjectionReconciler::Reading>>
LibraryComparison::readProjection(std::stop_token stop)
{
    auto work = m_projectionLane.post([path = m_projectionPath, stop] {
        return readQuietly(path, stop, &ProjectionReconciler::readProjection);
    });
    co_return co_await work;
}

} // namespace tessary
