#pragma once

#include "platform/RunningApplication.h"

#include <QHash>
#include <QJsonObject>
#include <QString>
#include <QUrl>

#include <optional>

namespace tessary {

/// Which application an item came from.
struct SourceApplicationSnapshot {
    std::optional<QString> localizedName;
    std::optional<QString> bundleIdentifier;
    std::optional<QUrl> bundleURL; ///< Where its icon is to be found.

    [[nodiscard]] static SourceApplicationSnapshot of(const RunningApplication& application)
    {
        return {application.localizedName, application.bundleIdentifier, application.bundleURL};
    }
    friend bool operator==(const SourceApplicationSnapshot&, const SourceApplicationSnapshot&) = default;
};

[[nodiscard]] size_t qHash(const SourceApplicationSnapshot& snapshot, size_t seed = 0) noexcept;

/// The property names as keys, absent values left out, the URL as absolute text.
[[nodiscard]] QJsonObject encodeSnapshot(const SourceApplicationSnapshot& snapshot);
/// @returns nothing when a value is of the wrong kind.
[[nodiscard]] std::optional<SourceApplicationSnapshot> decodeSnapshot(const QJsonObject& object);

} // namespace tessary
