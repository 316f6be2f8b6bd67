#pragma once

#include <QString>

#include <array>

namespace tessary {

/// Which part of the library a list shows.
enum class ScreenshotScope {
    All,
    RecentlyUsed,
    Today,
    Last7Days,
    Last30Days,
    Favorites,
    Landscape,
    Portrait, ///< Squares included.
    LargeImages,
    Images,
    TextItems,
    Trash, ///< The only one that shows items in the trash.
};

inline constexpr std::array kScreenshotScopes{
    ScreenshotScope::All,       ScreenshotScope::RecentlyUsed, ScreenshotScope::Today,
    ScreenshotScope::Last7Days, ScreenshotScope::Last30Days,   ScreenshotScope::Favorites,
    ScreenshotScope::Landscape, ScreenshotScope::Portrait,     ScreenshotScope::LargeImages,
    ScreenshotScope::Images,    ScreenshotScope::TextItems,    ScreenshotScope::Trash,
};

/// The name by which it is stored and spoken of outside.
[[nodiscard]] QString rawValue(ScreenshotScope scope);
[[nodiscard]] QString title(ScreenshotScope scope);
/// Name of its symbol.
[[nodiscard]] QString systemImage(ScreenshotScope scope);

} // namespace tessary
