#pragma once

#include <QLatin1String>

/// The words of the messages between the recognition worker and its client.
///
/// A request is a picture and how to read it. A reply holds `kLines`, or `kError` (one of the words below)
/// and `kDetail` (a short technical reason without content; of `kModelsMissing` the packages).
namespace tessary::recognizer {

constexpr QLatin1String kWidth{"width"};
constexpr QLatin1String kHeight{"height"};
constexpr QLatin1String kPixels{"pixels"};       ///< Rows without padding as QImage::Format_RGB32.
constexpr QLatin1String kLanguages{"languages"}; ///< BCP 47 tags in order.
constexpr QLatin1String kFast{"fast"};
constexpr QLatin1String kCorrection{"correction"}; ///< Whether dictionaries help.

constexpr QLatin1String kLines{"lines"}; ///< Each a map of the five below, in reading order.
constexpr QLatin1String kText{"text"};
constexpr QLatin1String kConfidence{"confidence"}; ///< 0 to 1.
constexpr QLatin1String kLeft{"left"};
constexpr QLatin1String kTop{"top"}; ///< With kWidth and kHeight, in pixels of the picture.

constexpr QLatin1String kError{"error"};
constexpr QLatin1String kDetail{"detail"};
constexpr QLatin1String kModelsMissing{"modelsMissing"};
constexpr QLatin1String kTooLarge{"tooLarge"};
constexpr QLatin1String kBadRequest{"badRequest"};

/// What a picture may have at most: three screens of 3840 x 2160.
constexpr qint64 kMostPixels = 3LL << 23;
constexpr int kLongestSide = 32767;

} // namespace tessary::recognizer
