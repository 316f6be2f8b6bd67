#pragma once

#include "platform/UserDefaults.h"

#include <QHash>

namespace tessary::testing {

/// Settings in memory.
class FakeUserDefaults : public UserDefaults {
public:
    FakeUserDefaults() = default;
    explicit FakeUserDefaults(QHash<QString, QVariant> values) : m_values(std::move(values)) {}

    [[nodiscard]] QVariant object(const QString& key) const override { return m_values.value(key); }
    void set(const QString& key, const QVariant& value) override
    {
        m_values.insert(key, value);
        m_written.append(key);
    }

    void setChangeHandler(std::function<void()> handler) override { m_onChange = std::move(handler); }
    /// As if another program had changed it.
    void changeElsewhere(const QString& key, const QVariant& value)
    {
        m_values.insert(key, value);
        if (m_onChange)
            m_onChange();
    }

    [[nodiscard]] const QHash<QString, QVariant>& values() const { return m_values; }
    /// The keys set, in order, repeats included.
    [[nodiscard]] const QStringList& written() const { return m_written; }

private:
    QHash<QString, QVariant> m_values;
    QStringList m_written;
    std::function<void()> m_onChange;
};

} // namespace tessary::testing
