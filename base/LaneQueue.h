#pragma once

#include <QString>

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <stop_token>

namespace tessary {

/// Work that waits for the thread that runs it, one item at a time, in the order it came. Any thread.
class LaneQueue {
public:
    void push(std::function<void()> work);
    /// Runs what comes, on the calling thread, which gets the name (cut to 15 bytes by the kernel). Once
    /// stopped it still does what had been pushed, and returns.
    void run(const QString& threadName, const std::stop_token& stop);

private:
    std::mutex m_mutex;
    std::condition_variable_any m_wake;
    std::deque<std::function<void()>> m_work;
};

} // namespace tessary
