#include "app/StorageMaintenance.h"

#include "app/AppSettings.h"
#include "app/LibraryFiles.h"
#include "base/Calendar.h"
#include "base/Error.h"
#include "capture/FrontmostAppTracker.h"
#include "capture/ScreenshotImporter.h"
#include "store/FileImageCache.h"
#include "store/SQLiteStore.h"

#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcStorage, "tessary.storage")

namespace tessary {
namespace {

using namespace std::chrono_literals;

constexpr int kPiece = 200;                 // items removed at once
constexpr qsizetype kLookedUp = 1000;       // items at once
constexpr qint64 kGigabyte = 1'000'000'000; // bytes
constexpr auto kBetweenMeasurements = 5s;
constexpr auto kBetweenCleanups = 2s;

} // namespace

StorageMaintenance::StorageMaintenance(const AppSettings& settings, Clock& clock, LibraryFiles& files,
                                       FlowSet& flows)
    : m_settings(settings),
      m_clock(clock),
      m_files(files),
      m_flows(flows),
      m_measurement(
          clock, flows, [this] { return measure(); }, kBetweenMeasurements),
      m_cleanup(
          clock, flows, [this] { return cleanUp(); }, kBetweenCleanups)
{
}

void StorageMaintenance::setLibrary(SQLiteStore& store, ScreenshotImporter& importer,
                                    FrontmostAppTracker& tracker)
{
    m_store = &store;
    m_importer = &importer;
    m_tracker = &tracker;
}

void StorageMaintenance::fileImported()
{
    m_cleanup.request();
    m_measurement.request();
}

// --- removing ---------------------------------------------------------------

QCoro::Task<> StorageMaintenance::purgeExpiredTrash()
{
    try {
        co_await purgeTrash(Trash::Expired);
    } catch (const std::exception& error) {
        Q_EMIT failed(tr("自动清理失败：") + localizedDescription(error));
    }
}

QCoro::Task<qint64> StorageMaintenance::purgeTrash(Trash which)
{
    const FlowSet::Stay stay(m_flows);
    if (m_store == nullptr)
        co_return 0;
    const std::optional<Date> cutOff = which == Trash::Expired ? std::optional(trashCutOff()) : std::nullopt;
    co_return co_await removePieces([this, cutOff] { return m_store->purgeTrash(cutOff, kPiece); });
}

Date StorageMaintenance::trashCutOff() const
{
    return Calendar::current().addingDays(m_clock.now(), -m_settings.trashRetentionDays());
}

QCoro::Task<> StorageMaintenance::enforceStorageLimit()
{
    const FlowSet::Stay stay(m_flows);
    co_await m_cleanup.now();
}

QCoro::Task<> StorageMaintenance::cleanUp()
{
    const qint64 limit = limitBytes();
    if (m_store == nullptr || !m_settings.automaticStorageCleanup() || limit == 0)
        co_return;
    try {
        const Piece piece = [this, limit] { return m_store->removeOldestPictures(limit, kPiece); };
        const qint64 removed = co_await removePieces(piece);
        if (removed > 0)
            qCInfo(lcStorage, "pictures removed to keep to the limit: %lld", removed);
    } catch (const std::exception& error) {
        Q_EMIT failed(tr("自动清理失败：") + localizedDescription(error));
    }
}

qint64 StorageMaintenance::limitBytes() const
{
    qint64 bytes = 0;
    if (__builtin_mul_overflow(qint64(std::max(m_settings.maxStorageGB(), 0)), kGigabyte, &bytes))
        qFatal("The storage limit does not fit into 64 bits");
    return bytes;
}

QCoro::Task<qint64> StorageMaintenance::removePieces(Piece piece)
{
    qint64 count = 0;
    std::exception_ptr failure;
    co_await beginRemoval();
    for (bool isComplete = false; !isComplete && !isStopped();) {
        RemovedItems removed;
        try {
            removed = co_await piece();
        } catch (...) {
            failure = std::current_exception();
            break;
        }
        QStringList files;
        for (const RemovedItem& item : removed.items)
            files += item.files;
        co_await m_files.removeFiles(*m_paths, files);
        count += removed.items.size();
        isComplete = removed.isComplete || removed.items.isEmpty();
    }
    co_await endRemoval();
    if (count > 0) {
        Q_EMIT libraryChanged({LibraryChange::Kind::Removed, {}});
        refreshStorageUsage();
    }
    if (failure)
        std::rethrow_exception(failure);
    co_return count;
}

QCoro::Task<> StorageMaintenance::beginRemoval()
{
    if (m_removals++ == 0)
        co_await m_files.beginRemoval(*m_paths);
}

QCoro::Task<> StorageMaintenance::endRemoval()
{
    if (--m_removals == 0)
        co_await m_files.endRemoval(*m_paths);
}

QCoro::Task<> StorageMaintenance::finishRemovals()
{
    const FlowSet::Stay stay(m_flows);
    if (m_store == nullptr || !m_paths)
        co_return;
    const bool wasInterrupted = co_await m_files.wasRemovalInterrupted(*m_paths);
    if (!wasInterrupted)
        co_return;
    try {
        co_await removeStrayFiles();
    } catch (const std::exception& error) {
        Q_EMIT failed(tr("自动清理失败：") + localizedDescription(error));
    }
}

QCoro::Task<> StorageMaintenance::removeStrayFiles()
{
    const QList<QUuid> owners = co_await m_files.owners(*m_paths);
    for (qsizetype next = 0; next < owners.size(); next += kLookedUp) {
        if (isStopped())
            co_return; // the note stays for the next start
        const QList<QUuid> strays = co_await m_store->unknownAmong(owners.mid(next, kLookedUp));
        co_await m_files.removeFilesOf(*m_paths, strays);
    }
    co_await m_files.endRemoval(*m_paths);
}

// --- clearing ---------------------------------------------------------------

QCoro::Task<> StorageMaintenance::clearAllData()
{
    const FlowSet::Stay stay(m_flows);
    if (m_store == nullptr || !m_paths)
        co_return;
    try {
        co_await clear();
        qCInfo(lcStorage, "the library was cleared");
    } catch (const std::exception& error) {
        Q_EMIT failed(tr("无法清空数据：") + localizedDescription(error));
    }
}

QCoro::Task<> StorageMaintenance::clear()
{
    const ImportEpochs::Hold hold = m_importer->forgetRunningImports();
    co_await beginRemoval();
    std::exception_ptr failure;
    bool isEmpty = false;
    try {
        co_await m_store->removeEverything();
        isEmpty = true;
        FileImageCache::shared().clear();
        co_await m_tracker->erase(); // first, or a file that cannot be removed would save it
        co_await m_files.removeAllFiles(*m_paths);
    } catch (...) {
        failure = std::current_exception();
    }
    co_await endRemoval();
    if (isEmpty) {
        Q_EMIT libraryChanged({LibraryChange::Kind::Cleared, {}});
        refreshStorageUsage();
    }
    if (failure)
        std::rethrow_exception(failure);
}

// --- measuring --------------------------------------------------------------

void StorageMaintenance::refreshStorageUsage()
{
    m_flows.add(m_measurement.now());
}

QCoro::Task<> StorageMaintenance::measure()
{
    if (!m_paths)
        co_return;
    const std::optional<qint64> bytes = co_await m_meter.allocatedSize(m_paths->root, m_flows.stopToken());
    if (!bytes || *bytes == m_storageBytes)
        co_return;
    m_storageBytes = *bytes;
    Q_EMIT storageBytesChanged();
}

QCoro::Task<StorageUsage> StorageMaintenance::measureUsage()
{
    const FlowSet::Stay stay(m_flows);
    StorageUsage usage;
    if (m_paths)
        usage = co_await m_meter.sizes(*m_paths, m_flows.stopToken());
    if (m_store != nullptr)
        usage.items = co_await m_store->counts();
    usage.limitBytes = limitBytes();
    co_return usage;
}

} // namespace tessary
