#pragma once

#include "base/Error.h"

#include <QByteArrayView>
#include <QCborMap>

#include <chrono>
#include <optional>

namespace tessary {

/// Why a message between the program and one of its workers did not get through.
class MessageError : public Error {
public:
    enum class Case {
        Closed,     ///< The other side no longer reads.
        Truncated,  ///< The other side ended in the middle of a message.
        TimedOut,   ///< The deadline passed first.
        Oversized,  ///< The other side announces more than `kMaximumMessageSize` bytes.
        Unsendable, ///< The message to write is larger than that; nothing was written.
        Malformed,  ///< Not exactly one CBOR map.
        System,     ///< Another failure of the descriptor.
    };
    explicit MessageError(Case which) : m_case(which) {}

    [[nodiscard]] Case which() const noexcept { return m_case; }
    [[nodiscard]] QString localizedDescription() const override;

private:
    Case m_case;
};

/// The exit code of a worker whose memory did not suffice for a request.
constexpr int kWorkerOutOfMemory = 4;

/// A message is its length in bytes (32 bits, big endian), then one CBOR map of that length.
constexpr qint64 kMaximumMessageSize = 600LL * 1024 * 1024;

/// The moment at which waiting ends with `MessageError::Case::TimedOut`; nothing waits for ever.
using MessageDeadline = std::optional<std::chrono::steady_clock::time_point>;

[[nodiscard]] inline MessageDeadline messageDeadlineIn(std::chrono::milliseconds duration)
{
    return std::chrono::steady_clock::now() + duration;
}

/// The map in the bytes behind a length. @throws MessageError (Malformed).
[[nodiscard]] QCborMap parseMessage(QByteArrayView payload);

/// Waits until there is something to read or the other side has gone. @returns false at the deadline.
[[nodiscard]] bool waitForMessage(int descriptor, MessageDeadline deadline);

/// Reads one message; nothing when the other side ended before it began. Blocks until the deadline:
/// not for the main thread. @throws MessageError; the descriptor is of no use afterwards.
[[nodiscard]] std::optional<QCborMap> readMessage(int descriptor, MessageDeadline deadline);

/// Writes one message, blocking or not as the descriptor may be, and never dies of SIGPIPE. Blocks until
/// the deadline: not for the main thread. @throws MessageError; the descriptor is of no use afterwards,
/// except after Unsendable.
void writeMessage(int descriptor, const QCborMap& message, MessageDeadline deadline);

} // namespace tessary
