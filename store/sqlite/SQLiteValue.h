#pragma once

#include "base/Date.h"

#include <QString>

#include <optional>
#include <variant>

namespace tessary {

struct SQLiteNull {
    friend bool operator==(const SQLiteNull&, const SQLiteNull&) = default;
};

/// A value bound to a statement parameter: text, integer, double or null.
using SQLiteValue = std::variant<QString, qint64, double, SQLiteNull>;

[[nodiscard]] inline SQLiteValue sqliteValue(bool value)
{
    return static_cast<qint64>(value ? 1 : 0);
}
/// Seconds since 1970.
[[nodiscard]] inline SQLiteValue sqliteValue(const Date& date)
{
    return date.secondsSince1970;
}
template <typename Value>
[[nodiscard]] SQLiteValue sqliteValue(const std::optional<Value>& value)
{
    if (!value)
        return SQLiteNull{};
    if constexpr (std::is_same_v<Value, Date>)
        return sqliteValue(*value);
    else
        return *value;
}

} // namespace tessary
