#pragma once

#include <cstddef>

/// What a loadable module with the desktop's tasks offers, in types of C alone: it is built for itself and
/// shares nothing with the program that opens it. Texts are UTF-8. All calls may take long; those of one
/// session belong on one thread.
extern "C" {

/// Raised with every change below.
constexpr int kTaskModuleVersion = 1;
/// The name of the function that a module exports: a `TaskModuleEntry`.
constexpr const char* kTaskModuleEntryName = "tessary_task_module";

struct TaskModuleFailure {
    enum Kind : int {
        None,
        Refused,     ///< Access is denied.
        Unreachable, ///< The service is not there, or went away.
        Failed,      ///< It would not do it.
    };
    Kind kind;
    char detail[200]; ///< For the log; ends with a zero.
};

struct TaskSession;

struct TaskModule {
    int version;
    /// A session with the service, or null with a failure.
    TaskSession* (*open)(TaskModuleFailure* failure);
    void (*close)(TaskSession* session);
    /// Writes the identifier of the enabled, writable list that the person made the default one.
    /// @returns false with a failure, or with none where there is no such list.
    bool (*defaultList)(TaskSession* session, char* list, size_t size, TaskModuleFailure* failure);
    /// Adds a VTODO to that list. @returns false with a failure.
    bool (*add)(TaskSession* session, const char* list, const char* component, TaskModuleFailure* failure);
    /// Removes what was added last, as far as that works.
    void (*removeLast)(TaskSession* session);
};

using TaskModuleEntry = const TaskModule* (*)();
}
