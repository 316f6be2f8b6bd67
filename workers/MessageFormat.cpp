#include "workers/MessageFormat.h"

#include <QCborValue>
#include <QCoreApplication>
#include <QtEndian>

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <unistd.h>

namespace tessary {
namespace {

constexpr qint64 kPrefixSize = sizeof(quint32);

/// Keeps SIGPIPE from this thread while it writes, without touching the process's own disposition.
class SigpipeGuard {
public:
    SigpipeGuard()
    {
        sigemptyset(&m_signal);
        sigaddset(&m_signal, SIGPIPE);
        sigset_t pending;
        sigpending(&pending);
        m_wasPending = sigismember(&pending, SIGPIPE) == 1;
        pthread_sigmask(SIG_BLOCK, &m_signal, &m_previous);
    }
    ~SigpipeGuard()
    {
        const timespec now{};
        while (!m_wasPending && sigtimedwait(&m_signal, nullptr, &now) < 0 && errno == EINTR) {
        }
        pthread_sigmask(SIG_SETMASK, &m_previous, nullptr);
    }
    SigpipeGuard(const SigpipeGuard&) = delete;
    SigpipeGuard& operator=(const SigpipeGuard&) = delete;

private:
    sigset_t m_signal{};
    sigset_t m_previous{};
    bool m_wasPending = false;
};

/// Milliseconds for poll(), rounded up so that it does not spin through the last fraction.
int millisecondsLeft(MessageDeadline deadline)
{
    if (!deadline)
        return -1;
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(*deadline - std::chrono::steady_clock::now());
    return static_cast<int>(std::clamp<qint64>(left.count(), 0, INT_MAX));
}

/// @returns false at the deadline.
bool waitUntilReady(int descriptor, short events, MessageDeadline deadline)
{
    // poll() would take it for a descriptor to skip.
    if (descriptor < 0)
        throw MessageError(MessageError::Case::System);
    for (;;) {
        pollfd entry{descriptor, events, 0};
        const int count = ::poll(&entry, 1, millisecondsLeft(deadline));
        if (count > 0 && (entry.revents & POLLNVAL) == 0)
            return true;
        if (count == 0)
            return false;
        if (count > 0 || errno != EINTR)
            throw MessageError(MessageError::Case::System);
    }
}

/// Fills the buffer. @returns how much came before the other side ended.
qint64 readFully(int descriptor, char* buffer, qint64 size, MessageDeadline deadline)
{
    qint64 done = 0;
    while (done < size) {
        if (!waitUntilReady(descriptor, POLLIN, deadline))
            throw MessageError(MessageError::Case::TimedOut);
        const ssize_t count = ::read(descriptor, buffer + done, static_cast<size_t>(size - done));
        if (count == 0)
            break;
        if (count < 0 && errno != EINTR && errno != EAGAIN)
            throw MessageError(MessageError::Case::System);
        done += std::max<ssize_t>(count, 0);
    }
    return done;
}

/// How much one write may carry: a ready pipe takes PIPE_BUF bytes without blocking, and no more is
/// promised for a descriptor that would then block past the deadline.
qint64 largestWrite(int descriptor, MessageDeadline deadline)
{
    const int flags = ::fcntl(descriptor, F_GETFL);
    if (flags < 0)
        throw MessageError(MessageError::Case::System);
    return !deadline || (flags & O_NONBLOCK) != 0 ? kMaximumMessageSize : PIPE_BUF;
}

void writeFully(int descriptor, QByteArrayView bytes, MessageDeadline deadline)
{
    const qint64 largest = largestWrite(descriptor, deadline);
    while (!bytes.isEmpty()) {
        if (!waitUntilReady(descriptor, POLLOUT, deadline))
            throw MessageError(MessageError::Case::TimedOut);
        const auto size = static_cast<size_t>(std::min<qint64>(bytes.size(), largest));
        const ssize_t count = ::write(descriptor, bytes.data(), size);
        if (count < 0 && errno == EPIPE)
            throw MessageError(MessageError::Case::Closed);
        if (count < 0 && errno != EINTR && errno != EAGAIN)
            throw MessageError(MessageError::Case::System);
        bytes = bytes.sliced(std::max<ssize_t>(count, 0));
    }
}

} // namespace

QString MessageError::localizedDescription() const
{
    return QCoreApplication::translate("MessageError", "与后台处理进程的通信失败。");
}

QCborMap parseMessage(QByteArrayView payload)
{
    QCborParserError error;
    const QCborValue value =
        QCborValue::fromCbor(QByteArray::fromRawData(payload.data(), payload.size()), &error);
    if (error.error != QCborError::NoError || error.offset != payload.size() || !value.isMap())
        throw MessageError(MessageError::Case::Malformed);
    return value.toMap();
}

bool waitForMessage(int descriptor, MessageDeadline deadline)
{
    return waitUntilReady(descriptor, POLLIN, deadline);
}

std::optional<QCborMap> readMessage(int descriptor, MessageDeadline deadline)
{
    std::array<char, kPrefixSize> prefix{};
    const qint64 prefixRead = readFully(descriptor, prefix.data(), kPrefixSize, deadline);
    if (prefixRead == 0)
        return std::nullopt;
    if (prefixRead < kPrefixSize)
        throw MessageError(MessageError::Case::Truncated);
    const qint64 size = qFromBigEndian<quint32>(prefix.data());
    if (size > kMaximumMessageSize)
        throw MessageError(MessageError::Case::Oversized);
    QByteArray payload(size, Qt::Uninitialized);
    if (readFully(descriptor, payload.data(), size, deadline) < size)
        throw MessageError(MessageError::Case::Truncated);
    return parseMessage(payload);
}

void writeMessage(int descriptor, const QCborMap& message, MessageDeadline deadline)
{
    const QByteArray payload = QCborValue(message).toCbor();
    if (payload.size() > kMaximumMessageSize)
        throw MessageError(MessageError::Case::Unsendable);
    std::array<char, kPrefixSize> prefix{};
    qToBigEndian(static_cast<quint32>(payload.size()), prefix.data());
    const SigpipeGuard guard;
    writeFully(descriptor, QByteArrayView(prefix.data(), kPrefixSize), deadline);
    writeFully(descriptor, payload, deadline);
}

} // namespace tessary
