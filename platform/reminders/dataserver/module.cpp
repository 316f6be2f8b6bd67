#include "platform/reminders/dataserver/DataServerSession.h"

#include <cstdio>
#include <cstring>

/// The module's side of `TaskModule`: sessions with Evolution Data Server.
struct TaskSession : tessary::DataServerSession {};

namespace {

/// Runs the call; what it throws becomes the failure. @returns whether nothing was thrown.
template <typename Call>
bool tell(TaskModuleFailure* failure, Call call)
{
    *failure = {};
    try {
        call();
        return true;
    } catch (const tessary::DataServerError& error) {
        failure->kind = error.kind();
        std::snprintf(failure->detail, sizeof failure->detail, "%s", error.what());
    } catch (const std::exception& error) {
        failure->kind = TaskModuleFailure::Failed;
        std::snprintf(failure->detail, sizeof failure->detail, "%s", error.what());
    }
    return false;
}

TaskSession* openSession(TaskModuleFailure* failure)
{
    TaskSession* session = nullptr;
    tell(failure, [&] { session = new TaskSession; });
    return session;
}

void closeSession(TaskSession* session)
{
    delete session;
}

bool defaultList(TaskSession* session, char* list, size_t size, TaskModuleFailure* failure)
{
    bool isFound = false;
    tell(failure, [&] {
        const std::optional<std::string> found = session->defaultList();
        isFound = found && found->size() < size;
        if (isFound)
            std::memcpy(list, found->c_str(), found->size() + 1);
    });
    return isFound;
}

bool add(TaskSession* session, const char* list, const char* component, TaskModuleFailure* failure)
{
    return tell(failure, [&] { session->add(list, component); });
}

void removeLast(TaskSession* session)
{
    TaskModuleFailure ignored;
    tell(&ignored, [&] { session->removeLast(); });
}

} // namespace

extern "C" __attribute__((visibility("default"))) const TaskModule* tessary_task_module()
{
    static constexpr TaskModule kModule{kTaskModuleVersion, &openSession, &closeSession,
                                        &defaultList,       &add,         &removeLast};
    return &kModule;
}
