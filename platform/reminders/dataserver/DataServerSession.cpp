#include "platform/reminders/dataserver/DataServerSession.h"

#include <algorithm>
#include <chrono>
#include <mutex>

namespace tessary {
namespace {

/// A list on another machine says only once it is connected that it can be written.
constexpr std::chrono::seconds kPatienceForRemoteLists{3};
/// The library hands out one registry to all, and even while it takes it apart; a given-up thread may just do
/// so.
std::mutex& registryMutex()
{
    static std::mutex mutex;
    return mutex;
}

constexpr guint32 kNoWait =
    static_cast<guint32>(-1); // waiting would take its whole time, without an event loop

bool isOneOf(const GError* error, GQuark domain, std::initializer_list<int> codes)
{
    return error->domain == domain && std::find(codes.begin(), codes.end(), error->code) != codes.end();
}

/// By default the program is ended when the bus is. Says otherwise, and keeps the connection, which everybody
/// in the process shares, since the next one would be by default again.
void outliveTheBus()
{
    static std::mutex mutex; // given-up threads may come back
    static GDBusConnection* kept = nullptr;
    const std::scoped_lock lock(mutex);
    if (kept != nullptr && g_dbus_connection_is_closed(kept) != FALSE)
        g_clear_object(&kept);
    if (kept != nullptr)
        return;
    GErrorSlot error;
    kept = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, error.slot());
    if (kept == nullptr)
        throw DataServerError::from(error.error());
    g_dbus_connection_set_exit_on_close(kept, FALSE);
}

bool isLocal(ESource* source)
{
    if (!e_source_has_extension(source, E_SOURCE_EXTENSION_TASK_LIST))
        return false;
    auto* list = static_cast<ESourceBackend*>(e_source_get_extension(source, E_SOURCE_EXTENSION_TASK_LIST));
    gchar* backend = e_source_backend_dup_backend_name(list);
    const bool isLocal = g_strcmp0(backend, "local") == 0;
    g_free(backend);
    return isLocal;
}

gboolean passed(gpointer flag)
{
    *static_cast<bool*>(flag) = true;
    return G_SOURCE_CONTINUE;
}

} // namespace

DataServerError DataServerError::from(const GError* error)
{
    using Kind = TaskModuleFailure::Kind;
    Kind kind = Kind::Failed;
    if (error == nullptr)
        return {kind, "no reason given"};
    if (isOneOf(error, G_DBUS_ERROR, {G_DBUS_ERROR_ACCESS_DENIED, G_DBUS_ERROR_AUTH_FAILED}) ||
        isOneOf(error, E_CLIENT_ERROR, {E_CLIENT_ERROR_PERMISSION_DENIED}))
        kind = Kind::Refused;
    else if (error->domain == G_DBUS_ERROR || error->domain == G_IO_ERROR)
        kind = Kind::Unreachable;
    return {kind, error->message};
}

DataServerSession::DataServerSession() : m_context(g_main_context_new())
{
    g_main_context_push_thread_default(m_context);
    try {
        outliveTheBus();
        const std::scoped_lock lock(registryMutex());
        GErrorSlot error;
        m_registry.reset(e_source_registry_new_sync(nullptr, error.slot()));
        if (!m_registry)
            throw DataServerError::from(error.error());
    } catch (...) {
        g_main_context_pop_thread_default(m_context);
        g_main_context_unref(m_context);
        throw;
    }
}

DataServerSession::~DataServerSession()
{
    m_client.reset();
    {
        const std::scoped_lock lock(registryMutex());
        m_registry.reset();
    }
    while (g_main_context_iteration(m_context, FALSE) != FALSE) {
    }
    g_main_context_pop_thread_default(m_context);
    g_main_context_unref(m_context);
}

std::optional<std::string> DataServerSession::defaultList()
{
    const GObjectPointer<ESource> source(e_source_registry_ref_default_task_list(m_registry.get()));
    if (!source || e_source_registry_check_enabled(m_registry.get(), source.get()) == FALSE)
        return std::nullopt;
    if (!isWritable(source.get()))
        return std::nullopt;
    return e_source_get_uid(source.get());
}

void DataServerSession::add(const std::string& list, const char* component)
{
    const GObjectPointer<ESource> source(e_source_registry_ref_source(m_registry.get(), list.c_str()));
    if (!source)
        throw DataServerError(TaskModuleFailure::Failed, "the list is gone");
    const GObjectPointer<ICalComponent> task(i_cal_component_new_from_string(component));
    if (!task)
        throw DataServerError(TaskModuleFailure::Failed, "not a component");
    GErrorSlot error;
    gchar* uid = nullptr;
    const gboolean isAdded = e_cal_client_create_object_sync(
        client(source.get()), task.get(), E_CAL_OPERATION_FLAG_NONE, &uid, nullptr, error.slot());
    if (isAdded == FALSE) {
        m_client.reset(); // its other end may be gone
        throw DataServerError::from(error.error());
    }
    m_lastAdded = uid;
    g_free(uid);
}

void DataServerSession::removeLast()
{
    if (!m_client || m_lastAdded.empty())
        return;
    GErrorSlot ignored;
    e_cal_client_remove_object_sync(m_client.get(), m_lastAdded.c_str(), nullptr, E_CAL_OBJ_MOD_ALL,
                                    E_CAL_OPERATION_FLAG_NONE, nullptr, ignored.slot());
    m_lastAdded.clear();
}

ECalClient* DataServerSession::client(ESource* source)
{
    if (m_client && e_source_equal(e_client_get_source(E_CLIENT(m_client.get())), source) != FALSE)
        return m_client.get();
    GErrorSlot error;
    EClient* connected =
        e_cal_client_connect_sync(source, E_CAL_CLIENT_SOURCE_TYPE_TASKS, kNoWait, nullptr, error.slot());
    if (connected == nullptr)
        throw DataServerError::from(error.error());
    m_client.reset(E_CAL_CLIENT(connected));
    return m_client.get();
}

bool DataServerSession::isWritable(ESource* source)
{
    EClient* list = E_CLIENT(client(source));
    if (e_client_is_readonly(list) == FALSE || isLocal(source))
        return e_client_is_readonly(list) == FALSE;
    bool isOver = false;
    GSource* clock = g_timeout_source_new_seconds(kPatienceForRemoteLists.count());
    g_source_set_callback(clock, &passed, &isOver, nullptr);
    g_source_attach(clock, m_context);
    while (!isOver && e_client_is_readonly(list) != FALSE)
        g_main_context_iteration(m_context, TRUE);
    g_source_destroy(clock);
    g_source_unref(clock);
    return e_client_is_readonly(list) == FALSE;
}

} // namespace tessary
