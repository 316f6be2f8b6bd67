#pragma once

#include "platform/ReminderStore.h"
#include "platform/testing/FakeImageCodec.h"

namespace tessary::testing {

/// Reminders kept in a list. Answers through the event loop, and saves only while `gate` is open.
class FakeReminderStore : public ReminderStore {
public:
    ReminderAuthorization status = ReminderAuthorization::FullAccess;
    bool grants = false; ///< What a request for access is answered.
    int requests = 0;    ///< For access.
    std::optional<QString> list = QStringLiteral("tasks");
    std::optional<ReminderStoreError> failure; ///< Makes saving fail while it is set.
    Gate gate;
    QList<NewReminder> reminders;

    QCoro::Task<ReminderAuthorization> authorizationStatus() override
    {
        co_await NextTurn();
        co_return status;
    }
    QCoro::Task<bool> requestFullAccess() override
    {
        ++requests;
        co_await NextTurn();
        if (grants)
            status = ReminderAuthorization::FullAccess;
        co_return grants;
    }
    QCoro::Task<std::optional<QString>> defaultList() override
    {
        co_await NextTurn();
        const std::optional<QString> found = list; // a copy: g++ 12 moves members out
        co_return found;
    }
    QCoro::Task<> save(NewReminder reminder) override
    {
        co_await NextTurn();
        co_await gate.passed();
        if (failure)
            throw ReminderStoreError(*failure);
        reminders.append(reminder);
    }
};

} // namespace tessary::testing
