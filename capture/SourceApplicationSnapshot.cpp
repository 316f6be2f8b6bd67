#include "capture/SourceApplicationSnapshot.h"

namespace tessary {
namespace {

constexpr QLatin1String kName("localizedName");
constexpr QLatin1String kIdentifier("bundleIdentifier");
constexpr QLatin1String kUrl("bundleURL");

/// @returns false when the value is there and is not a text.
bool readText(const QJsonObject& object, QLatin1String key, std::optional<QString>& text)
{
    const QJsonValue value = object.value(key);
    if (value.isString())
        text = value.toString();
    return value.isString() || value.isUndefined() || value.isNull();
}

} // namespace

size_t qHash(const SourceApplicationSnapshot& snapshot, size_t seed) noexcept
{
    return qHashMulti(seed, snapshot.localizedName.value_or(QString()),
                      snapshot.bundleIdentifier.value_or(QString()), snapshot.bundleURL.value_or(QUrl()));
}

QJsonObject encodeSnapshot(const SourceApplicationSnapshot& snapshot)
{
    QJsonObject object;
    if (snapshot.localizedName)
        object.insert(kName, *snapshot.localizedName);
    if (snapshot.bundleIdentifier)
        object.insert(kIdentifier, *snapshot.bundleIdentifier);
    if (snapshot.bundleURL)
        object.insert(kUrl, snapshot.bundleURL->toString(QUrl::FullyEncoded));
    return object;
}

std::optional<SourceApplicationSnapshot> decodeSnapshot(const QJsonObject& object)
{
    SourceApplicationSnapshot snapshot;
    std::optional<QString> url;
    if (!readText(object, kName, snapshot.localizedName) ||
        !readText(object, kIdentifier, snapshot.bundleIdentifier) || !readText(object, kUrl, url))
        return std::nullopt;
    if (url)
        snapshot.bundleURL = QUrl(*url);
    return snapshot;
}

} // namespace tessary
