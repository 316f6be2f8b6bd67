#pragma once

#include <QHash>
#include <QString>

#include <coroutine>
#include <deque>

namespace tessary {

/// Lets one flow at a time work on a key, in the order they came. Main thread only; outlives its passes.
class KeyedGate {
public:
    /// Holds the key; destroying it lets the next one in.
    class Pass {
    public:
        Pass(KeyedGate& gate, QString key) : m_gate(&gate), m_key(std::move(key)) {}
        ~Pass()
        {
            if (m_gate != nullptr)
                m_gate->leave(m_key);
        }
        Pass(Pass&& other) noexcept
            : m_gate(std::exchange(other.m_gate, nullptr)),
              m_key(std::move(other.m_key))
        {
        }
        Pass(const Pass&) = delete;
        Pass& operator=(const Pass&) = delete;
        Pass& operator=(Pass&&) = delete;

    private:
        KeyedGate* m_gate;
        QString m_key;
    };

    struct Entrance {
        KeyedGate& gate;
        QString key;

        [[nodiscard]] bool await_ready() const { return !gate.m_waiting.contains(key); }
        void await_suspend(std::coroutine_handle<> flow) const { gate.m_waiting[key].push_back(flow); }
        [[nodiscard]] Pass await_resume() const
        {
            gate.m_waiting[key]; // held from here on
            return {gate, key};
        }
    };
    /// To be named before it is awaited; yields a `Pass`.
    [[nodiscard]] Entrance enter(const QString& key) { return {*this, key}; }
    /// Whether somebody holds the key.
    [[nodiscard]] bool isHeld(const QString& key) const { return m_waiting.contains(key); }

private:
    void leave(const QString& key)
    {
        const auto found = m_waiting.find(key);
        if (found->empty()) {
            m_waiting.erase(found);
            return;
        }
        const std::coroutine_handle<> next = found->front();
        found->pop_front();
        next.resume();
    }

    QHash<QString, std::deque<std::coroutine_handle<>>> m_waiting; // by held key
};

} // namespace tessary
