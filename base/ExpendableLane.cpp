#include "base/ExpendableLane.h"

#include <QCoreApplication>

namespace tessary {

QString Abandoned::localizedDescription() const
{
    return QCoreApplication::translate("Abandoned", "文件系统没有回应。");
}

ExpendableLane::ExpendableLane(QString name) : m_name(std::move(name)), m_queue(std::make_shared<LaneQueue>())
{
}

ExpendableLane::~ExpendableLane()
{
    m_stop.request_stop();
}

void ExpendableLane::postDetached(std::function<void()> work)
{
    m_queue->push(std::move(work));
    if (std::exchange(m_isStarted, true))
        return;
    std::thread([queue = m_queue, name = m_name, stop = m_stop.get_token()] {
        queue->run(name, stop);
    }).detach();
}

} // namespace tessary
