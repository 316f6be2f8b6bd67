#pragma once

#include <QLatin1String>

/// The words of the messages between the imaging worker and its client.
///
/// A request names an operation and its arguments. A reply holds the result, or `kError` (one of the words
/// below) and `kDetail` (a short technical reason without content, for the log).
namespace tessary::imaging {

constexpr QLatin1String kOperation{"operation"};
constexpr QLatin1String kPixelSize{"pixelSize"}; ///< kPath → kWidth, kHeight
constexpr QLatin1String kThumbnail{"thumbnail"}; ///< kPath, kMaximumPixelSize, kQuality → kBytes (JPEG)
constexpr QLatin1String kDecode{"decode"}; ///< kPath, kMaximumPixelSize → kWidth, kHeight, kOpaque, kBytes
/// kPath, kLeft, kTop, kWidth, kHeight, kScaledWidth, kScaledHeight → as kDecode
constexpr QLatin1String kPart{"part"};
constexpr QLatin1String kPng{"png"}; ///< kBytes → kBytes

constexpr QLatin1String kPath{"path"};
constexpr QLatin1String kMaximumPixelSize{"maximumPixelSize"};
constexpr QLatin1String kQuality{"quality"}; ///< JPEG's own scale, 1 to 100.
constexpr QLatin1String kWidth{"width"};
constexpr QLatin1String kHeight{"height"};
constexpr QLatin1String kLeft{"left"};
constexpr QLatin1String kTop{"top"};
constexpr QLatin1String kScaledWidth{"scaledWidth"};
constexpr QLatin1String kScaledHeight{"scaledHeight"};
constexpr QLatin1String kOpaque{"opaque"};
/// Of a decoded picture: rows of 32-bit words as QImage::Format_ARGB32_Premultiplied, or RGB32 if opaque.
constexpr QLatin1String kBytes{"bytes"};

constexpr QLatin1String kError{"error"};
constexpr QLatin1String kDetail{"detail"};
constexpr QLatin1String kNotAnImage{"notAnImage"};
constexpr QLatin1String kTooLarge{"tooLarge"};
constexpr QLatin1String kBadRequest{"badRequest"};

} // namespace tessary::imaging
