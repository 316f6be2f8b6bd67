#pragma once

#include "platform/reminders/TaskModule.h"
#include "platform/reminders/dataserver/GObjects.h"

#include <libecal/libecal.h>
#include <optional>
#include <stdexcept>
#include <string>

namespace tessary {

class DataServerError : public std::runtime_error {
public:
    DataServerError(TaskModuleFailure::Kind kind, const char* detail) : runtime_error(detail), m_kind(kind) {}
    /// What the error of a call means.
    [[nodiscard]] static DataServerError from(const GError* error);
    [[nodiscard]] TaskModuleFailure::Kind kind() const { return m_kind; }

private:
    TaskModuleFailure::Kind m_kind;
};

/// Talks with Evolution Data Server by calls that wait for the answer. Nothing of it ever runs on another
/// thread's event loop: it has a context of its own for what arrives. One thread.
class DataServerSession {
public:
    /// @throws DataServerError.
    DataServerSession();
    ~DataServerSession();
    DataServerSession(const DataServerSession&) = delete;
    DataServerSession& operator=(const DataServerSession&) = delete;

    /// The identifier of the default task list; nothing when there is none, or it is switched off or cannot
    /// be written. @throws DataServerError.
    [[nodiscard]] std::optional<std::string> defaultList();
    /// @throws DataServerError.
    void add(const std::string& list, const char* component);
    void removeLast();

private:
    [[nodiscard]] ECalClient* client(ESource* source);
    [[nodiscard]] bool isWritable(ESource* source);

    GMainContext* m_context;
    GObjectPointer<ESourceRegistry> m_registry;
    GObjectPointer<ECalClient> m_client; // of the list last used
    std::string m_lastAdded;
};

} // namespace tessary
