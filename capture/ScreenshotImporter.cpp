#include "capture/ScreenshotImporter.h"

#include "base/AtomicFile.h"
#include "base/ContentHash.h"
#include "capture/AcceptedImages.h"
#include "capture/ClipboardImageName.h"
#include "capture/FileFacts.h"
#include "capture/TextTitle.h"

#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcImport, "tessary.import")

namespace tessary {
namespace {

using namespace std::chrono_literals;

constexpr int kStabilityRounds = 12;
constexpr int kSteadyRounds = 2;
constexpr auto kStabilityInterval = 250ms;

struct PreparedText {
    QString hash;
    qint64 byteCount = 0;
    std::optional<QString> title;
};

PreparedText prepare(const QString& text)
{
    const QByteArray utf8 = text.toUtf8();
    return {contentHash(utf8), utf8.size(), titleOf(text)};
}

struct Copied {
    FileFacts facts;   // of the source
    FileDigest digest; // of the copy
};

/// @throws FileError.
Copied copyOriginal(const QString& source, const QString& destination)
{
    copyFileAtomically(source, destination, Durability::PowerCut);
    return {factsOf(source), digestOfFile(destination)};
}

/// What was read of a file, and which state of it that was at the earliest.
struct SourceContent {
    FileStamp stamp;
    FileDigest digest;
};

SourceContent contentOf(const QString& path)
{
    const FileStamp stamp = factsOf(path).stamp;
    return {stamp, digestOfFile(path)};
}

void attribute(ScreenshotRecord& record, const std::optional<SourceApplicationSnapshot>& application)
{
    if (!application)
        return;
    record.sourceAppName = application->localizedName;
    record.sourceBundleIdentifier = application->bundleIdentifier;
}

QString extensionOf(const QString& path)
{
    return QFileInfo(path).suffix().toLower();
}

} // namespace

ScreenshotImporter::ScreenshotImporter(AppPaths paths, SQLiteStore& store, ImageCodec& imageCodec,
                                       ApplicationIcons& icons, Clock& clock)
    : m_paths(std::move(paths)),
      m_store(store),
      m_clock(clock),
      m_journal(m_paths),
      m_pictures(m_paths, imageCodec, icons),
      m_reader(std::make_shared<ExpendableLane>(QStringLiteral("tessary.import.reading"))),
      m_lane(QStringLiteral("tessary.import"))
{
}

QCoro::Task<ScreenshotImporter::Record>
ScreenshotImporter::importClipboardPayload(ClipboardPayload payload,
                                           std::optional<SourceApplicationSnapshot> source)
{
    auto beginning = m_epochs.begin();
    const ImportEpochs::Epoch epoch = co_await beginning;
    const bool isText = std::holds_alternative<QString>(payload);
    auto importing =
        isText ? importText(std::move(std::get<QString>(payload)), source, epoch)
               : importTemporary(claimTemporary(epoch), std::move(std::get<QByteArray>(payload)), source);
    co_return co_await unlessForgotten(epoch, std::move(importing));
}

template <typename Result>
QCoro::Task<Result> ScreenshotImporter::unlessForgotten(ImportEpochs::Epoch epoch, QCoro::Task<Result> import)
{
    Result result{};
    std::exception_ptr failure;
    try {
        result = co_await import;
    } catch (...) {
        failure = std::current_exception();
    }
    if (!m_epochs.isCurrent(epoch))
        co_return Result{};
    if (failure)
        std::rethrow_exception(failure);
    co_return result;
}

// --- text -------------------------------------------------------------------

QCoro::Task<ScreenshotImporter::Record>
ScreenshotImporter::importText(QString text, std::optional<SourceApplicationSnapshot> application,
                               ImportEpochs::Epoch epoch)
{
    auto preparing = m_lane.post([text] { return prepare(text); });
    const PreparedText prepared = co_await preparing;
    auto entrance = m_hashes.enter(prepared.hash);
    const KeyedGate::Pass pass = co_await entrance;
    const bool isKnown = co_await m_store.contains(prepared.hash);
    if (isKnown) {
        co_await m_store.registerDuplicate(prepared.hash, m_clock.now());
        co_return std::nullopt;
    }
    ScreenshotRecord record;
    record.id = QUuid::createUuid();
    record.contentHash = prepared.hash;
    record.filename = prepared.title.value_or(QStringLiteral("剪贴板文字"));
    record.fileType = QStringLiteral("text");
    record.fileSize = prepared.byteCount;
    record.ocrStatus = OCRStatus::Complete;
    record.generatedTitle = prepared.title;
    record.contentType = ClipboardContentType::Text;
    record.textContent = text;
    attribute(record, application);
    record.sourceAppIconPath = co_await m_pictures.saveAppIcon(application, record.id);
    record.capturedAt = m_clock.now();
    record.importedAt = record.capturedAt;
    const bool wasInserted = co_await insertOrDiscard(record, epoch);
    co_return wasInserted ? Record(record) : std::nullopt;
}

// --- pictures ---------------------------------------------------------------

QCoro::Task<ScreenshotImporter::Record>
ScreenshotImporter::importTemporary(Source source, QByteArray bytes,
                                    std::optional<SourceApplicationSnapshot> application)
{
    Record record;
    std::exception_ptr failure;
    try {
        auto writing = m_lane.post(
            [path = source.path, bytes] { writeFileAtomically(path, bytes, Durability::Process); });
        bytes.clear();
        co_await writing;
        if (m_epochs.isCurrent(source.epoch)) {
            const Taken taken = co_await importSource(source, application, CountDuplicate::Yes);
            record = taken.record;
        }
        if (record)
            co_await m_store.markUsed(record->id, m_clock.now());
    } catch (...) {
        failure = std::current_exception();
    }
    auto removing = m_lane.post([path = source.path] { QFile::remove(path); });
    co_await removing;
    m_temporaryPaths.removeOne(source.path);
    if (failure)
        std::rethrow_exception(failure);
    co_return record;
}

ScreenshotImporter::Source ScreenshotImporter::ownSource(const QString& path, ImportEpochs::Epoch epoch) const
{
    return {path, path, m_reader, {}, false, epoch};
}

ScreenshotImporter::Source ScreenshotImporter::claimTemporary(ImportEpochs::Epoch epoch)
{
    const QString name = clipboardImageName(m_clock.now().toDateTime());
    Source source = ownSource(m_paths.root + QLatin1Char('/') + name, epoch);
    for (int n = 2; m_temporaryPaths.contains(source.path); ++n)
        source.path = m_paths.root + QLatin1Char('/') + numberedImageName(name, n);
    m_temporaryPaths.append(source.path);
    return source;
}

QCoro::Task<ScreenshotImporter::Record>
ScreenshotImporter::importFile(QString path, std::optional<SourceApplicationSnapshot> source,
                               CountDuplicate countDuplicate)
{
    auto beginning = m_epochs.begin();
    const ImportEpochs::Epoch epoch = co_await beginning;
    Source file = ownSource(path, epoch);
    file.isForeign = true;
    auto importing = importSource(file, source, countDuplicate);
    const Taken taken = co_await unlessForgotten(epoch, std::move(importing));
    co_return taken.record;
}

QCoro::Task<TakenFile> ScreenshotImporter::takeFile(ForeignFile file,
                                                    std::optional<SourceApplicationSnapshot> source,
                                                    CountDuplicate countDuplicate)
{
    const QString path = QFile::decodeName(file.path);
    auto beginning = m_epochs.begin();
    const ImportEpochs::Epoch epoch = co_await beginning;
    Source reached{path, path, file.lane, file.giveUp, true, epoch};
    const bool isText = QFile::encodeName(path) == file.path;
    if (!isText) {
        auto linking = m_lane.post([this, target = file.path] { return m_journal.linkTo(target); });
        reached.path = co_await linking;
    }
    Taken taken;
    std::exception_ptr failure;
    try {
        auto importing = importSource(reached, source, countDuplicate);
        taken = co_await unlessForgotten(epoch, std::move(importing));
    } catch (...) {
        failure = std::current_exception();
    }
    if (!isText) {
        auto unlinking = m_lane.post([link = reached.path] { QFile::remove(link); });
        co_await unlinking;
    }
    if (failure)
        std::rethrow_exception(failure);
    const std::optional<QUuid> id = taken.record ? taken.record->id : taken.knownId;
    co_return TakenFile{{taken.outcome, id}, taken.stamp};
}

QCoro::Task<ScreenshotImporter::Taken>
ScreenshotImporter::importSource(Source source, std::optional<SourceApplicationSnapshot> application,
                                 CountDuplicate countDuplicate)
{
    Taken taken;
    const QString extension = extensionOf(source.nominalPath);
    if (!acceptedImageExtensions().contains(extension))
        co_return taken;
    co_await waitUntilStable(source);
    auto reading = source.lane->post([path = source.path] { return contentOf(path); }, source.giveUp);
    const SourceContent content = co_await reading;
    auto entrance = m_hashes.enter(content.digest.hash);
    KeyedGate::Pass entered = co_await entrance;
    auto pass = std::make_shared<KeyedGate::Pass>(std::move(entered));
    taken.knownId = co_await countIfKnown(content.digest.hash, countDuplicate);
    if (!taken.knownId) {
        ScreenshotRecord record;
        record.id = QUuid::createUuid();
        record.contentHash = content.digest.hash;
        record.filename = QFileInfo(source.nominalPath).fileName();
        record.fileType = extension;
        record.originalPath = source.nominalPath;
        record.fileSize = content.digest.byteCount;
        attribute(record, application);
        taken = co_await addImage(source, record, application, countDuplicate, std::move(pass));
    }
    taken.outcome = taken.record ? FileImport::Outcome::Added : FileImport::Outcome::Known;
    taken.stamp = content.stamp;
    co_return taken;
}

QCoro::Task<std::optional<QUuid>> ScreenshotImporter::countIfKnown(QString hash,
                                                                   CountDuplicate countDuplicate)
{
    const std::optional<QUuid> knownId = co_await m_store.identifier(hash);
    if (knownId && countDuplicate == CountDuplicate::Yes)
        co_await m_store.registerDuplicate(hash, m_clock.now());
    co_return knownId;
}

QCoro::Task<ScreenshotImporter::Taken>
ScreenshotImporter::addImage(Source source, ScreenshotRecord record,
                             std::optional<SourceApplicationSnapshot> application,
                             CountDuplicate countDuplicate, std::shared_ptr<KeyedGate::Pass> pass)
{
    record.libraryPath =
        m_paths.originals + QLatin1Char('/') + identifierText(record.id) + QLatin1Char('.') + record.fileType;
    auto beginning = m_lane.post([this, id = record.id] { m_journal.begin(id); });
    co_await beginning;
    Taken taken;
    std::exception_ptr failure;
    try {
        if (source.isForeign)
            taken = co_await addForeign(source, record, application, countDuplicate, std::move(pass));
        else
            taken.record = co_await addOwn(source, record, application);
    } catch (const Abandoned&) {
        throw; // the thread that hangs may yet write there: the next start clears it away
    } catch (...) {
        failure = std::current_exception();
    }
    const bool isAdded = taken.record.has_value();
    auto settling =
        m_lane.post([this, isAdded, id = record.id] { isAdded ? m_journal.end(id) : m_journal.discard(id); });
    co_await settling;
    if (failure)
        std::rethrow_exception(failure);
    co_return taken;
}

QCoro::Task<ScreenshotImporter::Taken>
ScreenshotImporter::addForeign(Source source, ScreenshotRecord record,
                               std::optional<SourceApplicationSnapshot> application,
                               CountDuplicate countDuplicate, std::shared_ptr<KeyedGate::Pass> pass)
{
    auto copying = source.lane->post(
        [source, record] {
            if (source.giveUp.stop_requested())
                throw Abandoned();
            return copyOriginal(source.path, record.libraryPath);
        },
        source.giveUp);
    const Copied copied = co_await copying;
    Taken taken;
    if (copied.digest.hash != record.contentHash) { // it changed meanwhile: the copy is what counts
        pass.reset();
        auto entrance = m_hashes.enter(copied.digest.hash);
        KeyedGate::Pass entered = co_await entrance;
        pass = std::make_shared<KeyedGate::Pass>(std::move(entered));
        taken.knownId = co_await countIfKnown(copied.digest.hash, countDuplicate);
        if (taken.knownId)
            co_return taken;
        record.contentHash = copied.digest.hash;
    }
    record.fileSize = copied.digest.byteCount;
    // Everything else is read from the copy: it stays as it is, and where it is.
    const QSize size = co_await m_pictures.pixelSize(record.libraryPath, source.nominalPath);
    record.pixelWidth = size.width();
    record.pixelHeight = size.height();
    record.thumbnailPath = co_await m_pictures.createThumbnail(record.libraryPath, record.id);
    taken.record = co_await insertImage(record, copied.facts, application, source.epoch);
    if (!taken.record)
        taken.knownId = co_await m_store.identifier(record.contentHash);
    co_return taken;
}

QCoro::Task<ScreenshotImporter::Record>
ScreenshotImporter::addOwn(Source source, ScreenshotRecord record,
                           std::optional<SourceApplicationSnapshot> application)
{
    const QSize size = co_await m_pictures.pixelSize(source.path, source.nominalPath);
    record.pixelWidth = size.width();
    record.pixelHeight = size.height();
    auto thumbnail = m_pictures.createThumbnail(source.path, record.id); // made while the file is copied
    Copied copied;
    std::exception_ptr failure;
    try {
        auto copying =
            m_lane.post([source, record] { return copyOriginal(source.path, record.libraryPath); });
        copied = co_await copying;
    } catch (...) {
        failure = std::current_exception();
    }
    record.thumbnailPath = co_await thumbnail;
    if (failure)
        std::rethrow_exception(failure);
    co_return co_await insertImage(record, copied.facts, application, source.epoch);
}

QCoro::Task<ScreenshotImporter::Record>
ScreenshotImporter::insertImage(ScreenshotRecord record, FileFacts facts,
                                std::optional<SourceApplicationSnapshot> application,
                                ImportEpochs::Epoch epoch)
{
    record.sourceAppIconPath = co_await m_pictures.saveAppIcon(application, record.id);
    record.importedAt = m_clock.now();
    record.capturedAt = facts.created ? *facts.created : facts.modified.value_or(record.importedAt);
    record.ocrStatus = OCRStatus::Complete; // pictures are recognised on demand only
    record.contentType = ClipboardContentType::Image;
    bool wasInserted = false;
    if (m_epochs.isCurrent(epoch))
        wasInserted = co_await m_store.insert(record);
    co_return wasInserted ? Record(record) : std::nullopt;
}

QCoro::Task<bool> ScreenshotImporter::insertOrDiscard(ScreenshotRecord record, ImportEpochs::Epoch epoch)
{
    bool wasInserted = false;
    std::exception_ptr failure;
    try {
        if (m_epochs.isCurrent(epoch))
            wasInserted = co_await m_store.insert(record);
    } catch (...) {
        failure = std::current_exception();
    }
    auto settling = m_lane.post(
        [this, wasInserted, id = record.id] { wasInserted ? m_journal.end(id) : m_journal.discard(id); });
    co_await settling;
    if (failure)
        std::rethrow_exception(failure);
    co_return wasInserted;
}

QCoro::Task<> ScreenshotImporter::waitUntilStable(Source source)
{
    qint64 previous = -1;
    qint64 size = -1;
    int steady = 0;
    for (int round = 0; round < kStabilityRounds; ++round) {
        auto measuring = source.lane->post([path = source.path] { return fileSize(path); }, source.giveUp);
        size = co_await measuring;
        steady = size > 0 && size == previous ? steady + 1 : 0;
        if (steady == kSteadyRounds)
            co_return;
        previous = size;
        co_await m_clock.sleep(kStabilityInterval);
    }
    if (size <= 0)
        throw FileError(FileError::Case::ReadCorruptFile, source.nominalPath);
}

// --- after a crash ----------------------------------------------------------

QCoro::Task<bool>
ScreenshotImporter::recover(std::function<std::optional<SourceApplicationSnapshot>(Date)> sourceAt)
{
    co_await undoInterrupted();
    auto listing = m_lane.post([this] {
        QDir root(m_paths.root);
        return root.entryInfoList({QStringLiteral("*.png")}, QDir::Files, QDir::Name);
    });
    const QFileInfoList files = co_await listing;
    bool hasChanged = false;
    for (const QFileInfo& file : files) {
        if (nominalImageName(file.fileName()).isEmpty())
            continue;
        const Date time = Date::fromDateTime(file.lastModified());
        const bool wasImported = co_await recoverPicture(file.fileName(), sourceAt(time));
        hasChanged = hasChanged || wasImported;
    }
    co_return hasChanged;
}

QCoro::Task<> ScreenshotImporter::undoInterrupted()
{
    auto listing = m_lane.post([this] { return m_journal.interrupted(); });
    const QList<QUuid> interrupted = co_await listing;
    for (const QUuid& id : interrupted) {
        const bool isListed = co_await m_store.containsRecord(id);
        auto settling =
            m_lane.post([this, isListed, id] { isListed ? m_journal.end(id) : m_journal.discard(id); });
        co_await settling;
    }
    if (interrupted.isEmpty())
        co_return;
    auto sweeping = m_lane.post([this] { m_journal.sweepItemFolders(); });
    co_await sweeping;
}

QCoro::Task<bool> ScreenshotImporter::recoverPicture(QString fileName,
                                                     std::optional<SourceApplicationSnapshot> application)
{
    auto beginning = m_epochs.begin();
    const ImportEpochs::Epoch epoch = co_await beginning;
    Source source = ownSource(m_paths.root + QLatin1Char('/') + fileName, epoch);
    source.nominalPath = m_paths.root + QLatin1Char('/') + nominalImageName(fileName);
    m_temporaryPaths.append(source.path);
    Record record;
    bool isDone = true;
    try {
        const Taken taken = co_await importSource(source, application, CountDuplicate::No);
        record = taken.record;
        if (record)
            co_await m_store.markUsed(record->id, m_clock.now());
    } catch (const FileError& error) {
        isDone = error.which() == FileError::Case::ReadCorruptFile; // others may pass by the next start
        qCWarning(lcImport, "a picture copied earlier: %s", error.what());
    } catch (const std::exception& error) {
        isDone = false;
        qCWarning(lcImport, "a picture copied earlier: %s", error.what());
    }
    if (isDone) {
        auto removing = m_lane.post([path = source.path] { QFile::remove(path); });
        co_await removing;
    }
    m_temporaryPaths.removeOne(source.path);
    co_return record.has_value();
}

} // namespace tessary
