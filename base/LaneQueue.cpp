#include "base/LaneQueue.h"

#include <pthread.h>

namespace tessary {

void LaneQueue::push(std::function<void()> work)
{
    {
        const std::scoped_lock lock(m_mutex);
        m_work.push_back(std::move(work));
    }
    m_wake.notify_one();
}

void LaneQueue::run(const QString& threadName, const std::stop_token& stop)
{
    constexpr qsizetype kKernelNameLength = 15;
    pthread_setname_np(pthread_self(), threadName.toUtf8().right(kKernelNameLength).constData());
    std::unique_lock lock(m_mutex);
    for (;;) {
        // After a stop the predicate decides: what was pushed is still done.
        m_wake.wait(lock, stop, [this] { return !m_work.empty(); });
        if (m_work.empty())
            return;
        std::function<void()> work = std::move(m_work.front());
        m_work.pop_front();
        lock.unlock();
        work();
        work = nullptr;
        lock.lock();
    }
}

} // namespace tessary
