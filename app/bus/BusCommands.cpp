#include "app/bus/BusCommands.h"

#include "app/AppRuntime.h"
#include "app/archive/ArchiveLayout.h"
#include "app/bus/BusError.h"
#include "app/bus/MemoryFile.h"
#include "base/FileError.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace tessary {
namespace {

constexpr int kDefaultLimit = 100;
constexpr int kMostItems = 500;                   // in one answer
constexpr qint64 kMostBytes = 16LL * 1024 * 1024; // after which an answer is cut
constexpr qsizetype kListText = 20'000;           // UTF-16 units; longer texts are read one by one

BusError invalid(const QString& sentence)
{
    return {BusError::Case::InvalidArgument, sentence};
}

/// @returns the value of that name, or what is to be taken without one. @throws BusError.
template <typename Value, std::size_t Count>
Value named(const QVariantMap& options, const QString& key, const std::array<Value, Count>& values,
            Value otherwise)
{
    if (!options.contains(key))
        return otherwise;
    const QString name = options.value(key).toString();
    const auto found =
        std::find_if(values.begin(), values.end(), [&](Value value) { return rawValue(value) == name; });
    if (found == values.end())
        throw invalid(QStringLiteral("unknown %1: %2").arg(key, name));
    return *found;
}

int number(const QVariantMap& options, const QString& key, int otherwise)
{
    if (!options.contains(key))
        return otherwise;
    bool isNumber = false;
    const int value = options.value(key).toInt(&isNumber);
    if (!isNumber || value < 0)
        throw invalid(QStringLiteral("%1 is no number from 0 on").arg(key));
    return value;
}

QStringList cleaned(const QStringList& tags)
{
    QStringList kept;
    for (const QString& tag : tags) {
        const QString trimmed = tag.trimmed();
        if (!trimmed.isEmpty() && !kept.contains(trimmed))
            kept.append(trimmed);
    }
    return kept;
}

QVariant whole(qint64 number)
{
    return QVariant::fromValue(number);
}

QString nameOf(GlobalHotKeyService::HotKey hotKey)
{
    switch (hotKey) {
    case GlobalHotKeyService::HotKey::QuickSearch:
        return QStringLiteral("quickSearch");
    case GlobalHotKeyService::HotKey::LocalOCR:
        return QStringLiteral("localOCR");
    case GlobalHotKeyService::HotKey::ToggleMonitoring:
        break;
    }
    return QStringLiteral("toggleMonitoring");
}

QString nameOf(FileImport::Outcome outcome)
{
    switch (outcome) {
    case FileImport::Outcome::Added:
        return QStringLiteral("added");
    case FileImport::Outcome::Known:
        return QStringLiteral("known");
    case FileImport::Outcome::Excluded:
        return QStringLiteral("excluded");
    case FileImport::Outcome::NotAccepted:
        break;
    }
    return QStringLiteral("unsupported");
}

/// @throws FileError.
QDBusUnixFileDescriptor openFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw FileError::fromErrno(errno, path, FileError::Operation::Read);
    return QDBusUnixFileDescriptor(file.handle());
}

std::optional<RecognitionLevel> levelIn(const QVariantMap& options)
{
    const QVariant isFast = options.value(QStringLiteral("fast"));
    if (!isFast.isValid())
        return std::nullopt;
    return isFast.toBool() ? RecognitionLevel::Fast : RecognitionLevel::Accurate;
}

QJsonObject described(const TextObservation& line)
{
    return {{QStringLiteral("text"), line.candidates.value(0)},
            {QStringLiteral("confidence"), line.confidence},
            {QStringLiteral("x"), line.box.x()},
            {QStringLiteral("y"), line.box.y()},
            {QStringLiteral("width"), line.box.width()},
            {QStringLiteral("height"), line.box.height()}};
}

QByteArray json(const LocalOCRFlow::RecognizedPicture& picture)
{
    QJsonArray lines;
    for (const TextObservation& line : picture.lines)
        if (!line.candidates.isEmpty())
            lines.append(described(line));
    const QJsonObject whole{{QStringLiteral("text"), OCRService::text(picture.lines)},
                            {QStringLiteral("width"), picture.size.width()},
                            {QStringLiteral("height"), picture.size.height()},
                            {QStringLiteral("lines"), lines}};
    return QJsonDocument(whole).toJson(QJsonDocument::Compact) + '\n';
}

} // namespace

BusCommands::BusCommands(AppRuntime& runtime) : m_runtime(runtime), m_lane(QStringLiteral("tessary.bus")) {}

QCoro::Task<SQLiteStore*> BusCommands::library()
{
    co_await m_runtime.opened();
    if (m_runtime.store() == nullptr || m_runtime.flows().stopToken().stop_requested())
        throw BusError(BusError::Case::Failed, m_runtime.lastError().value_or(
                                                   QCoreApplication::translate("Bus", "资料库未能打开。")));
    co_return m_runtime.store();
}

QCoro::Task<ScreenshotRecord> BusCommands::item(QString id)
{
    SQLiteStore* const store = co_await library();
    const QUuid uuid = QUuid::fromString(id);
    std::optional<ScreenshotRecord> found;
    if (!uuid.isNull())
        found = co_await store->record(uuid);
    if (!found)
        throw BusError(BusError::Case::NotFound, QStringLiteral("no item has the id %1").arg(id));
    co_return *std::move(found);
}

// --- asking -----------------------------------------------------------------

BusCommands::Answer BusCommands::status()
{
    co_await m_runtime.opened();
    QStringList conflicts;
    for (const GlobalHotKeyService::HotKey hotKey : m_runtime.hotKeyConflicts())
        conflicts.append(nameOf(hotKey));
    std::sort(conflicts.begin(), conflicts.end());
    const QVariantMap status{
        {QStringLiteral("version"), QStringLiteral(TESSARY_VERSION)},
        {QStringLiteral("monitoring"), m_runtime.isMonitoring()},
        {QStringLiteral("library"), m_runtime.store() != nullptr ? m_runtime.paths()->root : QString()},
        {QStringLiteral("lastError"), m_runtime.lastError().value_or(QString())},
        {QStringLiteral("shortcutConflicts"), conflicts},
        {QStringLiteral("screenRecording"), m_runtime.screenRecordingPermissionGranted()},
        {QStringLiteral("accessibility"), m_runtime.accessibilityPermissionGranted()},
        {QStringLiteral("reminders"), m_runtime.reminderPermissionGranted()},
    };
    co_return QVariantList(1, status);
}

BusCommands::Answer BusCommands::setMonitoring(bool isMonitoring)
{
    co_await library();
    if (m_runtime.isMonitoring() != isMonitoring)
        m_runtime.toggleMonitoring();
    co_return QVariantList();
}

BusCommands::Answer BusCommands::search(QString query, QVariantMap options)
{
    ListRequest request;
    request.rawQuery = query;
    request.scope = named(options, QStringLiteral("scope"), kScreenshotScopes, ScreenshotScope::All);
    request.sort = named(options, QStringLiteral("sort"), kScreenshotSorts, ScreenshotSort::Relevance);
    const int limit = number(options, QStringLiteral("limit"), kDefaultLimit);
    request.offset = number(options, QStringLiteral("offset"), 0);
    request.limit = std::min(limit, kMostItems);
    const int longest = number(options, QStringLiteral("maximumTextLength"), 0);
    request.maximumTextLength = longest > 0 ? longest : kListText;
    request.now = m_runtime.clock().now();
    SQLiteStore* const store = co_await library();
    QList<ScreenshotRecord> items = co_await store->search(request, m_runtime.flows().stopToken());
    const int found = static_cast<int>(items.size());
    if (longest == 0)
        items = co_await wholeItems(std::move(items));
    QVariantList answer = co_await lines(items, found);
    const bool wasCut = found == request.limit && request.limit < limit;
    answer[2] = answer.at(2).toBool() || wasCut;
    co_return answer;
}

/// Reads those again of whose texts the list holds the beginning only, as far as one answer takes them.
QCoro::Task<QList<ScreenshotRecord>> BusCommands::wholeItems(QList<ScreenshotRecord> listed)
{
    qint64 size = 0;
    for (qsizetype i = 0; i < listed.size() && size < kMostBytes; ++i) {
        if (listed.at(i).textContent.size() >= kListText) {
            const std::optional<ScreenshotRecord> whole = co_await m_runtime.store()->record(listed.at(i).id);
            if (whole)
                listed[i] = *whole;
        }
        size += listed.at(i).textContent.size();
    }
    co_return listed;
}

/// @returns a file with the items' lines, their number, and whether not all found room.
QCoro::Task<QVariantList> BusCommands::lines(QList<ScreenshotRecord> items, int limit)
{
    auto writing = m_lane.post([items, limit]() -> QVariantList {
        MemoryFile file;
        uint count = 0;
        for (const ScreenshotRecord& record : items) {
            if (file.size() >= kMostBytes)
                break;
            file.append(ArchiveLayout::line(record));
            ++count;
        }
        return {QVariant::fromValue(file.handOut()), count, static_cast<int>(count) < limit};
    });
    co_return co_await writing;
}

BusCommands::Answer BusCommands::record(QString id)
{
    const ScreenshotRecord found = co_await item(id);
    const QList<ScreenshotRecord> items(1, found);
    const QVariantList answer = co_await lines(items, 1);
    co_return answer.first(1);
}

BusCommands::Answer BusCommands::content(QString id)
{
    const ScreenshotRecord found = co_await item(id);
    auto opening = m_lane.post([found] {
        if (found.contentType == ClipboardContentType::Image)
            return openFile(found.libraryPath);
        MemoryFile file;
        file.append(found.textContent.toUtf8());
        return file.handOut();
    });
    const QDBusUnixFileDescriptor content = co_await opening;
    QVariantList answer{found.fileType};
    answer.append(QVariant::fromValue(content));
    co_return answer;
}

// --- changing ---------------------------------------------------------------

BusCommands::Answer BusCommands::copy(QString id, bool paste)
{
    if (paste)
        m_runtime.rememberPreviousApplication(); // before anything else may come to the front
    const ScreenshotRecord found = co_await item(id);
    const std::optional<QString> message = co_await m_runtime.copyOrExplain(found, paste);
    if (message)
        throw BusError(BusError::Case::Failed, *message);
    co_return QVariantList();
}

BusCommands::Answer BusCommands::importFile(QByteArray path)
{
    if (!path.startsWith('/') || path.contains('\0'))
        throw invalid(QStringLiteral("the path is not absolute"));
    co_await library();
    const FileImport result = co_await m_runtime.fileIntake()->importFile(path);
    QVariantList answer{nameOf(result.outcome)};
    answer.append(result.id ? identifierText(*result.id) : QString());
    co_return answer;
}

BusCommands::Answer BusCommands::setTags(QString id, QStringList tags)
{
    const ScreenshotRecord found = co_await item(id);
    co_await m_runtime.store()->setTags(found.id, cleaned(tags));
    Q_EMIT m_runtime.libraryChanged({LibraryChange::Kind::Edited, {found.id}});
    co_return QVariantList();
}

BusCommands::Answer BusCommands::setNote(QString id, QString note)
{
    const ScreenshotRecord found = co_await item(id);
    co_await m_runtime.store()->setNote(found.id, note);
    Q_EMIT m_runtime.libraryChanged({LibraryChange::Kind::Edited, {found.id}});
    co_return QVariantList();
}

BusCommands::Answer BusCommands::setFavorite(QString id, bool isFavorite)
{
    const ScreenshotRecord found = co_await item(id);
    if (found.isFavorite != isFavorite)
        co_await m_runtime.toggleFavorite(found);
    co_return QVariantList();
}

BusCommands::Answer BusCommands::setPinned(QString id, bool isPinned)
{
    const ScreenshotRecord found = co_await item(id);
    if (found.isPinned != isPinned)
        co_await m_runtime.togglePinned(found);
    co_return QVariantList();
}

BusCommands::Answer BusCommands::moveToTrash(QString id)
{
    const ScreenshotRecord found = co_await item(id);
    if (!found.isDeleted)
        co_await m_runtime.moveToTrash(found);
    co_return QVariantList();
}

// --- the whole library ------------------------------------------------------

BusCommands::Answer BusCommands::exportTo(QString folder)
{
    co_await library();
    const LibraryArchive::Exported exported =
        co_await m_runtime.archive()->exportTo(folder, m_runtime.flows().stopToken());
    const QVariantMap summary{{QStringLiteral("items"), whole(exported.items)},
                              {QStringLiteral("files"), whole(exported.files)},
                              {QStringLiteral("missingFiles"), whole(exported.missingFiles)}};
    co_return QVariantList(1, summary);
}

BusCommands::Answer BusCommands::restoreFrom(QString folder)
{
    co_await library();
    LibraryArchive::Restored restored;
    std::exception_ptr failure;
    try {
        restored = co_await m_runtime.archive()->restoreFrom(folder, m_runtime.flows().stopToken());
    } catch (...) {
        failure = std::current_exception();
    }
    if (failure || restored.added > 0) { // what came before a failure stays
        Q_EMIT m_runtime.libraryChanged({LibraryChange::Kind::Added, {}});
        m_runtime.refreshStorageUsage();
    }
    if (failure)
        std::rethrow_exception(failure);
    const QVariantMap summary{
        {QStringLiteral("added"), whole(restored.added)},
        {QStringLiteral("repeated"), whole(restored.repeated)},
        {QStringLiteral("missingFiles"), whole(restored.missingFiles)},
        {QStringLiteral("unreadable"), whole(restored.unreadable)},
        {QStringLiteral("unreadableLines"), QVariant::fromValue(restored.unreadableLines)}};
    co_return QVariantList(1, summary);
}

BusCommands::Answer BusCommands::purgeTrash(bool everything)
{
    co_await library();
    using Trash = StorageMaintenance::Trash;
    const qint64 removed = co_await m_runtime.purgeTrash(everything ? Trash::Everything : Trash::Expired);
    co_return QVariantList(1, whole(removed));
}

BusCommands::Answer BusCommands::usage()
{
    co_await library();
    const StorageUsage usage = co_await m_runtime.measureUsage();
    const QVariantMap facts{{QStringLiteral("totalBytes"), whole(usage.rootBytes)},
                            {QStringLiteral("originalBytes"), whole(usage.originalBytes)},
                            {QStringLiteral("thumbnailBytes"), whole(usage.thumbnailBytes)},
                            {QStringLiteral("iconBytes"), whole(usage.iconBytes)},
                            {QStringLiteral("databaseBytes"), whole(usage.databaseBytes)},
                            {QStringLiteral("limitBytes"), whole(usage.limitBytes)},
                            {QStringLiteral("images"), whole(usage.items.images)},
                            {QStringLiteral("texts"), whole(usage.items.texts)},
                            {QStringLiteral("trashed"), whole(usage.items.inTrash)}};
    co_return QVariantList(1, facts);
}

// --- recognition ------------------------------------------------------------

BusCommands::Answer BusCommands::recognizeRegion(QVariantMap options)
{
    const LocalOCRFlow::RecognizedPicture picture =
        co_await m_runtime.localOCR().recognizeRegion(levelIn(options));
    co_return co_await described(picture);
}

/// The imaging worker opens the caller's file through our descriptor of it.
BusCommands::Answer BusCommands::recognizePicture(QDBusUnixFileDescriptor picture, QVariantMap options)
{
    if (!picture.isValid())
        throw invalid(QStringLiteral("no file was handed over"));
    const QString path = QStringLiteral("/proc/%1/fd/%2")
                             .arg(QCoreApplication::applicationPid())
                             .arg(picture.fileDescriptor());
    const LocalOCRFlow::RecognizedPicture recognized =
        co_await m_runtime.localOCR().recognizeFile(path, levelIn(options));
    co_return co_await described(recognized);
}

QCoro::Task<QVariantList> BusCommands::described(LocalOCRFlow::RecognizedPicture picture)
{
    auto writing = m_lane.post([picture] {
        MemoryFile file;
        file.append(json(picture));
        return file.handOut();
    });
    const QDBusUnixFileDescriptor result = co_await writing;
    co_return QVariantList(1, QVariant::fromValue(result));
}

} // namespace tessary
