#include "ui/quicksearch/ItemFacts.h"

#include <QCoreApplication>
#include <QLocale>

#include <array>

namespace tessary {
namespace {

struct Words {
    Q_DECLARE_TR_FUNCTIONS(ItemFacts)
};

QString separator()
{
    return QStringLiteral(" · ");
}

QString kindText(const ScreenshotRecord& record)
{
    if (record.contentType == ClipboardContentType::Text)
        return Words::tr("文字");
    if (record.fileType.isEmpty())
        return Words::tr("图片");
    return Words::tr("图片（%1）").arg(record.fileType.toUpper());
}

QString dimensionsText(const ScreenshotRecord& record, bool isCut)
{
    if (record.contentType == ClipboardContentType::Image)
        return QStringLiteral("%1 × %2").arg(record.pixelWidth).arg(record.pixelHeight);
    if (isCut)
        return {};
    const qsizetype characters = record.textContent.toUcs4().size();
    return Words::tr("%1 个字符", nullptr, static_cast<int>(characters)).arg(QLocale().toString(characters));
}

} // namespace

QString byteCountText(qint64 bytes)
{
    constexpr double kStep = 1000;
    constexpr qint64 kTenthsFrom = 100;
    static const std::array kUnits{QStringLiteral(" KB"), QStringLiteral(" MB"), QStringLiteral(" GB"),
                                   QStringLiteral(" TB")};
    if (bytes < kTenthsFrom)
        return QString::number(bytes) + QStringLiteral(" B");
    double amount = static_cast<double>(bytes) / kStep;
    std::size_t unit = 0;
    while (amount >= kStep - 0.5 && unit + 1 < kUnits.size()) {
        amount /= kStep;
        ++unit;
    }
    constexpr double kWholeFrom = 9.95;
    return QString::number(amount, 'f', amount < kWholeFrom ? 1 : 0) + kUnits.at(unit);
}

ItemFacts itemFacts(const ScreenshotRecord& record, bool isCut, const Calendar& calendar)
{
    ItemFacts facts;
    facts.kind = kindText(record);
    facts.dimensions = dimensionsText(record, isCut);
    facts.size = byteCountText(record.fileSize);
    facts.extent = facts.dimensions.isEmpty() ? facts.size : facts.dimensions + separator() + facts.size;
    const auto milliseconds = static_cast<qint64>(record.capturedAt.secondsSince1970 * 1000);
    facts.time = QDateTime::fromMSecsSinceEpoch(milliseconds, calendar.timeZone)
                     .toString(QStringLiteral("yyyy-MM-dd HH:mm"));
    facts.source = record.sourceAppName.value_or(QString()).simplified();
    if (facts.source.isEmpty())
        facts.source = Words::tr("未知");
    return facts;
}

} // namespace tessary
