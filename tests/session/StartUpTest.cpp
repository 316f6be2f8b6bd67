#include "tests/session/SessionTest.h"

#include <QDir>

#include <csignal>

namespace tessary::testing {

namespace {

class StartUpTest : public SessionTest {
protected:
    void withoutDisplay()
    {
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS"})
            environment().remove(QLatin1String(name));
    }

    [[nodiscard]] bool isOnTheBus()
    {
        ChildProcess question(QStringLiteral("dbus-send"),
                              {QStringLiteral("--session"), QStringLiteral("--print-reply"),
                               QStringLiteral("--dest=org.freedesktop.DBus"), QStringLiteral("/"),
                               QStringLiteral("org.freedesktop.DBus.NameHasOwner"),
                               QStringLiteral("string:com.tessary.Tessary")});
        return question.exitCode() == 0 && question.output().contains(QLatin1String("boolean true"));
    }
};

TEST_F(StartUpTest, TellsItsVersionWithoutADisplay)
{
    withoutDisplay();
    const auto asked = run({QStringLiteral("--version")});
    EXPECT_EQ(asked->exitCode(), 0);
    EXPECT_TRUE(asked->output().contains(QLatin1String(TESSARY_VERSION))) << qPrintable(asked->output());
    EXPECT_FALSE(QDir(root()).exists());
}

TEST_F(StartUpTest, TellsItsOptionsWithoutADisplay)
{
    withoutDisplay();
    const auto asked = run({QStringLiteral("--help")});
    EXPECT_EQ(asked->exitCode(), 0);
    EXPECT_TRUE(asked->output().contains(QLatin1String("--version"))) << qPrintable(asked->output());
    EXPECT_FALSE(QDir(root()).exists());
}

TEST_F(StartUpTest, WithoutADisplayItSaysSoAndDoesNotHang)
{
    withoutDisplay();
    const auto started = run();
    EXPECT_NE(started->exitCode(), 0);
    EXPECT_FALSE(started->output().isEmpty());
}

TEST_F(StartUpTest, AnUnknownOptionIsRefused)
{
    const auto started = run({QStringLiteral("--no-such-option")});
    const std::optional<int> status = started->exitCode();
    ASSERT_TRUE(status.has_value());
    EXPECT_NE(*status, 0);
}

TEST_F(StartUpTest, IsOnTheSessionBusAndLeavesIt)
{
    start();
    EXPECT_TRUE(isOnTheBus());
    quit();
    EXPECT_FALSE(isOnTheBus());
}

TEST_F(StartUpTest, AnInterruptEndsItWell)
{
    start();
    tessary().kill(SIGINT);
    EXPECT_EQ(tessary().exitCode(), 0);
}

TEST_F(StartUpTest, ASecondStartWakesTheFirstAndEnds)
{
    start();
    const auto second = run();
    EXPECT_EQ(second->exitCode(), 0) << qPrintable(second->output());
    EXPECT_TRUE(eventually([] {
        const QStringList panel{QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                QStringLiteral("--name"), QStringLiteral("^Tessary$")};
        return ChildProcess(QStringLiteral("xdotool"), panel).exitCode() == 0;
    })) << "the first one shows no panel";
    EXPECT_TRUE(keepsCopying());
}

TEST_F(StartUpTest, WithoutABusInCommonTheSecondLeavesTheLibraryAlone)
{
    start();
    environment().insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("unix:path=/nowhere"));
    const auto second = run();
    EXPECT_TRUE(second->printed(QStringLiteral("另一个 Tessary 正在使用资料库")))
        << qPrintable(second->output());
    EXPECT_TRUE(keepsCopying());
    EXPECT_TRUE(holds(1));
    second->kill(SIGTERM);
    EXPECT_EQ(second->exitCode(), 0) << qPrintable(second->output());
}

TEST_F(StartUpTest, StartedAgainItGoesOnWithItsLibrary)
{
    start();
    ASSERT_TRUE(keepsCopying());
    quit();
    start();
    ASSERT_TRUE(keepsCopying());
    EXPECT_TRUE(holds(2));
}

TEST_F(StartUpTest, NeedsNoHomeWhereTheFoldersAreNamed)
{
    environment().remove(QStringLiteral("HOME"));
    start();
    EXPECT_TRUE(keepsCopying());
}

TEST_F(StartUpTest, MakesItsFoldersInAHomeThatIsNotThereYet)
{
    environment().insert(QStringLiteral("HOME"), scratch(QStringLiteral("data/not/there")));
    environment().remove(QStringLiteral("XDG_DATA_HOME"));
    environment().remove(QStringLiteral("XDG_CONFIG_HOME"));
    start();
    EXPECT_TRUE(
        QFile::exists(scratch(QStringLiteral("data/not/there/.local/share/Tessary/Tessary.sqlite3"))));
}

} // namespace

} // namespace tessary::testing
