#pragma once

#include <QtGlobal>

#include <coroutine>
#include <deque>
#include <utility>

namespace tessary {

/// Tells imports that began before the library was cleared from those that began afterwards, and keeps new
/// ones waiting while that goes on. Main thread only; outlives its holds.
class ImportEpochs {
public:
    using Epoch = quint64;

    /// While one lives, imports that would begin wait.
    class Hold {
    public:
        explicit Hold(ImportEpochs& epochs) : m_epochs(&epochs) { ++epochs.m_holds; }
        ~Hold()
        {
            if (m_epochs != nullptr)
                m_epochs->release();
        }
        Hold(Hold&& other) noexcept : m_epochs(std::exchange(other.m_epochs, nullptr)) {}
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;
        Hold& operator=(Hold&&) = delete;

    private:
        ImportEpochs* m_epochs;
    };

    struct Beginning {
        ImportEpochs& epochs;

        [[nodiscard]] bool await_ready() const { return epochs.m_holds == 0; }
        void await_suspend(std::coroutine_handle<> import) const { epochs.m_waiting.push_back(import); }
        [[nodiscard]] Epoch await_resume() const { return epochs.m_current; }
    };

    /// To be named before it is awaited; yields the epoch in which the import begins.
    [[nodiscard]] Beginning begin() { return {*this}; }
    [[nodiscard]] bool isCurrent(Epoch epoch) const { return epoch == m_current; }
    /// Ends the epoch: what began in it is to leave nothing behind.
    [[nodiscard]] Hold end()
    {
        ++m_current;
        return Hold(*this);
    }

private:
    void release()
    {
        --m_holds;
        while (m_holds == 0 && !m_waiting.empty()) {
            const std::coroutine_handle<> next = m_waiting.front();
            m_waiting.pop_front();
            next.resume();
        }
    }

    Epoch m_current = 0;
    int m_holds = 0;
    std::deque<std::coroutine_handle<>> m_waiting;
};

} // namespace tessary
