#pragma once

#include <QString>

#include <array>

namespace tessary {

/// In which order a list shows its items; pinned ones come first in each.
enum class ScreenshotSort {
    Relevance, ///< As Newest: what matches is not ranked.
    Newest,
    Oldest,
    RecentlyUsed,
    FileSize, ///< Largest first.
};

inline constexpr std::array kScreenshotSorts{
    ScreenshotSort::Relevance,    ScreenshotSort::Newest,   ScreenshotSort::Oldest,
    ScreenshotSort::RecentlyUsed, ScreenshotSort::FileSize,
};

/// The name by which it is stored and spoken of outside.
[[nodiscard]] QString rawValue(ScreenshotSort sort);

} // namespace tessary
