#include "platform/reminders/FolderReminders.h"

#include "tests/session/SmallDisk.h"
#include "tests/support/Await.h"
#include "tests/support/HungFolder.h"
#include "tests/support/TemporaryFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTimeZone>

#include <sys/stat.h>

namespace tessary {
namespace {

using namespace std::chrono_literals;
using testing::await;
using testing::eventually;

/// For as long as it lives this process may only what others may.
class Nobody {
public:
    Nobody() : m_isNobody(::geteuid() == 0 && ::seteuid(kNobody) == 0) {}
    ~Nobody() { EXPECT_TRUE(!m_isNobody || ::seteuid(0) == 0); }
    Nobody(const Nobody&) = delete;
    Nobody& operator=(const Nobody&) = delete;

private:
    static constexpr uid_t kNobody = 65534;
    bool m_isNobody;
};

class FolderRemindersTest : public ::testing::Test {
protected:
    [[nodiscard]] QString data() const { return m_folder.file(QStringLiteral("data")); }
    [[nodiscard]] QString path() const { return data() + QStringLiteral("/Tessary/Reminders"); }
    [[nodiscard]] QStringList tasks() const
    {
        return QDir(path()).entryList({QStringLiteral("*.ics")}, QDir::Files | QDir::Hidden);
    }
    /// Everything but the description of the list.
    [[nodiscard]] QStringList contents() const
    {
        QStringList all =
            QDir(path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
        all.removeOne(QStringLiteral("displayname"));
        all.removeOne(QStringLiteral("color"));
        return all;
    }
    [[nodiscard]] NewReminder reminder(const QString& title) const
    {
        return {.list = path(), .title = title, .notes = title, .due = std::nullopt};
    }
    static std::optional<ReminderStoreError::Case> failureOf(QCoro::Task<> task)
    {
        try {
            await(std::move(task));
        } catch (const ReminderStoreError& error) {
            return error.which();
        }
        return std::nullopt;
    }
    static mode_t modeOf(const QString& file)
    {
        struct stat facts {};
        EXPECT_EQ(::stat(QFile::encodeName(file).constData(), &facts), 0);
        return facts.st_mode & 07777;
    }
    void allow(mode_t mode) const
    {
        EXPECT_EQ(::chmod(QFile::encodeName(path()).constData(), mode), 0);
        // Whoever is not root has to get there first.
        EXPECT_EQ(::chmod(QFile::encodeName(m_folder.path()).constData(), 0755), 0);
        EXPECT_EQ(::chmod(QFile::encodeName(data()).constData(), 0755), 0);
        EXPECT_EQ(::chmod(QFile::encodeName(QFileInfo(path()).path()).constData(), 0755), 0);
    }

    testing::TemporaryFolder m_folder;
    FolderReminders m_store{path(), 8s};
};

TEST_F(FolderRemindersTest, TheFolderIsMadeWhenItIsFirstAskedFor)
{
    EXPECT_EQ(await(m_store.authorizationStatus()), ReminderAuthorization::NotDetermined);
    EXPECT_EQ(await(m_store.defaultList()), std::nullopt);
    EXPECT_FALSE(QFile::exists(path())) << "looking leaves no traces";
    EXPECT_TRUE(await(m_store.requestFullAccess()));
    EXPECT_EQ(await(m_store.authorizationStatus()), ReminderAuthorization::FullAccess);
    EXPECT_EQ(await(m_store.defaultList()), path());
    EXPECT_EQ(modeOf(path()), 0700U);
    EXPECT_EQ(modeOf(data()), 0700U);
    FolderReminders later(path(), 8s);
    EXPECT_EQ(await(later.authorizationStatus()), ReminderAuthorization::FullAccess) << "it is remembered";
}

TEST_F(FolderRemindersTest, AReminderIsOneFileCalledAfterItsId)
{
    await(m_store.requestFullAccess());
    await(m_store.save(reminder(QStringLiteral("甲"))));
    await(m_store.save(reminder(QStringLiteral("甲"))));
    ASSERT_EQ(tasks().size(), 2);
    EXPECT_EQ(contents().size(), 2) << "no temporaries";
    for (const QString& name : tasks()) {
        QFile file(path() + QLatin1Char('/') + name);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray text = file.readAll();
        EXPECT_TRUE(text.contains("\r\nUID:" + name.chopped(4).toUtf8() + "\r\n"));
        EXPECT_TRUE(text.contains("\r\nSUMMARY:甲\r\n"));
        EXPECT_EQ(modeOf(file.fileName()), 0600U);
    }
}

TEST_F(FolderRemindersTest, WhatThePersonMadeOfTheListStays)
{
    await(m_store.requestFullAccess());
    QFile name(path() + QStringLiteral("/displayname"));
    ASSERT_TRUE(name.open(QIODevice::ReadWrite));
    EXPECT_EQ(name.readAll(), "Tessary");
    name.write("!");
    name.close();
    await(m_store.requestFullAccess());
    ASSERT_TRUE(name.open(QIODevice::ReadOnly));
    EXPECT_EQ(name.readAll(), "Tessary!");
}

TEST_F(FolderRemindersTest, WithoutAHomeThereIsNoPlace)
{
    FolderReminders nowhere(QString(), 8s);
    EXPECT_EQ(await(nowhere.authorizationStatus()), ReminderAuthorization::Restricted);
    EXPECT_FALSE(await(nowhere.requestFullAccess()));
    EXPECT_EQ(await(nowhere.defaultList()), std::nullopt);
}

TEST_F(FolderRemindersTest, AFolderThatMayNotBeWrittenIsDenied)
{
    await(m_store.requestFullAccess());
    allow(0555);
    const Nobody nobody;
    EXPECT_EQ(await(m_store.authorizationStatus()), ReminderAuthorization::Denied);
    EXPECT_FALSE(await(m_store.requestFullAccess()));
    EXPECT_EQ(await(m_store.defaultList()), std::nullopt);
    EXPECT_EQ(failureOf(m_store.save(reminder(QStringLiteral("a")))), ReminderStoreError::Case::WriteFailed);
    EXPECT_EQ(contents(), QStringList());
}

TEST_F(FolderRemindersTest, WhereTheFolderMayNotBeMadeAccessIsRefused)
{
    ASSERT_TRUE(QDir().mkpath(data()));
    EXPECT_EQ(::chmod(QFile::encodeName(data()).constData(), 0555), 0);
    EXPECT_EQ(::chmod(QFile::encodeName(m_folder.path()).constData(), 0755), 0);
    const Nobody nobody;
    EXPECT_FALSE(await(m_store.requestFullAccess()));
}

TEST_F(FolderRemindersTest, AFolderThatCannotBeReadTakesRemindersAllTheSame)
{
    await(m_store.requestFullAccess());
    allow(0333);
    {
        const Nobody nobody;
        EXPECT_EQ(await(m_store.authorizationStatus()), ReminderAuthorization::WriteOnly);
        EXPECT_EQ(await(m_store.defaultList()), path());
        await(m_store.save(reminder(QStringLiteral("a"))));
    }
    EXPECT_EQ(tasks().size(), 1);
}

TEST_F(FolderRemindersTest, AFileInItsPlaceIsNoList)
{
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path()).path()));
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_TRUE(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    EXPECT_EQ(await(m_store.authorizationStatus()), ReminderAuthorization::Restricted);
    EXPECT_EQ(await(m_store.defaultList()), std::nullopt);
}

TEST_F(FolderRemindersTest, AFolderThatWasRemovedFailsTheReminder)
{
    await(m_store.requestFullAccess());
    ASSERT_TRUE(QDir(path()).removeRecursively());
    EXPECT_EQ(failureOf(m_store.save(reminder(QStringLiteral("a")))), ReminderStoreError::Case::WriteFailed);
    EXPECT_FALSE(QFile::exists(path()));
}

TEST_F(FolderRemindersTest, AFullDiskFailsTheReminderAndNothingOfItStays)
{
    ASSERT_TRUE(QDir().mkpath(data()));
    testing::SmallDisk disk;
    if (!disk.mount(data(), "size=64k"))
        GTEST_SKIP() << "no disk can be mounted here";
    await(m_store.requestFullAccess());
    QFile filler(data() + QStringLiteral("/filler"));
    ASSERT_TRUE(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    while (filler.write(QByteArray(4096, 'x')) > 0) {
    }
    EXPECT_EQ(failureOf(m_store.save(reminder(QStringLiteral("a")))), ReminderStoreError::Case::WriteFailed);
    EXPECT_EQ(contents(), QStringList());
    filler.remove();
    await(m_store.save(reminder(QStringLiteral("a"))));
    EXPECT_EQ(tasks().size(), 1) << "there is room again";
}

TEST_F(FolderRemindersTest, AReadOnlyDiskIsARestriction)
{
    ASSERT_TRUE(QDir().mkpath(data()));
    testing::SmallDisk disk;
    if (!disk.mount(data(), "size=64k"))
        GTEST_SKIP() << "no disk can be mounted here";
    await(m_store.requestFullAccess());
    ASSERT_EQ(
        ::mount("none", QFile::encodeName(data()).constData(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr), 0);
    EXPECT_EQ(await(m_store.authorizationStatus()), ReminderAuthorization::Restricted);
    EXPECT_FALSE(await(m_store.requestFullAccess()));
    EXPECT_EQ(failureOf(m_store.save(reminder(QStringLiteral("a")))), ReminderStoreError::Case::WriteFailed);
    EXPECT_EQ(contents(), QStringList());
}

TEST_F(FolderRemindersTest, AFileSystemThatHangsIsGivenUpAndAskedAgain)
{
    ASSERT_TRUE(QDir().mkpath(data()));
    FolderReminders store(path(), 100ms);
    {
        const testing::HungFolder hung(data());
        if (!hung.isHanging())
            GTEST_SKIP() << "no file system that hangs can be mounted here: " << qPrintable(hung.reason());
        EXPECT_EQ(failureOf(store.save(reminder(QStringLiteral("a")))), ReminderStoreError::Case::TimedOut);
        EXPECT_THROW(await(store.authorizationStatus()), ReminderStoreError);
    }
    FolderReminders patient(path(), 8s);
    EXPECT_TRUE(await(patient.requestFullAccess()));
    EXPECT_EQ(contents(), QStringList()) << "what was given up is not done later";
}

TEST_F(FolderRemindersTest, AnotherProgramListsThem)
{
    await(m_store.requestFullAccess());
    NewReminder dated = reminder(QStringLiteral("周三, 交报告；给「张三」"));
    dated.notes = QStringLiteral("周三, 交报告；给「张三」\n第二行; 第三列");
    dated.due = ReminderDateComponents{.year = 2031, .month = 3, .day = 5, .hour = 18, .minute = 30};
    await(m_store.save(dated));
    await(m_store.save(reminder(QStringLiteral("b"))));

    QFile configuration(m_folder.file(QStringLiteral("config.py")));
    ASSERT_TRUE(configuration.open(QIODevice::WriteOnly));
    configuration.write("path = \"" + path().toUtf8() + "\"\ncache_path = \"" +
                        m_folder.file(QStringLiteral("cache.sqlite3")).toUtf8() + "\"\n");
    configuration.close();
    QProcess todoman;
    todoman.start(QStringLiteral("todoman"), {QStringLiteral("--porcelain"), QStringLiteral("--config"),
                                              configuration.fileName(), QStringLiteral("list")});
    ASSERT_TRUE(todoman.waitForFinished(30'000)) << qPrintable(todoman.errorString());
    ASSERT_EQ(todoman.exitCode(), 0) << todoman.readAllStandardError().constData();
    const QJsonArray listed = QJsonDocument::fromJson(todoman.readAllStandardOutput()).array();
    ASSERT_EQ(listed.size(), 2);
    const auto find = [&](const QString& title) {
        const auto found = std::find_if(listed.begin(), listed.end(), [&](const QJsonValue& task) {
            return task.toObject().value(QLatin1String("summary")).toString() == title;
        });
        return found == listed.end() ? QJsonObject() : (*found).toObject();
    };
    const QJsonObject task = find(dated.title);
    EXPECT_EQ(task.value(QLatin1String("list")).toString(), QStringLiteral("Tessary"));
    EXPECT_EQ(task.value(QLatin1String("description")).toString(), dated.notes);
    const QDateTime due(QDate(2031, 3, 5), QTime(18, 30));
    EXPECT_EQ(task.value(QLatin1String("due")).toDouble(), static_cast<double>(due.toSecsSinceEpoch()));
    EXPECT_TRUE(find(QStringLiteral("b")).value(QLatin1String("due")).isNull());
}

} // namespace
} // namespace tessary
