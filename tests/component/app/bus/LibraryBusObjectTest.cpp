#include "app/bus/LibraryBusObject.h"

#include "app/AppRuntime.h"
#include "app/ApplicationIdentity.h"
#include "app/bus/BusError.h"
#include "app/commandline/HandedInFile.h"
#include "tests/support/Await.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/FakeWindows.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/RecordSamples.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QFile>
#include <QJsonDocument>

namespace tessary {
namespace {

using namespace std::chrono_literals;
using testing::await;
using testing::eventually;
using testing::textRecord;

/// The object on a bus of its own, and another program that calls it.
class LibraryBusObjectTest : public ::testing::Test, protected testing::FakePlatform {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_bus.start());
        QDBusConnection served = QDBusConnection::connectToBus(m_bus.address(), QStringLiteral("served"));
        ASSERT_TRUE(served.registerObject(busObjectPath(), &object, QDBusConnection::ExportAdaptors));
        m_service = served.baseService();
        m_caller = QDBusConnection::connectToBus(m_bus.address(), QStringLiteral("caller"));
        object.attach(runtime);
    }
    ~LibraryBusObjectTest() override
    {
        object.detach();
        await(runtime.shutDown());
        QDBusConnection::disconnectFromBus(QStringLiteral("served"));
        QDBusConnection::disconnectFromBus(QStringLiteral("caller"));
    }
    void start() { await(runtime.start()); }
    [[nodiscard]] QDBusPendingCall begin(const QString& method, const QVariantList& arguments = {})
    {
        QDBusMessage message =
            QDBusMessage::createMethodCall(m_service, busObjectPath(), busInterface(), method);
        message.setArguments(arguments);
        return m_caller.asyncCall(message);
    }
    [[nodiscard]] QDBusMessage call(const QString& method, const QVariantList& arguments = {})
    {
        const QDBusPendingCall pending = begin(method, arguments);
        EXPECT_TRUE(eventually([&] { return pending.isFinished(); })) << qPrintable(method);
        return pending.reply();
    }
    [[nodiscard]] QString refusal(const QString& method, const QVariantList& arguments)
    {
        return call(method, arguments).errorName();
    }
    ScreenshotRecord add(const ScreenshotRecord& record)
    {
        EXPECT_TRUE(await(runtime.store()->insert(record)));
        return record;
    }
    [[nodiscard]] static QByteArray bytes(const QDBusMessage& answer, int index)
    {
        return HandedInFile(answer.arguments().value(index).value<QDBusUnixFileDescriptor>()).bytes();
    }
    [[nodiscard]] QDBusMessage search(const QString& query, const QVariantMap& options)
    {
        return call(QStringLiteral("Search"), {query, options});
    }

private:
    testing::PrivateBus m_bus;
    QString m_service;
    QDBusConnection m_caller{QString()};

protected:
    testing::FakeWindows windows;
    AppRuntime runtime{platform, windows};
    LibraryBusObject object;
};

TEST_F(LibraryBusObjectTest, AnswersOnceTheLibraryIsOpen)
{
    const QDBusPendingCall early = begin(QStringLiteral("Status"));
    const QDBusPendingCall paused = begin(QStringLiteral("Pause"));
    start();
    ASSERT_TRUE(eventually([&] { return early.isFinished() && paused.isFinished(); }));
    EXPECT_FALSE(early.isError());
    EXPECT_FALSE(runtime.isMonitoring()); // and was not undone by the start
}

TEST_F(LibraryBusObjectTest, PausesAndResumesHoweverOften)
{
    start();
    for (const bool wanted : {false, false, true, true}) {
        (void)call(wanted ? QStringLiteral("Resume") : QStringLiteral("Pause"));
        EXPECT_EQ(runtime.isMonitoring(), wanted);
        const auto status = qdbus_cast<QVariantMap>(call(QStringLiteral("Status")).arguments().constFirst());
        EXPECT_EQ(status.value(QStringLiteral("monitoring")).toBool(), wanted);
    }
}

TEST_F(LibraryBusObjectTest, ShowsAndHidesWindows)
{
    start();
    (void)call(QStringLiteral("TogglePanel"));
    EXPECT_TRUE(windows.isVisible);
    (void)call(QStringLiteral("TogglePanel"));
    EXPECT_FALSE(windows.isVisible);
    (void)call(QStringLiteral("ShowPanel"));
    EXPECT_TRUE(windows.isVisible);
    (void)call(QStringLiteral("ShowSettings"));
    EXPECT_EQ(windows.settingsShown, 1);
}

TEST_F(LibraryBusObjectTest, ListsItemsWithEveryField)
{
    start();
    ScreenshotRecord record = testing::fullRecord();
    record.isDeleted = false;
    record.deletedAt.reset();
    add(record);
    const QDBusMessage answer = search(QString(), {});
    ASSERT_EQ(answer.arguments().size(), 3);
    EXPECT_EQ(answer.arguments().at(1).toInt(), 1);
    EXPECT_FALSE(answer.arguments().at(2).toBool());
    const QJsonObject listed = QJsonDocument::fromJson(bytes(answer, 0)).object();
    EXPECT_EQ(listed.size(), 28);
    EXPECT_TRUE(listed.value(QStringLiteral("deletedAt")).isNull());
    EXPECT_EQ(decodeRecord(listed), record);
}

TEST_F(LibraryBusObjectTest, CutsALongListAndSaysThatThereIsMore)
{
    start();
    for (int i = 0; i < 503; ++i)
        add(textRecord(QString::number(i), i));
    const QVariantMap many{{QStringLiteral("limit"), 1000u}};
    const QDBusMessage first = search(QString(), many);
    EXPECT_EQ(first.arguments().at(1).toInt(), 500);
    EXPECT_TRUE(first.arguments().at(2).toBool());
    const QDBusMessage second =
        search(QString(), {{QStringLiteral("limit"), 500u}, {QStringLiteral("offset"), 500u}});
    EXPECT_EQ(second.arguments().at(1).toInt(), 3);
    EXPECT_FALSE(second.arguments().at(2).toBool());
    EXPECT_EQ(search(QString(), {{QStringLiteral("limit"), 0u}}).arguments().at(1).toInt(), 0);
}

TEST_F(LibraryBusObjectTest, HugeTextsComeWholeAFewAtATime)
{
    start();
    for (int i = 0; i < 4; ++i)
        add(textRecord(QString(6'000'000, u'a') + QString::number(i), i));
    const QDBusMessage answer = search(QString(), {});
    const int count = answer.arguments().at(1).toInt();
    EXPECT_EQ(count, 3); // over 16 MiB with the third
    EXPECT_TRUE(answer.arguments().at(2).toBool());
    for (const QByteArray& line : bytes(answer, 0).trimmed().split('\n'))
        EXPECT_GT(line.size(), 6'000'000);
    const QDBusMessage cut = search(QString(), {{QStringLiteral("maximumTextLength"), 10u}});
    EXPECT_EQ(cut.arguments().at(1).toInt(), 4);
    EXPECT_LT(bytes(cut, 0).size(), 10'000);
}

TEST_F(LibraryBusObjectTest, RefusesWhatMakesNoSense)
{
    start();
    const QString invalid = BusError::name(BusError::Case::InvalidArgument);
    const QString notFound = BusError::name(BusError::Case::NotFound);
    const QList<QVariantMap> wrong{{{QStringLiteral("scope"), QStringLiteral("everything")}},
                                   {{QStringLiteral("sort"), QStringLiteral("")}},
                                   {{QStringLiteral("limit"), -1}},
                                   {{QStringLiteral("offset"), QStringLiteral("x")}}};
    for (const QVariantMap& options : wrong)
        EXPECT_EQ(refusal(QStringLiteral("Search"), {QString(), options}), invalid);
    EXPECT_EQ(refusal(QStringLiteral("Import"), {QByteArray("relative.png")}), invalid);
    for (const QString& id : {QString(), QStringLiteral("no id"), QUuid::createUuid().toString()}) {
        EXPECT_EQ(refusal(QStringLiteral("Content"), {id}), notFound);
        EXPECT_EQ(refusal(QStringLiteral("SetNote"), {id, QStringLiteral("note")}), notFound);
        EXPECT_EQ(refusal(QStringLiteral("MoveToTrash"), {id}), notFound);
    }
}

TEST_F(LibraryBusObjectTest, HandsOutTextsAndPictures)
{
    start();
    const ScreenshotRecord text = add(textRecord(QStringLiteral("两行\ntext")));
    const QDBusMessage answer = call(QStringLiteral("Content"), {text.id.toString(QUuid::WithoutBraces)});
    EXPECT_EQ(answer.arguments().constFirst().toString(), QStringLiteral("text"));
    EXPECT_EQ(QString::fromUtf8(bytes(answer, 1)), text.textContent);
    ScreenshotRecord picture = testing::pictureRecord(5, 5);
    picture.libraryPath = folder.file(QStringLiteral("picture.png"));
    add(picture);
    EXPECT_EQ(refusal(QStringLiteral("Content"), {identifierText(picture.id)}),
              BusError::name(BusError::Case::Failed)); // its file is gone
    QFile file(picture.libraryPath);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("bytes");
    file.close();
    EXPECT_EQ(bytes(call(QStringLiteral("Content"), {identifierText(picture.id)}), 1), "bytes");
}

TEST_F(LibraryBusObjectTest, EditsItemsAndTellsOfEach)
{
    start();
    const ScreenshotRecord item = add(textRecord(QStringLiteral("item")));
    const QString id = identifierText(item.id);
    QStringList kinds;
    QObject::connect(&object, &LibraryBusObject::LibraryChanged, &object,
                     [&](const QString& kind, const QStringList& ids) {
                         kinds.append(kind);
                         EXPECT_EQ(ids, QStringList{id});
                     });
    const QStringList tags{QStringLiteral(" a "), QString(), QStringLiteral("b"), QStringLiteral("a")};
    // Neither undoes the other, though both are under way at once.
    const QDBusPendingCall tagged = begin(QStringLiteral("SetTags"), {id, tags});
    const QDBusPendingCall noted = begin(QStringLiteral("SetNote"), {id, QStringLiteral("note")});
    ASSERT_TRUE(eventually([&] { return tagged.isFinished() && noted.isFinished(); }));
    (void)call(QStringLiteral("SetFavorite"), {id, true});
    (void)call(QStringLiteral("SetFavorite"), {id, true});
    (void)call(QStringLiteral("SetPinned"), {id, true});
    (void)call(QStringLiteral("MoveToTrash"), {id});
    const auto trashedAt = await(runtime.store()->record(item.id))->deletedAt;
    clock.advance(5s);
    (void)call(QStringLiteral("MoveToTrash"), {id});
    const ScreenshotRecord edited = *await(runtime.store()->record(item.id));
    EXPECT_EQ(edited.tags, (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    EXPECT_EQ(edited.note, QStringLiteral("note"));
    EXPECT_TRUE(edited.isFavorite && edited.isPinned && edited.isDeleted);
    EXPECT_EQ(edited.deletedAt, trashedAt);
    EXPECT_EQ(kinds.join(u' '), QStringLiteral("edited edited edited edited trashed"));
}

TEST_F(LibraryBusObjectTest, CopiesAndSaysWhyItCouldNot)
{
    start();
    const QString id = identifierText(add(textRecord(QStringLiteral("to be copied"))).id);
    EXPECT_EQ(refusal(QStringLiteral("Copy"), {id}), QString());
    EXPECT_EQ(pasteboard.text(), QStringLiteral("to be copied"));
    permissions.setState({true, false, true});
    const QDBusMessage answer = call(QStringLiteral("Paste"), {id});
    EXPECT_EQ(answer.errorName(), BusError::name(BusError::Case::Failed));
    EXPECT_TRUE(answer.errorMessage().startsWith(QStringLiteral("内容已复制。")));
}

TEST_F(LibraryBusObjectTest, PurgesOnRequestAndCounts)
{
    start();
    ScreenshotRecord old = textRecord(QStringLiteral("old"));
    old.isDeleted = true;
    old.deletedAt = clock.now().addingSeconds(-40.0 * 86400);
    add(old);
    ScreenshotRecord recent = textRecord(QStringLiteral("recent"));
    recent.isDeleted = true;
    recent.deletedAt = clock.now();
    add(recent);
    const auto removed = [&](bool everything) {
        return call(QStringLiteral("PurgeTrash"), {everything}).arguments().value(0).toLongLong();
    };
    EXPECT_EQ(removed(false), 1);
    const auto usage = qdbus_cast<QVariantMap>(call(QStringLiteral("Usage")).arguments().constFirst());
    EXPECT_EQ(usage.value(QStringLiteral("trashed")).toLongLong(), 1);
    EXPECT_GT(usage.value(QStringLiteral("databaseBytes")).toLongLong(), 0);
    EXPECT_EQ(removed(true), 1);
    EXPECT_EQ(removed(true), 0);
}

TEST_F(LibraryBusObjectTest, RecognisesPicturesAndRegions)
{
    start();
    recognizer.observations = {{{QStringLiteral("一行"), QStringLiteral("二行")}, QRect(3, 4, 50, 20), 0.5},
                               {{}, QRect(0, 30, 9, 9), 0},
                               {{QStringLiteral("last")}, QRect(3, 40, 60, 20), 1}};
    QFile picture(folder.file(QStringLiteral("picture")));
    ASSERT_TRUE(picture.open(QIODevice::ReadWrite));
    const QVariant file = QVariant::fromValue(QDBusUnixFileDescriptor(picture.handle()));
    const QDBusMessage answer =
        call(QStringLiteral("RecognizePicture"), {file, QVariantMap{{QStringLiteral("fast"), true}}});
    const QByteArray expected(
        "{\"height\":3,\"lines\":["
        "{\"confidence\":0.5,\"height\":20,\"text\":\"一行\",\"width\":50,\"x\":3,\"y\":4},"
        "{\"confidence\":1,\"height\":20,\"text\":\"last\",\"width\":60,\"x\":3,\"y\":40}],"
        "\"text\":\"一行\\nlast\",\"width\":4}\n");
    EXPECT_EQ(bytes(answer, 0), expected);
    EXPECT_EQ(recognizer.requests.last().level, RecognitionLevel::Fast);
    EXPECT_TRUE(codec.requests.last().startsWith(QStringLiteral("decode /proc/")));

    // The screen may not be read here.
    const QDBusMessage region = call(QStringLiteral("RecognizeRegion"), {QVariantMap()});
    EXPECT_EQ(region.errorName(), BusError::name(BusError::Case::Failed));
    EXPECT_EQ(region.errorMessage(),
              QStringLiteral("未获得屏幕录制权限；本地 OCR 需要此权限，剪贴板记录仍可继续使用"));
}

TEST_F(LibraryBusObjectTest, SaysSoWhenThereIsNoLibrary)
{
    QFile::remove(folder.file(QStringLiteral("Tessary")));
    QFile inTheWay(folder.file(QStringLiteral("Tessary")));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    start();
    const QDBusMessage answer = search(QString(), {});
    EXPECT_EQ(answer.errorName(), BusError::name(BusError::Case::Failed));
    EXPECT_FALSE(answer.errorMessage().isEmpty());
    EXPECT_FALSE(call(QStringLiteral("Status")).arguments().isEmpty());
}

TEST_F(LibraryBusObjectTest, RefusesWhatComesWhileTheProgramEnds)
{
    start();
    object.detach();
    EXPECT_EQ(refusal(QStringLiteral("Status"), {}), BusError::name(BusError::Case::Failed));
    EXPECT_EQ(refusal(QStringLiteral("ShowPanel"), {}), BusError::name(BusError::Case::Failed));
}

} // namespace
} // namespace tessary
