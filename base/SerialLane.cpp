#include "base/SerialLane.h"

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
    m_queue.push(std::move(work));
    std::call_once(m_started, [this] {
        m_thread = std::jthread([this](const std::stop_token& stop) { m_queue.run(m_name, stop); });
    });
}

} // namespace tessary
