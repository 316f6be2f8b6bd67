#include "platform/linux/TaskService.h"

#include "tests/support/BusService.h"
#include "tests/support/PrivateBus.h"

namespace tessary {
namespace {

using testing::await;
using testing::BusService;

class TaskServiceTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(bus.start()); }
    std::unique_ptr<BusService> offer(const QString& part) const
    {
        return std::make_unique<BusService>(
            bus.address(), QStringLiteral("org.gnome.evolution.dataserver.") + part, QStringLiteral("/x"),
            [](const QDBusMessage&) { return std::nullopt; });
    }
    static TaskService::Answer answerOf(TaskService& service)
    {
        return await(service.wake(QDeadlineTimer(testing::kDeadline)));
    }

    testing::PrivateBus bus;
};

TEST_F(TaskServiceTest, IsReachableWhenBothPartsAre)
{
    TaskService service(bus.address());
    EXPECT_FALSE(await(service.isReachable()));
    const auto sources = offer(QStringLiteral("Sources5"));
    EXPECT_FALSE(await(service.isReachable()));
    const auto calendars = offer(QStringLiteral("Calendar8"));
    EXPECT_TRUE(await(service.isReachable()));
    EXPECT_EQ(answerOf(service), TaskService::Answer::Awake) << "it runs already";
}

TEST_F(TaskServiceTest, OtherVersionsOfItsInterfaceCountAsWell)
{
    TaskService service(bus.address());
    const auto sources = offer(QStringLiteral("Sources12"));
    const auto calendars = offer(QStringLiteral("Calendar10"));
    EXPECT_TRUE(await(service.isReachable()));
}

TEST_F(TaskServiceTest, OtherPartsOfItDoNot)
{
    TaskService service(bus.address());
    const auto sources = offer(QStringLiteral("Sources5"));
    const auto factory = offer(QStringLiteral("CalendarView8"));
    const auto book = offer(QStringLiteral("AddressBook10"));
    EXPECT_FALSE(await(service.isReachable()));
    EXPECT_EQ(answerOf(service), TaskService::Answer::Absent);
}

TEST_F(TaskServiceTest, ThatItIsGoneIsNoticed)
{
    TaskService service(bus.address());
    const auto sources = offer(QStringLiteral("Sources5"));
    auto calendars = offer(QStringLiteral("Calendar8"));
    EXPECT_TRUE(await(service.isReachable()));
    calendars.reset();
    EXPECT_FALSE(await(service.isReachable()));
}

TEST_F(TaskServiceTest, WithoutABusThereIsNone)
{
    TaskService service(QStringLiteral("unix:path=/not/there"));
    EXPECT_FALSE(await(service.isReachable()));
    EXPECT_EQ(answerOf(service), TaskService::Answer::Absent);
}

} // namespace
} // namespace tessary
