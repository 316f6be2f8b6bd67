#include "platform/reminders/TaskModuleSession.h"

#include <QLoggingCategory>

#include <cstdio>
#include <dlfcn.h>

Q_LOGGING_CATEGORY(lcTaskModule, "tessary.reminders")

namespace tessary {
namespace {

/// Null with a failure when there is no such module, or it is another program's version.
const TaskModule* load(const QString& path, TaskModuleFailure& failure)
{
    const auto fail = [&failure](const char* reason) {
        failure.kind = TaskModuleFailure::Unreachable;
        std::snprintf(failure.detail, sizeof failure.detail, "%s", reason);
        return nullptr;
    };
    void* file = ::dlopen(QFile::encodeName(path).constData(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (file == nullptr)
        return fail(::dlerror());
    const auto entry = reinterpret_cast<TaskModuleEntry>(::dlsym(file, kTaskModuleEntryName));
    if (entry == nullptr)
        return fail("it exports no such function");
    const TaskModule* module = entry();
    return module->version == kTaskModuleVersion ? module : fail("it is of another version");
}

TaskModuleSession::Finding nothing(const TaskModuleFailure& failure)
{
    using Kind = TaskModuleSession::Finding::Kind;
    if (failure.kind != TaskModuleFailure::None)
        qCInfo(lcTaskModule, "no task list: %s", failure.detail);
    switch (failure.kind) {
    case TaskModuleFailure::Refused:
        return {Kind::Refused, {}};
    case TaskModuleFailure::Unreachable:
        return {Kind::Absent, {}};
    case TaskModuleFailure::None:
    case TaskModuleFailure::Failed:
        break;
    }
    return {Kind::NoList, {}};
}

ReminderStoreError errorOf(const TaskModuleFailure& failure)
{
    const bool isGone = failure.kind == TaskModuleFailure::Unreachable;
    return ReminderStoreError(isGone ? ReminderStoreError::Case::Unavailable
                                     : ReminderStoreError::Case::WriteFailed,
                              QString::fromUtf8(failure.detail));
}

} // namespace

TaskModuleSession::~TaskModuleSession()
{
    close();
}

TaskModuleSession::Finding TaskModuleSession::defaultList(const QString& module)
{
    TaskModuleFailure failure{};
    if (!open(module, failure))
        return nothing(failure);
    std::array<char, 256> list{};
    if (m_module->defaultList(m_session, list.data(), list.size(), &failure))
        return {Finding::Kind::Found, QString::fromUtf8(list.data())};
    if (failure.kind != TaskModuleFailure::None)
        close();
    return nothing(failure);
}

void TaskModuleSession::add(const QString& module, const QString& list, const QByteArray& component,
                            Claim& claim)
{
    TaskModuleFailure failure{};
    if (!open(module, failure))
        throw errorOf(failure);
    if (claim.isTaken())
        throw Abandoned();
    if (!m_module->add(m_session, list.toUtf8().constData(), component.constData(), &failure)) {
        close();
        throw errorOf(failure);
    }
    if (!claim.take())
        m_module->removeLast(m_session);
}

bool TaskModuleSession::open(const QString& module, TaskModuleFailure& failure)
{
    if (m_module == nullptr)
        m_module = load(module, failure);
    if (m_module != nullptr && m_session == nullptr)
        m_session = m_module->open(&failure);
    return m_session != nullptr;
}

void TaskModuleSession::close()
{
    if (m_session != nullptr)
        m_module->close(std::exchange(m_session, nullptr));
}

} // namespace tessary
