#include "platform/x11/X11EventLoop.h"
#include "platform/x11/XcbReply.h"

#include "tests/support/Await.h"

#include <QProcess>

#include <csignal>
#include <ctime>
#include <future>

namespace tessary {
namespace {

using testing::eventually;
using namespace std::chrono_literals;

/// The result of a function run on the loop's thread.
template <typename Function>
auto on(X11EventLoop& loop, Function function)
{
    const auto task =
        std::make_shared<std::packaged_task<std::invoke_result_t<Function>()>>(std::move(function));
    auto result = task->get_future();
    loop.post([task] { (*task)(); });
    return result.get();
}

/// How long the calling thread has been running so far.
std::chrono::nanoseconds processorTime()
{
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

/// How long the loop's thread runs in a third of a second in which nothing happens.
std::chrono::nanoseconds processorTimeWhileIdle(X11EventLoop& loop)
{
    const auto before = on(loop, processorTime);
    // lint-allow(sleep): nothing is waited for; the absence of activity is what is measured.
    std::this_thread::sleep_for(333ms);
    return on(loop, processorTime) - before;
}

TEST(X11EventLoopTest, SaysSoWhenThereIsNoDisplay)
{
    try {
        const X11EventLoop loop("tessary-none", ":54321");
        FAIL() << "connected to nothing";
    } catch (const X11Error& error) {
        EXPECT_EQ(error.which(), X11Error::Case::NoDisplay);
        EXPECT_FALSE(error.localizedDescription().isEmpty());
    }
}

TEST(X11EventLoopTest, DeliversEventsAndErrorsOnItsOwnThread)
{
    X11EventLoop loop("tessary-events");
    std::atomic<int> changes = 0;
    std::atomic<int> errors = 0;
    std::atomic<std::thread::id> thread;
    loop.addHandler([&](const xcb_generic_event_t& event) {
        thread = std::this_thread::get_id();
        if (event.response_type == 0)
            ++errors;
        if ((event.response_type & 0x7f) == XCB_PROPERTY_NOTIFY)
            ++changes;
    });
    loop.start();
    loop.post([&loop] {
        xcb_connection_t* x = loop.connection();
        const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(x, loop.root(), XCB_CW_EVENT_MASK, &mask);
        const xcb_atom_t property = loop.atoms().atom("TESSARY_TEST");
        xcb_change_property(x, XCB_PROP_MODE_REPLACE, loop.root(), property, XCB_ATOM_STRING, 8, 1, "x");
        xcb_destroy_window(x, 0x7ffffff0); // no such window: an error event
    });
    EXPECT_TRUE(eventually([&] { return changes == 1 && errors == 1; }));
    EXPECT_NE(thread.load(), std::this_thread::get_id());
}

TEST(X11EventLoopTest, ServesAnEventThatCameWhileAReplyWasRead)
{
    X11EventLoop loop("tessary-queued");
    std::atomic<int> changes = 0;
    loop.addHandler([&](const xcb_generic_event_t& event) {
        if ((event.response_type & 0x7f) == XCB_PROPERTY_NOTIFY)
            ++changes;
    });
    loop.start();
    for (int round = 1; round <= 20; ++round) {
        loop.post([&loop] {
            xcb_connection_t* x = loop.connection();
            const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
            xcb_change_window_attributes(x, loop.root(), XCB_CW_EVENT_MASK, &mask);
            const xcb_atom_t property = loop.atoms().atom("TESSARY_TEST");
            xcb_change_property(x, XCB_PROP_MODE_REPLACE, loop.root(), property, XCB_ATOM_STRING, 8, 1, "x");
            const XcbReply<xcb_get_input_focus_reply_t> reply(
                xcb_get_input_focus_reply(x, xcb_get_input_focus(x), nullptr));
        });
        ASSERT_TRUE(eventually([&] { return changes == round; }));
    }
}

TEST(X11EventLoopTest, InternsAnAtomOnceAndKnowsItsName)
{
    X11EventLoop loop("tessary-atoms");
    loop.start();
    const xcb_atom_t first = on(loop, [&] { return loop.atoms().atom("TESSARY_SOME_NAME"); });
    EXPECT_NE(first, xcb_atom_t{XCB_ATOM_NONE});
    EXPECT_EQ(on(loop, [&] { return loop.atoms().atom("TESSARY_SOME_NAME"); }), first);
    EXPECT_EQ(on(loop, [&] { return loop.atoms().name(first); }), QByteArray("TESSARY_SOME_NAME"));
    EXPECT_EQ(on(loop, [&] { return loop.atoms().name(0x1ffffff0); }), QByteArray());
    EXPECT_EQ(on(loop, [&] { return loop.atoms().name(XCB_ATOM_PRIMARY); }), QByteArray("PRIMARY"));
}

TEST(X11EventLoopTest, CallsAtADeadlineUnlessCancelled)
{
    X11EventLoop loop("tessary-timers");
    loop.start();
    std::promise<std::chrono::steady_clock::time_point> called;
    bool cancelledOneRan = false;
    const auto start = std::chrono::steady_clock::now();
    loop.post([&] {
        const auto gone = loop.runAt(start + 20ms, [&] { cancelledOneRan = true; });
        const auto kept =
            loop.runAt(start + 40ms, [&] { called.set_value(std::chrono::steady_clock::now()); });
        EXPECT_NE(gone, kept);
        loop.cancel(gone);
    });
    EXPECT_GE(called.get_future().get(), start + 40ms);
    EXPECT_FALSE(on(loop, [&] { return cancelledOneRan; }));
}

TEST(X11EventLoopTest, RestsWhileNothingIsDue)
{
    X11EventLoop loop("tessary-idle");
    loop.start();
    EXPECT_LT(processorTimeWhileIdle(loop), 20ms);
}

TEST(X11EventLoopTest, RunsWhatWasPostedBeforeItStops)
{
    int done = 0;
    {
        X11EventLoop loop("tessary-stop");
        loop.start();
        for (int i = 0; i < 50; ++i)
            loop.post([&done] { ++done; });
    }
    EXPECT_EQ(done, 50);
}

TEST(X11EventLoopTest, GoesWithoutEverHavingStarted)
{
    X11EventLoop loop("tessary-idle");
    loop.post([] { FAIL(); });
    loop.stop();
    loop.stop();
}

/// A second server, to be killed or stopped.
class OwnServerTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        server.start(QStringLiteral("Xvfb"),
                     {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-nolisten"),
                      QStringLiteral("tcp"), QStringLiteral("-screen"), QStringLiteral("0"),
                      QStringLiteral("320x200x24")});
        ASSERT_TRUE(server.waitForReadyRead(15000));
        display = ':' + server.readAllStandardOutput().trimmed();
    }
    void TearDown() override
    {
        server.kill();
        server.waitForFinished();
    }

    QProcess server;
    QByteArray display;
};

TEST_F(OwnServerTest, ReportsTheLossOfTheServerOnceAndStillServesPosts)
{
    X11EventLoop loop("tessary-loss", display);
    std::atomic<int> losses = 0;
    loop.setConnectionLostHandler([&] { ++losses; });
    loop.start();
    EXPECT_TRUE(on(loop, [&] { return loop.isConnected(); }));
    server.kill();
    ASSERT_TRUE(eventually([&] { return losses == 1; }));
    EXPECT_FALSE(on(loop, [&] { return loop.isConnected(); }));
    EXPECT_EQ(on(loop, [&] { return loop.atoms().atom("TESSARY_LATE"); }), xcb_atom_t{XCB_ATOM_NONE});
    EXPECT_LT(processorTimeWhileIdle(loop), 20ms);
    EXPECT_EQ(losses, 1);
}

TEST_F(OwnServerTest, StopsInTimeAlthoughTheServerHangs)
{
    X11EventLoop loop("tessary-hang", display);
    std::atomic<bool> asking = false;
    loop.start();
    ASSERT_EQ(::kill(static_cast<pid_t>(server.processId()), SIGSTOP), 0);
    loop.post([&] {
        asking = true;
        EXPECT_EQ(loop.atoms().atom("TESSARY_NEVER_ANSWERED"), xcb_atom_t{XCB_ATOM_NONE});
    });
    ASSERT_TRUE(eventually([&] { return asking.load(); }));
    const auto start = std::chrono::steady_clock::now();
    loop.stop(100ms);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
    ::kill(static_cast<pid_t>(server.processId()), SIGCONT);
}

} // namespace
} // namespace tessary
