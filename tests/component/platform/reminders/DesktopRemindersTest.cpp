#include "platform/reminders/DesktopReminders.h"

#include "platform/testing/FakeStandardFolders.h"
#include "tests/component/platform/reminders/TaskDesktop.h"

#include <QJsonArray>
#include <QJsonObject>

namespace tessary {
namespace {

using namespace std::chrono_literals;
using testing::await;
using testing::eventually;
using Kind = DesktopTasks::Finding::Kind;

constexpr auto kEnough = testing::kDeadline; // for a service that starts on a busy machine
constexpr auto kShort = 300ms;

class DesktopRemindersTest : public ::testing::Test {
protected:
    [[nodiscard]] static QString module() { return QStringLiteral(TESSARY_REMINDERS_MODULE); }
    [[nodiscard]] QString folder() const { return desktop.path(QStringLiteral("data/Tessary/Reminders")); }
    [[nodiscard]] QStringList filesInFolder() const
    {
        return QDir(folder()).entryList({QStringLiteral("*.ics")});
    }
    std::unique_ptr<DesktopReminders> store(std::chrono::milliseconds deadline = kEnough,
                                            const QString& modulePath = module())
    {
        return std::make_unique<DesktopReminders>(
            folders, DesktopReminders::Options{.busAddress = {}, .module = modulePath, .deadline = deadline});
    }
    std::unique_ptr<DesktopTasks> tasks(std::chrono::milliseconds deadline = kEnough)
    {
        return std::make_unique<DesktopTasks>(module(), deadline, QString());
    }
    /// How many threads talk to the service, or wait for it: ours, and those that the library made there,
    /// which stay for good.
    static qsizetype threadCount()
    {
        const QDir threads(QStringLiteral("/proc/self/task"));
        const QStringList all = threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        return std::count_if(all.begin(), all.end(), [&](const QString& thread) {
            QFile name(threads.filePath(thread + QStringLiteral("/comm")));
            return name.open(QIODevice::ReadOnly) && name.readAll() == "tessary-desktop\n";
        });
    }
    static NewReminder reminder(const QString& list, const QString& title)
    {
        return {.list = list, .title = title, .notes = title, .due = std::nullopt};
    }
    /// As whoever creates a reminder goes about it.
    static void create(ReminderStore& reminders, const QString& title)
    {
        const std::optional<QString> list = await(reminders.defaultList());
        ASSERT_TRUE(list);
        await(reminders.save(reminder(*list, title)));
    }
    template <typename Value>
    static std::optional<ReminderStoreError::Case> failureOf(QCoro::Task<Value> task)
    {
        try {
            await(std::move(task));
        } catch (const ReminderStoreError& error) {
            return error.which();
        }
        return std::nullopt;
    }
    /// Makes another list the default one. @param lines of its description.
    void makeDefault(const QString& name, const QByteArray& lines)
    {
        write(QStringLiteral("config/evolution/sources/%1.source").arg(name),
              "[Data Source]\nDisplayName=" + name.toUtf8() +
                  "\nEnabled=true\nParent=local-stub\n[Task List]\nBackendName=local\n" + lines);
        write(QStringLiteral("config/glib-2.0/settings/keyfile"),
              "[org/gnome/evolution]\ndefault-task-list='" + name.toUtf8() + "'\n");
    }
    void write(const QString& name, const QByteArray& bytes)
    {
        QFile file(desktop.path(name));
        EXPECT_TRUE(QDir().mkpath(QFileInfo(file).path()));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    testing::TaskDesktop desktop;
    testing::FakeStandardFolders folders{desktop.path(QStringLiteral("data")), QString()};
};

TEST_F(DesktopRemindersTest, AReminderIsListedByAnotherProgramWithAllItHas)
{
    ASSERT_TRUE(desktop.start());
    const auto reminders = store();
    EXPECT_EQ(await(reminders->authorizationStatus()), ReminderAuthorization::NotDetermined);
    EXPECT_TRUE(desktop.processes().isEmpty()) << "looking starts nothing";
    EXPECT_TRUE(await(reminders->requestFullAccess()));
    EXPECT_EQ(await(reminders->authorizationStatus()), ReminderAuthorization::FullAccess);
    const std::optional<QString> list = await(reminders->defaultList());
    ASSERT_TRUE(list);
    NewReminder made = reminder(*list, QStringLiteral("周三, 交报告；") + QString(3000, QChar(u'长')));
    made.notes = QStringLiteral("周三, 交报告；\n第二行\\n; 😀");
    made.due = ReminderDateComponents{.year = 2031, .month = 3, .day = 5, .hour = 18, .minute = 30};
    await(reminders->save(made));
    auto first = reminders->save(reminder(*list, QStringLiteral("twice")));
    auto second = reminders->save(reminder(*list, QStringLiteral("twice")));
    await(std::move(first));
    await(std::move(second));

    const QJsonArray listed = testing::TaskDesktop::ask(QStringLiteral("list")).array();
    ASSERT_EQ(listed.size(), 3);
    int twice = 0;
    for (const QJsonValue& value : listed) {
        const QJsonObject task = value.toObject();
        if (task.value(QLatin1String("title")) == QStringLiteral("twice")) {
            ++twice;
            EXPECT_TRUE(task.value(QLatin1String("due")).isNull());
            continue;
        }
        EXPECT_EQ(task.value(QLatin1String("title")).toString(), made.title);
        EXPECT_EQ(task.value(QLatin1String("notes")).toString(), made.notes);
        const QJsonObject due = task.value(QLatin1String("due")).toObject();
        EXPECT_EQ(due.value(QLatin1String("text")).toString(), QStringLiteral("20310305T183000"));
        EXPECT_TRUE(due.value(QLatin1String("zone")).isNull());
        EXPECT_FALSE(due.value(QLatin1String("utc")).toBool());
    }
    EXPECT_EQ(twice, 2);
    EXPECT_EQ(filesInFolder(), QStringList()) << "in one place only";

    const auto later = store();
    EXPECT_EQ(await(later->authorizationStatus()), ReminderAuthorization::FullAccess) << "it is remembered";
    create(*later, QStringLiteral("later"));
    EXPECT_EQ(testing::TaskDesktop::ask(QStringLiteral("list")).array().size(), 4);
}

TEST_F(DesktopRemindersTest, AListThatIsSwitchedOffIsNone)
{
    ASSERT_TRUE(desktop.start());
    EXPECT_EQ(await(tasks()->defaultList()).kind, Kind::Found);
    const auto chosen = store();
    EXPECT_TRUE(await(chosen->requestFullAccess()));
    (void)testing::TaskDesktop::ask(QStringLiteral("disable"));
    EXPECT_EQ(await(tasks()->defaultList()).kind, Kind::NoList);
    EXPECT_EQ(await(chosen->defaultList()), std::nullopt) << "what was chosen stays chosen";

    const auto later = store();
    EXPECT_TRUE(await(later->requestFullAccess()));
    EXPECT_EQ(await(later->defaultList()), folder());
    create(*later, QStringLiteral("a"));
    EXPECT_EQ(filesInFolder().size(), 1);
}

TEST_F(DesktopRemindersTest, AListThatCannotBeWrittenIsNone)
{
    write(QStringLiteral("readonly.ics"), "BEGIN:VCALENDAR\nVERSION:2.0\nPRODID:-//test//\nEND:VCALENDAR\n");
    makeDefault(QStringLiteral("readonly"), "[Local Backend]\nCustomFile=file://" +
                                                desktop.path(QStringLiteral("readonly.ics")).toUtf8() +
                                                "\nWritable=false\n");
    ASSERT_TRUE(desktop.start());
    EXPECT_EQ(await(tasks()->defaultList()).kind, Kind::NoList);
    const auto reminders = store();
    EXPECT_TRUE(await(reminders->requestFullAccess()));
    EXPECT_EQ(await(reminders->defaultList()), folder());
}

TEST_F(DesktopRemindersTest, TheListThatThePersonMadeTheDefaultOneIsTaken)
{
    makeDefault(QStringLiteral("mine"), "");
    ASSERT_TRUE(desktop.start());
    const DesktopTasks::Finding finding = await(tasks()->defaultList());
    EXPECT_EQ(finding.kind, Kind::Found);
    EXPECT_EQ(finding.list, QStringLiteral("mine"));
}

TEST_F(DesktopRemindersTest, AfterARestTheServiceIsConnectedAgain)
{
    ASSERT_TRUE(desktop.start());
    DesktopTasks resting(module(), kEnough, QString(), 50ms);
    const DesktopTasks::Finding finding = await(resting.defaultList());
    EXPECT_EQ(finding.kind, Kind::Found);
    EXPECT_TRUE(eventually([&] { return resting.isResting(); }));
    await(resting.save(reminder(finding.list, QStringLiteral("a"))));
    EXPECT_TRUE(eventually([&] { return resting.isResting(); }));
    EXPECT_EQ(testing::TaskDesktop::ask(QStringLiteral("list")).array().size(), 1);
}

TEST_F(DesktopRemindersTest, WithoutTheServiceRemindersGoIntoTheFolder)
{
    ASSERT_TRUE(desktop.start(testing::TaskDesktop::Service::Missing));
    EXPECT_EQ(await(tasks()->defaultList()).kind, Kind::Absent);
    const auto reminders = store();
    EXPECT_EQ(await(reminders->authorizationStatus()), ReminderAuthorization::NotDetermined);
    EXPECT_TRUE(await(reminders->requestFullAccess()));
    EXPECT_EQ(await(reminders->authorizationStatus()), ReminderAuthorization::FullAccess);
    create(*reminders, QStringLiteral("a"));
    EXPECT_EQ(filesInFolder().size(), 1);
}

TEST_F(DesktopRemindersTest, WithoutABusRemindersGoIntoTheFolder)
{
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/not/there");
    const auto reminders = store();
    EXPECT_TRUE(await(reminders->requestFullAccess()));
    create(*reminders, QStringLiteral("a"));
    EXPECT_EQ(filesInFolder().size(), 1);
}

TEST_F(DesktopRemindersTest, WithoutTheModuleOrWithAnotherOneRemindersGoIntoTheFolder)
{
    ASSERT_TRUE(desktop.start());
    write(QStringLiteral("broken.so"), "no library");
    for (const QString& path : {desktop.path(QStringLiteral("missing.so")),
                                desktop.path(QStringLiteral("broken.so")), QStringLiteral("libc.so.6")}) {
        const auto reminders = store(kEnough, path);
        EXPECT_TRUE(await(reminders->requestFullAccess())) << qPrintable(path);
        EXPECT_EQ(await(reminders->defaultList()), folder()) << qPrintable(path);
    }
}

TEST_F(DesktopRemindersTest, WhatTheBusForbidsIsDenied)
{
    ASSERT_TRUE(desktop.start(
        testing::TaskDesktop::Service::Installed,
        QStringLiteral("<deny send_destination=\"org.gnome.evolution.dataserver.Sources5\"/>")));
    const auto reminders = store();
    EXPECT_FALSE(await(reminders->requestFullAccess()));
    EXPECT_EQ(await(reminders->authorizationStatus()), ReminderAuthorization::Denied);
    EXPECT_EQ(await(reminders->defaultList()), std::nullopt);
}

TEST_F(DesktopRemindersTest, AServiceThatHangsIsGivenUpWithoutHoldingUpAnybodyAndAskedAgain)
{
    ASSERT_TRUE(desktop.start());
    EXPECT_TRUE(await(store()->requestFullAccess()));
    const QString list = await(tasks()->defaultList()).list;
    const auto hasty = store(kShort);
    desktop.signal(SIGSTOP);

    QElapsedTimer sinceTurn;
    qint64 longestPause = 0;
    QTimer turns;
    QObject::connect(&turns, &QTimer::timeout,
                     [&] { longestPause = std::max(longestPause, sinceTurn.restart()); });
    sinceTurn.start();
    turns.start(5);
    QElapsedTimer took;
    took.start();
    EXPECT_EQ(failureOf(hasty->requestFullAccess()), ReminderStoreError::Case::TimedOut);
    EXPECT_EQ(failureOf(hasty->save(reminder(list, QStringLiteral("given up")))),
              ReminderStoreError::Case::TimedOut);
    EXPECT_GE(took.elapsed(), kShort.count());
    EXPECT_LT(longestPause, kShort.count()) << "the main thread went on";
    EXPECT_EQ(await(hasty->authorizationStatus()), ReminderAuthorization::FullAccess)
        << "the first use was an earlier one";

    desktop.signal(SIGCONT);
    EXPECT_TRUE(eventually([&] { return !failureOf(hasty->defaultList()); })) << "each call asks anew";
    EXPECT_EQ(await(hasty->defaultList()), list);
}

TEST_F(DesktopRemindersTest, WhatWasGivenUpIsTakenBackWhenTheServiceDidItAfterAll)
{
    ASSERT_TRUE(desktop.start());
    const DesktopTasks::Finding finding = await(tasks()->defaultList()); // the service is up
    const auto hasty = tasks(3s);
    ASSERT_EQ(await(hasty->defaultList()), finding);
    desktop.signal(SIGSTOP);
    EXPECT_EQ(failureOf(hasty->save(reminder(finding.list, QStringLiteral("given up")))),
              ReminderStoreError::Case::TimedOut);
    const qsizetype waiting = threadCount();
    desktop.signal(SIGCONT);
    EXPECT_TRUE(eventually([=] { return threadCount() < waiting; })) << "it has done what it had to do";
    EXPECT_EQ(testing::TaskDesktop::ask(QStringLiteral("list")).array().size(), 0);
}

TEST_F(DesktopRemindersTest, ThatTheServiceHasGoneIsARestrictionUntilAccessIsAskedForAgain)
{
    ASSERT_TRUE(desktop.start());
    const auto reminders = store();
    EXPECT_TRUE(await(reminders->requestFullAccess()));
    const std::optional<QString> list = await(reminders->defaultList());
    ASSERT_TRUE(list);
    desktop.endBus();
    EXPECT_EQ(await(reminders->authorizationStatus()), ReminderAuthorization::Restricted);
    EXPECT_EQ(failureOf(reminders->defaultList()), ReminderStoreError::Case::Unavailable);
    EXPECT_EQ(failureOf(reminders->save(reminder(*list, QStringLiteral("a")))),
              ReminderStoreError::Case::Unavailable);
    EXPECT_TRUE(await(reminders->requestFullAccess()));
    EXPECT_EQ(await(reminders->defaultList()), folder()) << "we are alive, and so are reminders";
}

} // namespace
} // namespace tessary
