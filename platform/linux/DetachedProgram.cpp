#include "platform/linux/DetachedProgram.h"

#include "base/FileError.h"

#include <QFile>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace tessary {
namespace {

/// No output of ours: who waits for its end, as a shell's $(…), would wait for the program's as well.
class CleanFiles {
public:
    CleanFiles()
    {
        ::posix_spawn_file_actions_init(&m_actions);
        for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            ::posix_spawn_file_actions_addopen(&m_actions, standard, "/dev/null", O_RDWR, 0);
        ::posix_spawn_file_actions_addclosefrom_np(&m_actions, STDERR_FILENO + 1);
    }
    ~CleanFiles() { ::posix_spawn_file_actions_destroy(&m_actions); }
    CleanFiles(const CleanFiles&) = delete;
    CleanFiles& operator=(const CleanFiles&) = delete;

    [[nodiscard]] const posix_spawn_file_actions_t* actions() const { return &m_actions; }

private:
    posix_spawn_file_actions_t m_actions{};
};

class OwnSession {
public:
    OwnSession()
    {
        ::posix_spawnattr_init(&m_attributes);
        ::posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSID);
    }
    ~OwnSession() { ::posix_spawnattr_destroy(&m_attributes); }
    OwnSession(const OwnSession&) = delete;
    OwnSession& operator=(const OwnSession&) = delete;

    [[nodiscard]] const posix_spawnattr_t* attributes() const { return &m_attributes; }

private:
    posix_spawnattr_t m_attributes{};
};

} // namespace

DetachedProgram::DetachedProgram(const QString& path, const QByteArrayList& arguments)
{
    QByteArrayList words{QFile::encodeName(path)};
    words += arguments;
    std::vector<char*> argv;
    for (QByteArray& word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);
    const CleanFiles files;
    const OwnSession session;
    const int error =
        ::posix_spawn(&m_process, argv.front(), files.actions(), session.attributes(), argv.data(), environ);
    if (error != 0)
        throw FileError::fromErrno(error, path, FileError::Operation::Read);
}

bool DetachedProgram::hasEnded()
{
    if (!m_hasEnded)
        m_hasEnded = ::waitpid(m_process, nullptr, WNOHANG) != 0;
    return m_hasEnded;
}

} // namespace tessary
