#pragma once

#include "base/SerialLane.h"
#include "platform/x11/ClipboardSnapshot.h"

#include <atomic>
#include <coroutine>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

namespace tessary {

/// Where fetched contents wait for the one who polls. The fetching thread puts, the main thread takes.
///
/// Of the changes between two looks at the count only the latest is kept: nobody has seen the others.
class ClipboardShelf {
public:
    class Arrival;

    /// The count, and with it a claim on the contents of that change until they are released.
    [[nodiscard]] qint64 look();
    /// To be awaited: until the contents of that change have arrived or cannot come.
    [[nodiscard]] Arrival arrival(qint64 count);
    [[nodiscard]] std::optional<QByteArray> contents(qint64 count, PasteboardType type);
    void release(qint64 count);

    /// On the fetching thread: the contents changed; drops what nobody has seen. @returns the new count.
    qint64 announce();
    /// On the fetching thread: whether somebody may still ask for that change.
    [[nodiscard]] bool isWanted(qint64 count);
    /// On the fetching thread.
    void put(qint64 count, ClipboardSnapshot snapshot);
    /// On the fetching thread: nothing more will come; whoever waits gets what is there.
    void close();

private:
    struct Waiter {
        std::unique_ptr<ThreadResumption> home;
        std::coroutine_handle<> coroutine;
    };
    struct Change {
        bool hasArrived = false;
        ClipboardSnapshot snapshot;
        std::vector<Waiter> waiters;
    };

    std::atomic<qint64> m_count = 0;
    std::mutex m_mutex;
    std::map<qint64, Change> m_changes; // under the mutex, like all below
    qint64 m_seen = 0;
    bool m_isClosed = false;
};

class ClipboardShelf::Arrival {
public:
    Arrival(ClipboardShelf& shelf, qint64 count) : m_shelf(&shelf), m_count(count) {}

    [[nodiscard]] bool await_ready() const noexcept { return false; }
    [[nodiscard]] bool await_suspend(std::coroutine_handle<> coroutine) const;
    void await_resume() const noexcept {}

private:
    ClipboardShelf* m_shelf;
    qint64 m_count;
};

} // namespace tessary
