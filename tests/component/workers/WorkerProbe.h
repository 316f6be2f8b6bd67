#pragma once

#include <QByteArray>
#include <QString>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace tessary::testing {

/// Whether something lies in a worker's standard input that it has not read.
[[nodiscard]] inline bool hasRequestWaiting(pid_t process)
{
    const QByteArray path = QStringLiteral("/proc/%1/fd/0").arg(process).toLatin1();
    const int pipe = ::open(path.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    int waiting = 0;
    const bool asked = pipe >= 0 && ::ioctl(pipe, FIONREAD, &waiting) == 0;
    ::close(pipe);
    return asked && waiting > 0;
}

} // namespace tessary::testing
