#include "bench/tools/SampleLibrary.h"

#include "base/ContentHash.h"
#include "capture/TextTitle.h"
#include "store/CoreDataScreenshotStore.h"
#include "store/Projection.h"
#include "store/ProjectionReconciler.h"
#include "store/SQLiteStore.h"

#include <array>

namespace tessary::bench {
namespace {

constexpr quint64 kSeed = 20240517;
constexpr qint64 kPictureEvery = 30;
constexpr double kFirstCapture = 1'700'000'000; // seconds since 1970
constexpr double kBetweenCaptures = 300;        // seconds

struct Application {
    const char* name;
    const char* identifier;
};
constexpr std::array kApplications{
    Application{"Firefox", "firefox-esr"}, Application{"Text Editor", "org.gnome.TextEditor"},
    Application{"Terminal", "org.gnome.Terminal"}, Application{"Files", "org.gnome.Nautilus"},
    Application{"Kate", "org.kde.kate"}};

} // namespace

SampleLibrary::SampleLibrary(AppPaths paths) : m_paths(std::move(paths)), m_texts(kSeed) {}

QUuid SampleLibrary::identifier()
{
    const QByteArray name = QByteArray::number(m_number);
    return QUuid::createUuidV5(QUuid(), name);
}

void SampleLibrary::attribute(ScreenshotRecord& record)
{
    record.id = identifier();
    record.capturedAt = Date{kFirstCapture + kBetweenCaptures * static_cast<double>(m_number)};
    record.importedAt = record.capturedAt;
    record.ocrStatus = OCRStatus::Complete;
    if (m_texts.below(10) > 0) {
        const auto chosen = static_cast<size_t>(m_texts.below(kApplications.size()));
        record.sourceAppName = QString::fromLatin1(kApplications.at(chosen).name);
        record.sourceBundleIdentifier = QString::fromLatin1(kApplications.at(chosen).identifier);
    }
    record.isPinned = m_texts.below(1000) == 0;
    record.isFavorite = m_texts.below(50) == 0;
    record.duplicateCount = 1 + (m_texts.below(10) == 0 ? m_texts.below(5) : 0);
    if (m_texts.below(50) == 0)
        record.tags = {QStringLiteral("工作"), QStringLiteral("todo")};
}

ScreenshotRecord SampleLibrary::text()
{
    ScreenshotRecord record;
    record.textContent = m_texts.next();
    const QByteArray utf8 = record.textContent.toUtf8();
    record.contentHash = contentHash(utf8);
    record.generatedTitle = titleOf(record.textContent);
    record.filename = record.generatedTitle.value_or(QStringLiteral("剪贴板文字"));
    record.fileType = QStringLiteral("text");
    record.fileSize = utf8.size();
    record.contentType = ClipboardContentType::Text;
    attribute(record);
    return record;
}

ScreenshotRecord SampleLibrary::picture()
{
    ScreenshotRecord record;
    attribute(record);
    const QString id = identifierText(record.id);
    record.contentHash = contentHash(id.toUtf8());
    record.filename = QStringLiteral("Clipboard %1.png").arg(m_number);
    record.fileType = QStringLiteral("png");
    record.originalPath = m_paths.root + QLatin1Char('/') + record.filename;
    record.libraryPath = m_paths.originals + QLatin1Char('/') + id + QStringLiteral(".png");
    record.thumbnailPath = m_paths.thumbnails + QLatin1Char('/') + id + QStringLiteral(".jpg");
    record.pixelWidth = 320 + m_texts.below(3840);
    record.pixelHeight = 200 + m_texts.below(2160);
    record.fileSize = record.pixelWidth * record.pixelHeight / 2;
    record.contentType = ClipboardContentType::Image;
    return record;
}

ScreenshotRecord SampleLibrary::next()
{
    return ++m_number % kPictureEvery == 0 ? picture() : text();
}

void SampleLibrary::fill(qint64 count)
{
    CoreDataScreenshotStore structuredStore(m_paths.database);
    Projection projection(SQLiteStore::projectionPath(m_paths.database));
    const qint64 last = m_number + count;
    structuredStore.adopt([this, last] { return m_number < last ? std::optional(next()) : std::nullopt; });
    ProjectionReconciler(structuredStore, projection).reconcile();
}

} // namespace tessary::bench
