#include "capture/ScreenshotImporter.h"

#include "base/AtomicFile.h"
#include "base/ContentHash.h"
#include "capture/AcceptedImages.h"
#include "capture/ClipboardImageName.h"
#include "capture/FileFacts.h"
#include "capture/TextTitle.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcImport, "tessary.import")

namespace tessary {
namespace {

using namespace std::chrono_literals;

constexpr int kThumbnailSize = 480; // pixels, the longer side
constexpr double kThumbnailQuality = 0.78;
constexpr int kIconSize = 128; // pixels
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

/// @throws FileError.
FileFacts copyOriginal(const QString& source, const QString& destination)
{
    copyFileAtomically(source, destination, Durability::PowerCut);
    return factsOf(source);
}

QByteArray pngOf(const QImage& image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    return image.save(&buffer, "PNG") ? bytes : QByteArray();
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
      m_imageCodec(imageCodec),
      m_icons(icons),
      m_clock(clock),
      m_journal(m_paths),
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
    record.sourceAppIconPath = co_await saveAppIcon(application, record.id);
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

ScreenshotImporter::Source ScreenshotImporter::claimTemporary(ImportEpochs::Epoch epoch)
{
    const QString name = clipboardImageName(m_clock.now().toDateTime());
    Source source;
    source.epoch = epoch;
    source.nominalPath = m_paths.root + QLatin1Char('/') + name;
    source.path = source.nominalPath;
    for (int n = 2; m_temporaryPaths.contains(source.path); ++n)
        source.path = m_paths.root + QLatin1Char('/') + numberedImageName(name, n);
    m_temporaryPaths.append(source.path);
    return source;
}

QCoro::Task<ScreenshotImporter::Record>
ScreenshotImporter::importFile(QString path, std::optional<SourceApplicationSnapshot> source,
                               CountDuplicate countDuplicate)
{
    const Taken taken = co_await take(path, source, countDuplicate);
    co_return taken.record;
}

QCoro::Task<FileImport> ScreenshotImporter::takeFile(QString path,
                                                     std::optional<SourceApplicationSnapshot> source,
                                                     CountDuplicate countDuplicate)
{
    const Taken taken = co_await take(path, source, countDuplicate);
    co_return FileImport{taken.outcome, taken.record ? taken.record->id : taken.knownId};
}

QCoro::Task<ScreenshotImporter::Taken>
ScreenshotImporter::take(QString path, std::optional<SourceApplicationSnapshot> application,
                         CountDuplicate countDuplicate)
{
    auto beginning = m_epochs.begin();
    const ImportEpochs::Epoch epoch = co_await beginning;
    auto importing = importSource({path, path, epoch}, application, countDuplicate);
    co_return co_await unlessForgotten(epoch, std::move(importing));
}

QCoro::Task<ScreenshotImporter::Taken>
ScreenshotImporter::importSource(Source source, std::optional<SourceApplicationSnapshot> application,
                                 CountDuplicate countDuplicate)
{
    const QString extension = extensionOf(source.path);
    if (!acceptedImageExtensions().contains(extension))
        co_return Taken{};
    co_await waitUntilStable(source.path);
    auto reading = m_lane.post([path = source.path] { return digestOfFile(path); });
    const FileDigest digest = co_await reading;
    auto entrance = m_hashes.enter(digest.hash);
    const KeyedGate::Pass pass = co_await entrance;
    const std::optional<QUuid> knownId = co_await m_store.identifier(digest.hash);
    if (knownId) {
        if (countDuplicate == CountDuplicate::Yes)
            co_await m_store.registerDuplicate(digest.hash, m_clock.now());
        co_return Taken{FileImport::Outcome::Known, knownId, {}};
    }
    ScreenshotRecord record;
    record.id = QUuid::createUuid();
    record.contentHash = digest.hash;
    record.filename = QFileInfo(source.nominalPath).fileName();
    record.fileType = extension;
    record.originalPath = source.nominalPath;
    record.fileSize = digest.byteCount;
    co_return co_await addImage(source, record, application);
}

QCoro::Task<ScreenshotImporter::Taken>
ScreenshotImporter::addImage(Source source, ScreenshotRecord record,
                             std::optional<SourceApplicationSnapshot> application)
{
    const QSize size = co_await pixelSize(source.path);
    record.pixelWidth = size.width();
    record.pixelHeight = size.height();
    record.libraryPath =
        m_paths.originals + QLatin1Char('/') + identifierText(record.id) + QLatin1Char('.') + record.fileType;
    auto beginning = m_lane.post([this, id = record.id] { m_journal.begin(id); });
    co_await beginning;
    auto thumbnail = createThumbnail(source.path, record.id); // made while the file is copied
    FileFacts facts;
    std::exception_ptr failure;
    try {
        auto copying =
            m_lane.post([source, record] { return copyOriginal(source.path, record.libraryPath); });
        facts = co_await copying;
    } catch (...) {
        failure = std::current_exception();
    }
    record.thumbnailPath = co_await thumbnail;
    if (failure) {
        co_await discardFiles(record.id);
        std::rethrow_exception(failure);
    }
    record.sourceAppIconPath = co_await saveAppIcon(application, record.id);
    attribute(record, application);
    record.importedAt = m_clock.now();
    record.capturedAt = facts.created ? *facts.created : facts.modified.value_or(record.importedAt);
    if (facts.size >= 0)
        record.fileSize = facts.size;
    record.ocrStatus = OCRStatus::Complete; // pictures are recognised on demand only
    record.contentType = ClipboardContentType::Image;
    const bool wasInserted = co_await insertOrDiscard(record, source.epoch);
    if (wasInserted)
        co_return Taken{FileImport::Outcome::Added, {}, record};
    const std::optional<QUuid> knownId = co_await m_store.identifier(record.contentHash);
    co_return Taken{FileImport::Outcome::Known, knownId, {}};
}

QCoro::Task<> ScreenshotImporter::discardFiles(QUuid id)
{
    auto discarding = m_lane.post([this, id] { m_journal.discard(id); });
    co_await discarding;
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

QCoro::Task<> ScreenshotImporter::waitUntilStable(QString path)
{
    qint64 previous = -1;
    qint64 size = -1;
    int steady = 0;
    for (int round = 0; round < kStabilityRounds; ++round) {
        auto measuring = m_lane.post([path] { return fileSize(path); });
        size = co_await measuring;
        steady = size > 0 && size == previous ? steady + 1 : 0;
        if (steady == kSteadyRounds)
            co_return;
        previous = size;
        co_await m_clock.sleep(kStabilityInterval);
    }
    if (size <= 0)
        throw FileError(FileError::Case::ReadCorruptFile, path);
}

QCoro::Task<QSize> ScreenshotImporter::pixelSize(QString path)
{
    try {
        co_return co_await m_imageCodec.pixelSize(path);
    } catch (const ImageError& error) {
        if (error.which() == ImageError::Case::NotAnImage)
            throw FileError(FileError::Case::ReadCorruptFile, path);
        // A picture that is too much for the decoder is still the person's picture.
        qCWarning(lcImport, "the size of a picture could not be read: %s", error.what());
    }
    co_return QSize(0, 0);
}

QCoro::Task<std::optional<QString>> ScreenshotImporter::createThumbnail(QString source, QUuid id)
{
    const QString destination =
        m_paths.thumbnails + QLatin1Char('/') + identifierText(id) + QStringLiteral(".jpg");
    try {
        co_await m_imageCodec.writeThumbnail(source, destination, kThumbnailSize, kThumbnailQuality);
    } catch (const ImageError& error) {
        qCWarning(lcImport, "no thumbnail: %s", error.what());
        co_return std::nullopt;
    }
    co_return destination;
}

QCoro::Task<std::optional<QString>>
ScreenshotImporter::saveAppIcon(std::optional<SourceApplicationSnapshot> application, QUuid id)
{
    if (!application || !application->bundleURL)
        co_return std::nullopt;
    const QImage icon = co_await m_icons.icon(*application->bundleURL, kIconSize);
    if (icon.isNull())
        co_return std::nullopt;
    const QString path = m_paths.appIcons + QLatin1Char('/') + identifierText(id) + QStringLiteral(".png");
    auto saving = m_lane.post([this, icon, path, id]() -> std::optional<QString> {
        const QByteArray png = pngOf(icon);
        if (png.isEmpty())
            return std::nullopt;
        try {
            m_journal.begin(id);
            writeFileAtomically(path, png, Durability::Process);
        } catch (const FileError&) {
            return std::nullopt; // an item without an icon is better than none
        }
        return path;
    });
    co_return co_await saving;
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
    const Source source{m_paths.root + QLatin1Char('/') + fileName,
                        m_paths.root + QLatin1Char('/') + nominalImageName(fileName), epoch};
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
