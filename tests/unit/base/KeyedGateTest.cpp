#include "base/KeyedGate.h"

#include "base/SerialLane.h"
#include "tests/support/Await.h"

namespace tessary {
namespace {

QCoro::Task<> work(KeyedGate& gate, SerialLane& lane, QString key, QString name, QStringList& log)
{
    auto entrance = gate.enter(key);
    const KeyedGate::Pass pass = co_await entrance;
    log.append(name + u'<');
    auto pause = lane.post([] {});
    co_await pause;
    log.append(name + u'>');
}

TEST(KeyedGateTest, LetsOneAtATimeWorkOnAKeyInTheOrderTheyCame)
{
    KeyedGate gate;
    SerialLane lane(QStringLiteral("gate"));
    QStringList log;
    std::vector<QCoro::Task<>> tasks;
    for (const char* name : {"a", "b", "c"})
        tasks.push_back(work(gate, lane, QStringLiteral("key"), QLatin1String(name), log));
    ASSERT_TRUE(testing::eventually([&] { return log.size() == 6; }));
    EXPECT_EQ(log.join(QString()), QStringLiteral("a<a>b<b>c<c>"));
    EXPECT_TRUE(testing::eventually([&] { return !gate.isHeld(QStringLiteral("key")); }));
}

TEST(KeyedGateTest, LetsDifferentKeysThroughTogether)
{
    KeyedGate gate;
    SerialLane lane(QStringLiteral("gate"));
    QStringList log;
    const QCoro::Task<> first = work(gate, lane, QStringLiteral("1"), QStringLiteral("a"), log);
    const QCoro::Task<> second = work(gate, lane, QStringLiteral("2"), QStringLiteral("b"), log);
    EXPECT_EQ(log, (QStringList{QStringLiteral("a<"), QStringLiteral("b<")}));
    EXPECT_TRUE(testing::eventually([&] { return log.size() == 4; }));
}

} // namespace
} // namespace tessary
