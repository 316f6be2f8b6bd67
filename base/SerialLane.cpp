#include "base/SerialLane.h"

#include <pthread.h>

namespace tessary {

SerialLane::SerialLane(QString name) : m_name(std::move(name)) {}

SerialLane::~SerialLane()
{
    if (!m_thread.joinable())
        return;
    m_thread.request_stop();
    m_thread.join();
}

void SerialLane::postDetached(std::function<void()> work)
{
    {
        const std::scoped_lock lock(m_mutex);
        m_work.push_back(std::move(work));
        if (!m_thread.joinable())
            m_thread = std::jthread([this](std::stop_token stop) { run(std::move(stop)); });
    }
    m_wake.notify_one();
}

void SerialLane::run(std::stop_token stop)
{
    constexpr qsizetype kKernelNameLength = 15;
    pthread_setname_np(pthread_self(), m_name.toUtf8().right(kKernelNameLength).constData());
    std::unique_lock lock(m_mutex);
    for (;;) {
        // After a stop the predicate decides: what was posted is still done.
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
