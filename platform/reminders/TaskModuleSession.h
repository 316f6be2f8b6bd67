#pragma once

#include "platform/reminders/DeadlineLane.h"
#include "platform/reminders/TaskModule.h"

namespace tessary {

/// Our side of the loadable module with the desktop's tasks, opened when it is first used. A module that
/// was loaded stays so. Every call may hang: for one expendable thread.
class TaskModuleSession {
public:
    /// The list that takes new tasks, or why there is none.
    struct Finding {
        enum class Kind {
            Found,
            NoList,  ///< No default list, or it is switched off or cannot be written.
            Refused, ///< Access is denied.
            Absent,  ///< The module cannot be loaded, or the service does not start.
        };
        Kind kind = Kind::Absent;
        QString list; ///< Identifier of what was found.

        friend bool operator==(const Finding&, const Finding&) = default;
    };

    TaskModuleSession() = default;
    ~TaskModuleSession();
    TaskModuleSession(const TaskModuleSession&) = delete;
    TaskModuleSession& operator=(const TaskModuleSession&) = delete;

    /// @param module path of its file.
    [[nodiscard]] Finding defaultList(const QString& module);
    /// Adds a VTODO to the list, and removes it again if the claim was taken meanwhile.
    /// @throws ReminderStoreError.
    void add(const QString& module, const QString& list, const QByteArray& component, Claim& claim);

private:
    /// @returns whether there is a session; if not, `failure` tells why.
    bool open(const QString& module, TaskModuleFailure& failure);
    void close();

    const TaskModule* m_module = nullptr; // absent until it is loaded
    TaskSession* m_session = nullptr;
};

} // namespace tessary
