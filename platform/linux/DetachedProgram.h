#pragma once

#include <QByteArrayList>
#include <QString>

#include <sys/types.h>

namespace tessary {

/// A program started to go on without us: in a session of its own, with no input, output or file of ours.
class DetachedProgram {
public:
    /// @param path absolute. @throws FileError.
    DetachedProgram(const QString& path, const QByteArrayList& arguments);

    /// Whether it has ended already. Does not wait.
    [[nodiscard]] bool hasEnded();

private:
    pid_t m_process = 0;
    bool m_hasEnded = false;
};

} // namespace tessary
