#pragma once

#include <QByteArray>
#include <QHash>

#include <optional>

namespace tessary::testing {

/// Sets variables of the environment and puts them back at the end.
class ScopedEnvironment {
public:
    ScopedEnvironment() = default;
    ~ScopedEnvironment()
    {
        for (auto saved = m_saved.cbegin(); saved != m_saved.cend(); ++saved) {
            if (saved->has_value())
                qputenv(saved.key().constData(), **saved);
            else
                qunsetenv(saved.key().constData());
        }
    }
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

    void set(const char* name, const QString& value)
    {
        save(name);
        qputenv(name, value.toUtf8());
    }
    void unset(const char* name)
    {
        save(name);
        qunsetenv(name);
    }

private:
    void save(const char* name)
    {
        if (m_saved.contains(name))
            return;
        m_saved.insert(name, qEnvironmentVariableIsSet(name) ? std::optional(qgetenv(name)) : std::nullopt);
    }

    QHash<QByteArray, std::optional<QByteArray>> m_saved;
};

} // namespace tessary::testing
