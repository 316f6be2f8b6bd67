#include "capture/FrontmostAppSample.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace tessary {
namespace {

constexpr double kReferenceDate = 978'307'200; // 2001-01-01 00:00:00 UTC, in seconds since 1970
constexpr QLatin1String kTimestamp("timestamp");
constexpr QLatin1String kApplication("application");

} // namespace

QByteArray encodeSamples(const QList<FrontmostAppSample>& samples)
{
    QJsonArray array;
    for (const FrontmostAppSample& sample : samples) {
        array.append(QJsonObject{{kTimestamp, sample.timestamp.secondsSince1970 - kReferenceDate},
                                 {kApplication, encodeSnapshot(sample.application)}});
    }
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

QList<FrontmostAppSample> decodeSamples(const QByteArray& json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    QList<FrontmostAppSample> samples;
    for (const auto& element : document.array()) {
        const QJsonValue timestamp = element[kTimestamp];
        const std::optional<SourceApplicationSnapshot> application =
            element[kApplication].isObject() ? decodeSnapshot(element[kApplication].toObject())
                                             : std::nullopt;
        if (!timestamp.isDouble() || !application)
            return {};
        samples.append({Date{timestamp.toDouble() + kReferenceDate}, *application});
    }
    return samples;
}

} // namespace tessary
