#pragma once

#include "base/Date.h"

#include <QStringList>

#include <optional>

namespace tessary {

/// What a person typed into the search field, taken apart.
struct SearchQuery {
    QStringList keywords;           ///< Each of them must match.
    std::optional<QString> appName; ///< Part of the source application's name, in any letter case.
    std::optional<QString> tagName; ///< Part of the stored tag list, in any letter case.
    std::optional<Date> before;     ///< Captured strictly before.
    std::optional<Date> after;      ///< Captured then or later.
    bool favoritesOnly = false;

    friend bool operator==(const SearchQuery&, const SearchQuery&) = default;
};

} // namespace tessary
