#pragma once

#include "base/Error.h"

#include <QString>

#include <optional>

#include <qcoro/qcorotask.h>

namespace tessary {

/// Whether we may write the person's reminders.
enum class ReminderAuthorization {
    NotDetermined, ///< Nobody has asked yet.
    Restricted,    ///< Policy forbids it, or the service that was chosen is not there.
    Denied,        ///< Refused.
    FullAccess,
    WriteOnly, ///< Reminders can be added, not read.
};

/// A point of a calendar on the wall: no seconds, no time zone.
struct ReminderDateComponents {
    int year = 0;
    int month = 0;  ///< 1 to 12
    int day = 0;    ///< 1 to 31
    int hour = 0;   ///< 0 to 23
    int minute = 0; ///< 0 to 59

    friend bool operator==(const ReminderDateComponents&, const ReminderDateComponents&) = default;
};

struct NewReminder {
    QString list; ///< Identifier, as `defaultList` returns it.
    QString title;
    QString notes;
    std::optional<ReminderDateComponents> due;

    friend bool operator==(const NewReminder&, const NewReminder&) = default;
};

class ReminderStoreError : public Error {
public:
    enum class Case {
        Unavailable, ///< The service that keeps reminders could not be started or has gone.
        TimedOut,    ///< It did not answer in 8 s.
        WriteFailed, ///< It refused the reminder, or the disk did.
    };
    explicit ReminderStoreError(Case which, QString detail = {}) : m_case(which), m_detail(std::move(detail))
    {
    }

    [[nodiscard]] Case which() const noexcept { return m_case; }
    [[nodiscard]] const QString& detail() const noexcept { return m_detail; } ///< For the log.
    [[nodiscard]] QString localizedDescription() const override;

private:
    Case m_case;
    QString m_detail;
};

/// Where the person's reminders are kept. Main thread only; the work happens elsewhere, and every answer
/// comes within 8 s. All throw ReminderStoreError.
class ReminderStore {
public:
    virtual ~ReminderStore() = default;
    [[nodiscard]] virtual QCoro::Task<ReminderAuthorization> authorizationStatus() = 0;
    /// Asks for full access, as far as somebody has to be asked. @returns whether it is granted.
    [[nodiscard]] virtual QCoro::Task<bool> requestFullAccess() = 0;
    /// The list for new reminders; nothing when there is none that can be used.
    [[nodiscard]] virtual QCoro::Task<std::optional<QString>> defaultList() = 0;
    /// Adds the reminder, on the disk when this returns. A failure leaves nothing behind.
    [[nodiscard]] virtual QCoro::Task<> save(NewReminder reminder) = 0;
};

} // namespace tessary
