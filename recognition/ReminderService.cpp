#include "recognition/ReminderService.h"

#include "base/Calendar.h"

#include <QCoreApplication>

#include <cmath>

namespace tessary {
namespace {

/// What the calendar on the wall shows at that time, here and now.
ReminderDateComponents componentsOf(Date date)
{
    constexpr double kMilliseconds = 1000;
    const auto milliseconds = static_cast<qint64>(std::floor(date.secondsSince1970 * kMilliseconds));
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(milliseconds, Calendar::current().timeZone);
    return {.year = time.date().year(),
            .month = time.date().month(),
            .day = time.date().day(),
            .hour = time.time().hour(),
            .minute = time.time().minute()};
}

} // namespace

QString ReminderService::Error::localizedDescription() const
{
    if (m_case == Case::Denied)
        return QCoreApplication::translate("ReminderService", "未获得“提醒事项”访问权限");
    return QCoreApplication::translate("ReminderService", "未找到可用的默认提醒事项列表");
}

QCoro::Task<> ReminderService::create(OCRReminderDraft draft)
{
    const bool isGranted = co_await isAccessGranted();
    if (!isGranted)
        throw Error(Error::Case::Denied);
    const std::optional<QString> list = co_await m_store.defaultList();
    if (!list)
        throw Error(Error::Case::NoDefaultCalendar);
    NewReminder reminder{.list = *list, .title = draft.title, .notes = draft.notes, .due = std::nullopt};
    if (draft.dueDate)
        reminder.due = componentsOf(*draft.dueDate);
    co_await m_store.save(reminder);
}

QCoro::Task<bool> ReminderService::isAccessGranted()
{
    const ReminderAuthorization status = co_await m_store.authorizationStatus();
    if (status == ReminderAuthorization::FullAccess || status == ReminderAuthorization::WriteOnly)
        co_return true;
    const bool isGranted = co_await m_store.requestFullAccess();
    co_return isGranted;
}

} // namespace tessary
