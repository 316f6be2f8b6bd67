#include "tests/unit/store/differential/LibraryGenerator.h"

#include "base/ContentHash.h"

#include <array>

namespace tessary::testing {
namespace {

constexpr double kDay = 86'400;
constexpr std::array kApplications{u"Firefox",    u"firefox", u"文本编辑器", u"Text Editor",
                                   u"Ter\"minal", u"",        u" ",          u"微 软",
                                   u"50%_off",    u"ÉDITEUR", u"Kate",       u"kate"};
constexpr std::array<qint64, 8> kFileSizes{0, 1, 500, 10'485'759, 10'485'760, 10'485'761, 500, 77};
constexpr std::array<qint64, 8> kSides{0, 1, 100, 3000, 3999, 4000, 12'000'000, 100};

} // namespace

Date LibraryGenerator::time()
{
    constexpr qsizetype kDays = 40;
    const double now = kGeneratedNow.secondsSince1970;
    if (m_dice.oneIn(3))
        return Date{now - kDay * static_cast<double>(m_dice.below(kDays))}; // many ties
    if (m_dice.oneIn(4))
        return Date{std::floor(now / kDay) * kDay - kDay * static_cast<double>(m_dice.below(kDays))};
    return Date{now - kDay * static_cast<double>(m_dice.below(kDays * 100)) / 100.0};
}

QStringList LibraryGenerator::tags()
{
    QStringList tags;
    for (qsizetype count = m_dice.oneIn(3) ? m_dice.between(1, 3) : 0; count > 0; --count)
        tags.append(m_dice.oneIn(10) ? m_texts.text(3) : m_texts.word());
    return tags;
}

QString LibraryGenerator::note()
{
    return m_dice.oneIn(4) ? m_texts.text(6) : QString();
}

void LibraryGenerator::fillTexts(ScreenshotRecord& record)
{
    constexpr qsizetype kMostWords = 14;
    const bool isText = record.contentType == ClipboardContentType::Text;
    if (isText || m_dice.oneIn(20))
        record.textContent = m_texts.text(kMostWords);
    if (!isText && m_dice.oneIn(2))
        record.ocrText = m_texts.text(kMostWords);
    record.filename = m_dice.oneIn(2) ? m_texts.text(3) : record.textContent.left(20);
    if (m_dice.oneIn(3))
        record.generatedTitle = m_dice.oneIn(5) ? QString() : m_texts.text(3);
    if (!m_dice.oneIn(3)) {
        record.sourceAppName = QString::fromUtf16(m_dice.anyOf(kApplications));
        record.sourceBundleIdentifier = *record.sourceAppName + QStringLiteral(".desktop");
    }
    record.tags = tags();
    record.note = note();
}

void LibraryGenerator::fillNumbers(ScreenshotRecord& record)
{
    record.capturedAt = time();
    record.importedAt = record.capturedAt;
    record.fileSize = m_dice.oneIn(3) ? m_dice.below(1000) : m_dice.anyOf(kFileSizes);
    if (record.contentType == ClipboardContentType::Image) {
        record.pixelWidth = m_dice.anyOf(kSides);
        record.pixelHeight = m_dice.anyOf(kSides);
    }
    if (m_dice.oneIn(3))
        record.lastUsedAt = time();
    record.isFavorite = m_dice.oneIn(5);
    record.isPinned = m_dice.oneIn(7);
    record.duplicateCount = m_dice.between(1, 3);
    if (m_dice.oneIn(10)) {
        record.isDeleted = true;
        record.deletedAt = time();
    }
}

ScreenshotRecord LibraryGenerator::next()
{
    ScreenshotRecord record;
    const QByteArray number = QByteArray::number(++m_number);
    record.id = QUuid::createUuidV5(QUuid(), number + '/' + QByteArray::number(m_dice.below(1 << 30)));
    record.contentHash = contentHash(number);
    record.contentType = m_dice.oneIn(3) ? ClipboardContentType::Image : ClipboardContentType::Text;
    record.fileType =
        record.contentType == ClipboardContentType::Text ? QStringLiteral("text") : QStringLiteral("png");
    fillTexts(record);
    fillNumbers(record);
    return record;
}

} // namespace tessary::testing
