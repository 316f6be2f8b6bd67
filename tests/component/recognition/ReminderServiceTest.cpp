#include "recognition/ReminderService.h"

#include "platform/testing/FakeReminderStore.h"
#include "tests/support/Await.h"

#include <QTimeZone>

namespace tessary {
namespace {

using testing::await;
using testing::eventually;

OCRReminderDraft draft(const QString& title)
{
    return {.title = title, .notes = title + QStringLiteral("\n第二行"), .dueDate = std::nullopt};
}

class ReminderServiceTest : public ::testing::Test {
protected:
    /// @returns what the person is told; empty when the reminder was created.
    QString messageOf(const OCRReminderDraft& reminder)
    {
        try {
            await(service.create(reminder));
        } catch (const Error& error) {
            return error.localizedDescription();
        }
        return {};
    }

    testing::FakeReminderStore store;
    ReminderService service{store};
};

TEST_F(ReminderServiceTest, ADraftWithoutADueDateMakesAReminderWithoutOne)
{
    await(service.create(draft(QStringLiteral("买牛奶"))));
    const NewReminder expected{.list = QStringLiteral("tasks"),
                               .title = QStringLiteral("买牛奶"),
                               .notes = QStringLiteral("买牛奶\n第二行"),
                               .due = std::nullopt};
    EXPECT_EQ(store.reminders, QList<NewReminder>{expected});
    EXPECT_EQ(store.requests, 0);
}

TEST_F(ReminderServiceTest, ADueDateIsSplitInLocalTimeAndLosesItsSeconds)
{
    const QByteArray zone = qgetenv("TZ");
    for (const char* name : {"Asia/Shanghai", "America/St_Johns", "UTC"}) {
        qputenv("TZ", name);
        ::tzset();
        OCRReminderDraft reminder = draft(QStringLiteral("会议"));
        reminder.dueDate = Date::fromDateTime(
            QDateTime(QDate(2026, 3, 5), QTime(18, 30, 45, 999), QTimeZone(QByteArray(name))));
        await(service.create(reminder));
        const ReminderDateComponents expected{.year = 2026, .month = 3, .day = 5, .hour = 18, .minute = 30};
        EXPECT_EQ(store.reminders.last().due, expected) << name;
    }
    qputenv("TZ", zone);
    ::tzset();
}

TEST_F(ReminderServiceTest, ADueDateBefore1970IsSplitAsWell)
{
    OCRReminderDraft reminder = draft(QStringLiteral("t"));
    reminder.dueDate = Date::fromDateTime(QDateTime(QDate(1969, 12, 31), QTime(23, 59, 59, 500)));
    await(service.create(reminder));
    const ReminderDateComponents expected{.year = 1969, .month = 12, .day = 31, .hour = 23, .minute = 59};
    EXPECT_EQ(store.reminders.last().due, expected);
}

TEST_F(ReminderServiceTest, WhoeverMayAddOnlyIsNotAskedAgain)
{
    store.status = ReminderAuthorization::WriteOnly;
    await(service.create(draft(QStringLiteral("a"))));
    EXPECT_EQ(store.requests, 0);
    EXPECT_EQ(store.reminders.size(), 1);
}

TEST_F(ReminderServiceTest, TheFirstUseAsks)
{
    store.status = ReminderAuthorization::NotDetermined;
    store.grants = true;
    await(service.create(draft(QStringLiteral("a"))));
    await(service.create(draft(QStringLiteral("b"))));
    EXPECT_EQ(store.requests, 1);
    EXPECT_EQ(store.reminders.size(), 2);
}

TEST_F(ReminderServiceTest, WhatWasRefusedIsAskedForAgainEachTime)
{
    for (const auto status : {ReminderAuthorization::Denied, ReminderAuthorization::Restricted,
                              ReminderAuthorization::NotDetermined}) {
        store.status = status;
        store.requests = 0;
        EXPECT_EQ(messageOf(draft(QStringLiteral("a"))), QStringLiteral("未获得“提醒事项”访问权限"));
        EXPECT_EQ(messageOf(draft(QStringLiteral("a"))), QStringLiteral("未获得“提醒事项”访问权限"));
        EXPECT_EQ(store.requests, 2);
    }
    EXPECT_TRUE(store.reminders.isEmpty());
    store.grants = true;
    EXPECT_EQ(messageOf(draft(QStringLiteral("a"))), QString()) << "the person has changed their mind";
}

TEST_F(ReminderServiceTest, WithoutAListForNewOnesNothingIsCreated)
{
    store.list.reset();
    try {
        await(service.create(draft(QStringLiteral("a"))));
        ADD_FAILURE() << "it has no list";
    } catch (const ReminderService::Error& error) {
        EXPECT_EQ(error.which(), ReminderService::Error::Case::NoDefaultCalendar);
        EXPECT_EQ(error.localizedDescription(), QStringLiteral("未找到可用的默认提醒事项列表"));
    }
    EXPECT_TRUE(store.reminders.isEmpty());
}

TEST_F(ReminderServiceTest, TheStoresOwnErrorArrivesUnchanged)
{
    store.failure.emplace(ReminderStoreError::Case::WriteFailed, QStringLiteral("disk full"));
    try {
        await(service.create(draft(QStringLiteral("a"))));
        ADD_FAILURE() << "it was not saved";
    } catch (const ReminderStoreError& error) {
        EXPECT_EQ(error.which(), ReminderStoreError::Case::WriteFailed);
        EXPECT_EQ(error.detail(), QStringLiteral("disk full"));
    }
    store.failure.reset();
    EXPECT_TRUE(store.reminders.isEmpty()) << "nothing is tried again";
}

TEST_F(ReminderServiceTest, AVeryLongTitleIsSavedWhole)
{
    const QString title(100'000, QChar(u'长'));
    await(service.create(draft(title)));
    EXPECT_EQ(store.reminders.last().title, title);
}

TEST_F(ReminderServiceTest, TwoPressesMakeTwoReminders)
{
    store.gate.close();
    QCoro::Task<> first = service.create(draft(QStringLiteral("a")));
    QCoro::Task<> second = service.create(draft(QStringLiteral("a")));
    EXPECT_TRUE(eventually([&] { return store.gate.waitingCount() == 2; })) << "neither waits for the other";
    store.gate.open();
    await(std::move(first));
    await(std::move(second));
    EXPECT_EQ(store.reminders.size(), 2);
}

} // namespace
} // namespace tessary
