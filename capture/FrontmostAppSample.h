#pragma once

#include "base/Date.h"
#include "capture/SourceApplicationSnapshot.h"

#include <QByteArray>
#include <QList>

namespace tessary {

/// Which application came to the front when.
struct FrontmostAppSample {
    Date timestamp;
    SourceApplicationSnapshot application;

    friend bool operator==(const FrontmostAppSample&, const FrontmostAppSample&) = default;
};

/// A JSON array of objects with "timestamp" (seconds since 2001-01-01 00:00:00 UTC) and "application".
[[nodiscard]] QByteArray encodeSamples(const QList<FrontmostAppSample>& samples);
/// @returns no samples for anything that is not such an array.
[[nodiscard]] QList<FrontmostAppSample> decodeSamples(const QByteArray& json);

} // namespace tessary
