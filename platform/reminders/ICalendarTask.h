#pragma once

#include "platform/ReminderStore.h"

#include <QDateTime>

#include <memory>

struct icalcomponent_impl;

namespace tessary {

/// A reminder as a VTODO of iCalendar (RFC 5545): its text in UTF-8, escaped and folded, lines ended by CR
/// LF. The due date is a time on the wall, without a zone. Any thread, one at a time.
class ICalendarTask {
public:
    /// @param uid becomes its UID. @param now is when it was made.
    ICalendarTask(const NewReminder& reminder, const QString& uid, const QDateTime& now);
    ~ICalendarTask();
    ICalendarTask(const ICalendarTask&) = delete;
    ICalendarTask& operator=(const ICalendarTask&) = delete;

    /// The VTODO alone.
    [[nodiscard]] QByteArray component() const;
    /// A calendar with nothing but the VTODO in it: the contents of a file.
    [[nodiscard]] QByteArray document() const;

private:
    struct Free {
        void operator()(icalcomponent_impl* component) const;
    };
    std::unique_ptr<icalcomponent_impl, Free> m_calendar;
    icalcomponent_impl* m_task; // in the calendar
};

} // namespace tessary
