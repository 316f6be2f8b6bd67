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
constexpr qsizetype kLongestRest = 86'400;      // seconds from a capture to the last use
constexpr qsizetype kRecognised = 200;          // characters in a picture
constexpr qint64 kFormerShare = 50;             // of a library, the oldest part
constexpr qsizetype kFormerEvery = 20;          // of its texts

struct Application {
    const char* name;
    const char* identifier;
};
/// Those used most come first.
constexpr std::array kApplications{
    Application{"Firefox", "firefox-esr"},
    Application{"终端", "org.gnome.Terminal"},
    Application{"Kate", "org.kde.kate"},
    Application{"文本编辑器", "org.gnome.TextEditor"},
    Application{"Thunderbird", "thunderbird"},
    Application{"文件", "org.gnome.Nautilus"},
    Application{"LibreOffice Writer", "libreoffice-writer"},
    Application{"词典", "org.gnome.Dictionary"},
};
constexpr std::array kTags{"工作", "todo", "参考", "code", "reading list", "会议"};

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
        const auto chosen = static_cast<size_t>(m_texts.below(1 + m_texts.below(kApplications.size())));
        record.sourceAppName = QString::fromUtf8(kApplications.at(chosen).name);
        record.sourceBundleIdentifier = QString::fromLatin1(kApplications.at(chosen).identifier);
    }
    record.isPinned = m_texts.below(1000) == 0;
    record.isFavorite = m_texts.below(50) == 0;
    record.duplicateCount = 1 + (m_texts.below(10) == 0 ? m_texts.below(5) : 0);
    for (qsizetype tags = m_texts.below(50) == 0 ? 1 + m_texts.below(2) : 0; tags > 0; --tags)
        record.tags.append(QString::fromUtf8(kTags.at(static_cast<size_t>(m_texts.below(kTags.size())))));
    if (m_texts.below(100) == 0)
        record.note = m_texts.message();
    if (m_texts.below(30) == 0)
        record.lastUsedAt = record.capturedAt.addingSeconds(static_cast<double>(m_texts.below(kLongestRest)));
}

ScreenshotRecord SampleLibrary::text()
{
    ScreenshotRecord record;
    const bool isFormer = m_number <= m_former && m_texts.below(kFormerEvery) == 0;
    record.textContent = m_texts.next(isFormer ? SampleTexts::Source::Former : SampleTexts::Source::Usual);
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
    if (m_texts.below(2) == 0)
        record.ocrText = m_texts.mixed(kRecognised);
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
    m_former = count / kFormerShare;
    structuredStore.adopt([this, last] { return m_number < last ? std::optional(next()) : std::nullopt; });
    ProjectionReconciler(structuredStore, projection).reconcile();
}

} // namespace tessary::bench
