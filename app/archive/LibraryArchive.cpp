#include "app/archive/LibraryArchive.h"

#include "app/archive/ArchiveError.h"
#include "app/archive/ArchiveReader.h"
#include "app/archive/ArchiveWriter.h"
#include "store/SQLiteStore.h"

#include <QFile>

#include <memory>

namespace tessary {
namespace {

constexpr int kPage = 100; // items in memory at a time
constexpr int kLinesTold = 5;

} // namespace

LibraryArchive::LibraryArchive(AppPaths paths, SQLiteStore& store, ImportEpochs& epochs)
    : m_paths(std::move(paths)),
      m_store(store),
      m_journal(m_paths),
      m_epochs(epochs),
      m_lane(QStringLiteral("tessary.archive"))
{
}

QCoro::Task<LibraryArchive::Exported> LibraryArchive::exportTo(QString folder, std::stop_token stop)
{
    auto opening = m_lane.post([folder] { return std::make_shared<ArchiveWriter>(folder); });
    std::shared_ptr<ArchiveWriter> writer = co_await opening;
    Exported result;
    std::exception_ptr failure;
    try {
        QUuid last;
        for (;;) {
            const QList<ScreenshotRecord> page = co_await m_store.page(last, kPage);
            if (page.isEmpty())
                break;
            for (const ScreenshotRecord& record : page) {
                if (stop.stop_requested())
                    throw ArchiveError(ArchiveError::Case::Interrupted, folder);
                auto adding = m_lane.post([writer, record] { writer->add(record); });
                co_await adding;
                ++result.items;
            }
            last = page.constLast().id;
        }
        auto finishing = m_lane.post([writer] { writer->finish(); });
        co_await finishing;
        result.files = writer->files();
        result.missingFiles = writer->missingFiles();
    } catch (...) {
        failure = std::current_exception();
    }
    // Where it failed, destroying it removes what it wrote.
    auto closing = m_lane.post(
        [held = std::make_shared<std::shared_ptr<ArchiveWriter>>(std::move(writer))] { held->reset(); });
    co_await closing;
    if (failure)
        std::rethrow_exception(failure);
    co_return result;
}

QCoro::Task<LibraryArchive::Restored> LibraryArchive::restoreFrom(QString folder, std::stop_token stop)
{
    auto entrance = m_restores.enter(QString());
    const KeyedGate::Pass pass = co_await entrance;
    auto beginning = m_epochs.begin();
    const ImportEpochs::Epoch epoch = co_await beginning;
    auto opening = m_lane.post([folder] { return std::make_shared<ArchiveReader>(folder); });
    const std::shared_ptr<ArchiveReader> archive = co_await opening;
    Restored result;
    for (;;) {
        auto reading = m_lane.post([archive] { return archive->next(); });
        const std::optional<ArchiveReader::Entry> entry = co_await reading;
        if (!entry)
            co_return result;
        if (stop.stop_requested() || !m_epochs.isCurrent(epoch))
            throw ArchiveError(ArchiveError::Case::Interrupted, folder);
        if (!entry->record) {
            if (++result.unreadable <= kLinesTold)
                result.unreadableLines.append(entry->line);
            continue;
        }
        const Taken taken = co_await take(*archive, *entry->record, epoch, result);
        taken == Taken::Added ? ++result.added : ++result.repeated;
    }
}

QCoro::Task<LibraryArchive::Taken> LibraryArchive::take(const ArchiveReader& archive, ScreenshotRecord listed,
                                                        ImportEpochs::Epoch epoch, Restored& result)
{
    const bool hasRecord = co_await m_store.containsRecord(listed.id);
    if (hasRecord) {
        co_await mend(archive, listed);
        co_return Taken::Repeated;
    }
    const bool hasContent = co_await m_store.contains(listed.contentHash);
    if (hasContent)
        co_return Taken::Repeated;
    const ScreenshotRecord record = ArchiveReader::rebased(listed, m_paths);
    bool wasInserted = false;
    std::exception_ptr failure;
    try {
        auto copying = m_lane.post([this, &archive, listed, record] {
            m_journal.begin(record.id);
            return archive.copyFiles(listed, record);
        });
        const qint64 missing = co_await copying;
        if (m_epochs.isCurrent(epoch))
            wasInserted = co_await m_store.insert(record);
        result.missingFiles += wasInserted ? missing : 0;
    } catch (...) {
        failure = std::current_exception();
    }
    co_await settle(record.id, wasInserted);
    if (failure)
        std::rethrow_exception(failure);
    co_return wasInserted ? Taken::Added : Taken::Repeated;
}

/// Brings back the picture of an item that the library lists and whose file it has lost.
QCoro::Task<> LibraryArchive::mend(const ArchiveReader& archive, ScreenshotRecord listed)
{
    const std::optional<ScreenshotRecord> kept = co_await m_store.record(listed.id);
    if (!kept || kept->contentHash != listed.contentHash || kept->libraryPath.isEmpty())
        co_return;
    const ScreenshotRecord record = ArchiveReader::rebased(listed, m_paths);
    if (record.libraryPath != kept->libraryPath)
        co_return;
    auto mending = m_lane.post([&archive, listed, record] {
        if (!QFile::exists(record.libraryPath))
            archive.copyFiles(listed, record);
    });
    co_await mending;
}

QCoro::Task<> LibraryArchive::settle(QUuid id, bool isListed)
{
    auto settling =
        m_lane.post([this, id, isListed] { isListed ? m_journal.end(id) : m_journal.discard(id); });
    co_await settling;
}

} // namespace tessary
