#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <atomic>
#include <optional>
#include <thread>

#include <sys/types.h>

namespace tessary {

/// How to start a worker program.
struct WorkerCommand {
    QString program; ///< Absolute path.
    QList<QByteArray> arguments = {};
    QList<QByteArray> environment = {}; ///< `NAME=value`, in place of inherited ones of that name.
};

/// Closes a descriptor once.
class OwnedDescriptor {
public:
    explicit OwnedDescriptor(int descriptor = -1) : m_descriptor(descriptor) {}
    ~OwnedDescriptor() { reset(); }
    OwnedDescriptor(OwnedDescriptor&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
    OwnedDescriptor& operator=(OwnedDescriptor&& other) noexcept
    {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }

    [[nodiscard]] int get() const { return m_descriptor; }
    void reset();

private:
    int m_descriptor;
};

/// One running child with pipes to its standard input and output; its standard error goes nowhere.
///
/// A thread of its own sleeps until the child ends and collects it then, so that no zombie stays, whatever
/// the owner is doing. Destruction kills the child and waits for that. Any thread, one at a time, except
/// where noted.
class ChildProcess {
public:
    /// @throws std::system_error when the program cannot be started.
    explicit ChildProcess(const WorkerCommand& command);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    [[nodiscard]] pid_t id() const { return m_id; }
    /// Non-blocking ends of the pipes.
    [[nodiscard]] int input() const { return m_input.get(); }
    [[nodiscard]] int output() const { return m_output.get(); }
    [[nodiscard]] bool hasEnded() const { return m_status.load() != kRunning; }
    /// At once, and never another process that got the same id. Any thread at any time.
    void kill() const;
    /// Gives the child a moment to end by itself, kills it otherwise. @returns the status as waitpid() has
    /// it.
    [[nodiscard]] int finish();

private:
    static constexpr int kRunning = -1;

    void start(const WorkerCommand& command, int childInput, int childOutput);

    OwnedDescriptor m_input;
    OwnedDescriptor m_output;
    OwnedDescriptor m_handle; // a pidfd
    pid_t m_id = -1;
    std::atomic<int> m_status = kRunning;
    std::jthread m_reaper;
};

} // namespace tessary
