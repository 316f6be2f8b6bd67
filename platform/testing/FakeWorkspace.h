#pragma once

#include "platform/Workspace.h"

namespace tessary::testing {

/// Windows that a test brings to the front.
class FakeWorkspace : public Workspace {
    Q_OBJECT
public:
    using Workspace::Workspace;

    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() const override
    {
        return m_frontmost;
    }

    /// What is in front already, without a word about it.
    void setFrontmost(std::optional<RunningApplication> application) { m_frontmost = std::move(application); }
    /// Brings the program to the front and tells, in the next turn of the event loop.
    void activate(RunningApplication application)
    {
        const auto tell = [this, application = std::move(application)] {
            m_frontmost = application;
            Q_EMIT applicationActivated(application);
        };
        QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
    }
    /// No window is active any more, from the next turn on.
    void deactivate()
    {
        QMetaObject::invokeMethod(
            this, [this] { m_frontmost.reset(); }, Qt::QueuedConnection);
    }
    /// Wakes up in the next turn of the event loop.
    void wake()
    {
        QMetaObject::invokeMethod(
            this, [this] { Q_EMIT didWake(); }, Qt::QueuedConnection);
    }

private:
    std::optional<RunningApplication> m_frontmost;
};

} // namespace tessary::testing
