#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <optional>

namespace tessary {

/// A key-value store of settings with typed reads and a test for a missing key. Main thread only: values
/// live in memory, and are made durable soon after a write without blocking.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;
    /// The stored value, or an invalid variant when the key is absent.
    [[nodiscard]] virtual QVariant object(const QString& key) const = 0;
    virtual void set(const QString& key, const QVariant& value) = 0;
    /// Called when values were changed by somebody else than `set`.
    virtual void setChangeHandler(std::function<void()> handler) = 0;

    /// Absent when there is no value or it is a list.
    [[nodiscard]] std::optional<QString> string(const QString& key) const;
    /// Absent when there is no value. A single string is a list of one.
    [[nodiscard]] std::optional<QStringList> stringArray(const QString& key) const;
    /// True for true, yes, and numbers other than 0; false for everything else and when absent.
    [[nodiscard]] bool boolean(const QString& key) const;
    /// 0 when absent or not a number; a fraction is cut off; saturates at the limits of the type.
    [[nodiscard]] int integer(const QString& key) const;
    /// 0 when absent or not a finite number.
    [[nodiscard]] double real(const QString& key) const;
    [[nodiscard]] bool contains(const QString& key) const { return object(key).isValid(); }
};

} // namespace tessary
