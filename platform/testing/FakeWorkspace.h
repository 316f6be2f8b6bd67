#pragma once

#include "platform/Workspace.h"
#include "platform/testing/NextTurn.h"

#include <QList>

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

    /// Granted unless `refuseActivation()`; the window comes to the front unless `delayActivation()`.
    [[nodiscard]] QCoro::Task<bool> requestActivation(RunningApplication application) override
    {
        m_activationRequests.append(application);
        co_await NextTurn();
        if (m_refusesActivation)
            co_return false;
        if (!m_delaysActivation)
            m_frontmost = application;
        co_return true;
    }
    [[nodiscard]] QCoro::Task<bool> isActive(RunningApplication application) override
    {
        ++m_looks;
        co_await NextTurn();
        co_return m_frontmost == application;
    }
    void refuseActivation() { m_refusesActivation = true; }
    /// The test brings the window to the front itself.
    void delayActivation() { m_delaysActivation = true; }
    [[nodiscard]] const QList<RunningApplication>& activationRequests() const { return m_activationRequests; }
    /// How often somebody asked whether a window is active.
    [[nodiscard]] int looks() const { return m_looks; }

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
    QList<RunningApplication> m_activationRequests;
    bool m_refusesActivation = false;
    bool m_delaysActivation = false;
    int m_looks = 0;
};

} // namespace tessary::testing
