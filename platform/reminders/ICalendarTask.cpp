#include "platform/reminders/ICalendarTask.h"

#include <libical/ical.h>

namespace tessary {
namespace {

/// What iCalendar can hold of the text: line ends become LF, other control characters but the tab go.
QByteArray writable(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
    text.removeIf([](QChar unit) {
        constexpr char16_t kDelete = 0x7f;
        return (unit < u' ' && unit != u'\n' && unit != u'\t') || unit == kDelete;
    });
    return text.toUtf8(); // half a surrogate pair becomes a question mark
}

icaltimetype utcTime(const QDateTime& time)
{
    return icaltime_from_timet_with_zone(time.toSecsSinceEpoch(), 0, icaltimezone_get_utc_timezone());
}

icaltimetype floatingTime(const ReminderDateComponents& components)
{
    icaltimetype time = icaltime_null_time();
    time.year = components.year;
    time.month = components.month;
    time.day = components.day;
    time.hour = components.hour;
    time.minute = components.minute;
    return time;
}

QByteArray written(icalcomponent* component)
{
    const std::unique_ptr<char, decltype(&::free)> text(icalcomponent_as_ical_string_r(component), &::free);
    return {text.get()};
}

} // namespace

void ICalendarTask::Free::operator()(icalcomponent_impl* component) const
{
    icalcomponent_free(component);
}

ICalendarTask::ICalendarTask(const NewReminder& reminder, const QString& uid, const QDateTime& now)
    : m_calendar(icalcomponent_new_vcalendar()),
      m_task(icalcomponent_new_vtodo())
{
    icalcomponent* calendar = m_calendar.get();
    icalcomponent_add_property(calendar, icalproperty_new_version("2.0"));
    icalcomponent_add_property(calendar,
                               icalproperty_new_prodid("-//Tessary//Tessary " TESSARY_VERSION "//"));
    icalcomponent_add_component(calendar, m_task);

    const icaltimetype made = utcTime(now);
    icalcomponent_add_property(m_task, icalproperty_new_uid(uid.toUtf8().constData()));
    icalcomponent_add_property(m_task, icalproperty_new_dtstamp(made));
    icalcomponent_add_property(m_task, icalproperty_new_created(made));
    icalcomponent_add_property(m_task, icalproperty_new_lastmodified(made));
    icalcomponent_add_property(m_task, icalproperty_new_summary(writable(reminder.title).constData()));
    if (!reminder.notes.isEmpty())
        icalcomponent_add_property(m_task,
                                   icalproperty_new_description(writable(reminder.notes).constData()));
    if (reminder.due)
        icalcomponent_add_property(m_task, icalproperty_new_due(floatingTime(*reminder.due)));
}

ICalendarTask::~ICalendarTask() = default;

QByteArray ICalendarTask::component() const
{
    return written(m_task);
}

QByteArray ICalendarTask::document() const
{
    return written(m_calendar.get());
}

} // namespace tessary
