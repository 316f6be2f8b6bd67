#include "tests/session/SessionTest.h"
#include "tests/session/SmallDisk.h"
#include "tests/session/TestPictures.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <csignal>

namespace tessary::testing {

namespace {

/// What the program's verbs do, as a script uses them.
class VerbsTest : public SessionTest {
protected:
    struct Said {
        std::optional<int> status;
        QString text;

        [[nodiscard]] QStringList lines() const { return text.split(u'\n', Qt::SkipEmptyParts); }
    };

    /// Both outputs as one text.
    [[nodiscard]] Said ask(const QStringList& arguments)
    {
        const auto asked = run(arguments);
        const std::optional<int> status = asked->exitCode();
        return {status, asked->output()};
    }
    [[nodiscard]] Said shell(const QString& script)
    {
        ChildProcess shell(
            QStringLiteral("sh"),
            {QStringLiteral("-c"), script, QStringLiteral("sh"), QStringLiteral(TESSARY_PROGRAM)},
            environment());
        const std::optional<int> status = shell.exitCode();
        return {status, shell.output()};
    }
    void expectDone(const QStringList& arguments)
    {
        const Said said = ask(arguments);
        EXPECT_EQ(said.status, 0) << qPrintable(arguments.join(u' ')) << ": " << qPrintable(said.text);
    }
    /// A complaint of one line, and that status.
    void expectRefused(int status, const QStringList& arguments)
    {
        const Said said = ask(arguments);
        EXPECT_EQ(said.status, status) << qPrintable(arguments.join(u' '));
        EXPECT_EQ(said.lines().size(), 1) << qPrintable(said.text);
        EXPECT_TRUE(said.text.startsWith(QStringLiteral("tessary: "))) << qPrintable(said.text);
    }
    [[nodiscard]] QString idOf(const QString& query)
    {
        return ask({QStringLiteral("search"), query}).text.section(u'\t', 0, 0);
    }
    [[nodiscard]] QString writePng(const QString& name, int seed)
    {
        const QString path = scratch(name);
        writeFile(path, pngOf(picture(40 + seed, 30, seed)));
        return path;
    }
    /// The process that has the program's name on the bus; 0 when there is none.
    [[nodiscard]] qint64 processOnTheBus()
    {
        ChildProcess question(QStringLiteral("dbus-send"),
                              {QStringLiteral("--session"), QStringLiteral("--print-reply=literal"),
                               QStringLiteral("--dest=org.freedesktop.DBus"), QStringLiteral("/"),
                               QStringLiteral("org.freedesktop.DBus.GetConnectionUnixProcessID"),
                               QStringLiteral("string:com.tessary.Tessary")});
        if (question.exitCode() != 0)
            return 0;
        return question.output().simplified().section(u' ', -1).toLongLong();
    }
    /// Ends a program that a verb has started.
    void TearDown() override
    {
        SessionTest::TearDown();
        if (const qint64 process = processOnTheBus(); process > 0) {
            ::kill(static_cast<pid_t>(process), SIGTERM);
            EXPECT_TRUE(eventually([&] { return processOnTheBus() == 0; }));
        }
        m_disk.reset();
    }

    std::optional<SmallDisk> m_disk{std::in_place};
};

TEST_F(VerbsTest, AVerbStartsTheProgramAndIsNotHeldUpByIt)
{
    // The shell waits until nobody holds the pipe any more.
    const Said said = shell(QStringLiteral("x=$(\"$1\" search; echo \"status $?\"); echo \"$x\""));
    EXPECT_EQ(said.status, 0);
    EXPECT_EQ(said.text, QStringLiteral("status 0\n"));
    const qint64 process = processOnTheBus();
    EXPECT_GT(process, 0);
    expectDone({QStringLiteral("status")});
    EXPECT_EQ(processOnTheBus(), process);
}

TEST_F(VerbsTest, SeveralVerbsAtOnceStartOneProgram)
{
    const auto first = run({QStringLiteral("pause")});
    const auto second = run({QStringLiteral("pause")});
    const auto third = run({QStringLiteral("pause")});
    EXPECT_EQ(first->exitCode(), 0);
    EXPECT_EQ(second->exitCode(), 0);
    EXPECT_EQ(third->exitCode(), 0);
    EXPECT_TRUE(ask({QStringLiteral("status")}).text.contains(QStringLiteral("monitoring\tno")));
}

TEST_F(VerbsTest, FindsWhatWasCopiedAndHandsItOut)
{
    start();
    copyText(QStringLiteral("会议记录\nsecond line"));
    ASSERT_TRUE(holds(1));
    const Said found = ask({QStringLiteral("search"), QStringLiteral("huiyi")});
    ASSERT_EQ(found.lines().size(), 1) << qPrintable(found.text);
    const QStringList fields = found.lines().first().split(u'\t');
    ASSERT_EQ(fields.size(), 5);
    EXPECT_EQ(fields.at(2), QStringLiteral("text"));
    EXPECT_EQ(fields.at(4), QStringLiteral("会议记录"));
    EXPECT_EQ(ask({QStringLiteral("show"), fields.first()}).text, QStringLiteral("会议记录\nsecond line"));
    const auto json =
        QJsonDocument::fromJson(ask({QStringLiteral("search"), QStringLiteral("--json")}).text.toUtf8());
    ASSERT_EQ(json.array().size(), 1);
    EXPECT_EQ(json.array().first().toObject().size(), 28);
    const QString missing = QStringLiteral("00000000-0000-4000-8000-000000000000");
    expectRefused(3, {QStringLiteral("show"), missing});
    expectRefused(3, {QStringLiteral("pin"), missing});
    EXPECT_EQ(ask({QStringLiteral("search"), QStringLiteral("nothing like it")}).text, QString());
}

TEST_F(VerbsTest, CopiesAnItemForOtherPrograms)
{
    start();
    copyText(QStringLiteral("first"));
    ASSERT_TRUE(holdsText(QStringLiteral("first")));
    copyText(QStringLiteral("second"));
    ASSERT_TRUE(holdsText(QStringLiteral("second")));
    expectDone({QStringLiteral("copy"), idOf(QStringLiteral("first"))});
    ChildProcess reader(QStringLiteral("xclip"),
                        {QStringLiteral("-selection"), QStringLiteral("clipboard"), QStringLiteral("-o")});
    EXPECT_EQ(reader.exitCode(), 0);
    EXPECT_EQ(reader.output(), QStringLiteral("first"));
}

TEST_F(VerbsTest, EditsItems)
{
    start();
    copyText(QStringLiteral("edited"));
    ASSERT_TRUE(holds(1));
    const QString id = idOf(QStringLiteral("edited"));
    expectDone({QStringLiteral("tag"), id.toLower(), QStringLiteral(" work "), QStringLiteral("工作"),
                QStringLiteral("work")});
    expectDone({QStringLiteral("note"), id, QStringLiteral("--"), QStringLiteral("-5 degrees")});
    expectDone({QStringLiteral("favorite"), id});
    expectDone({QStringLiteral("pin"), id});
    const QJsonObject item =
        QJsonDocument::fromJson(ask({QStringLiteral("show"), QStringLiteral("--json"), id}).text.toUtf8())
            .object();
    EXPECT_EQ(item.value(QStringLiteral("tags")).toArray(),
              (QJsonArray{QStringLiteral("work"), QStringLiteral("工作")}));
    EXPECT_EQ(item.value(QStringLiteral("note")).toString(), QStringLiteral("-5 degrees"));
    EXPECT_TRUE(library().items().front().isFavorite && library().items().front().isPinned);
    expectDone({QStringLiteral("unfavorite"), id});
    expectDone({QStringLiteral("unpin"), id});
    expectDone({QStringLiteral("trash"), id});
    const LibraryItem row = library().items().front();
    EXPECT_FALSE(row.isFavorite || row.isPinned);
    EXPECT_TRUE(row.isDeleted);
    EXPECT_EQ(ask({QStringLiteral("search")}).text, QString());
    EXPECT_EQ(ask({QStringLiteral("purge")}).text,
              QStringLiteral("removed\t0\n")); // not there for long enough
    EXPECT_EQ(ask({QStringLiteral("purge"), QStringLiteral("--all")}).text, QStringLiteral("removed\t1\n"));
    EXPECT_TRUE(library().items().empty());
}

TEST_F(VerbsTest, ImportsFilesUnderAnyName)
{
    start();
    const QString plain = writePng(QStringLiteral("anything.png"), 1);
    const Said added = ask({QStringLiteral("import"), plain});
    EXPECT_EQ(added.status, 0) << qPrintable(added.text);
    EXPECT_TRUE(added.text.startsWith(QStringLiteral("added\t"))) << qPrintable(added.text);
    const QString id = added.text.section(u'\t', 1, 1);
    EXPECT_EQ(library().pictures().front().id, id);
    const Said again = ask({QStringLiteral("import"), plain});
    EXPECT_TRUE(again.text.startsWith(QStringLiteral("known\t") + id)) << qPrintable(again.text);
    const QString out = scratch(QStringLiteral("out.png"));
    expectDone({QStringLiteral("show"), id, QStringLiteral("--output"), out});
    EXPECT_EQ(readFile(out), readFile(plain));
    (void)writePng(QStringLiteral("two.png"), 2);
    const Said odd = shell(
        QStringLiteral("cd '%1' && mv two.png \"$(printf 'b\\377\\n\\033.PNG')\" && \"$1\" import b*.PNG")
            .arg(scratch(QString())));
    EXPECT_EQ(odd.status, 0) << qPrintable(odd.text);
    EXPECT_EQ(odd.lines().size(), 1) << qPrintable(odd.text);
    EXPECT_EQ(library().pictures().size(), 2U);
    writeFile(scratch(QStringLiteral("note.txt")), "text");
    expectRefused(1, {QStringLiteral("import"), scratch(QStringLiteral("note.txt"))});
    expectRefused(1, {QStringLiteral("import"), scratch(QStringLiteral("missing.png"))});
    writeFile(scratch(QStringLiteral("broken.png")), "no picture");
    expectRefused(1, {QStringLiteral("import"), scratch(QStringLiteral("broken.png"))});
}

TEST_F(VerbsTest, AnExportRestoredElsewhereIsTheSameExportAgain)
{
    start();
    copyText(QStringLiteral("text\tto keep"));
    ASSERT_TRUE(holds(1));
    copyPng(writePng(QStringLiteral("copied.png"), 3));
    ASSERT_TRUE(holds(2));
    expectDone({QStringLiteral("import"), writePng(QStringLiteral("named.png"), 4)});
    expectDone({QStringLiteral("tag"), idOf(QStringLiteral("keep")), QStringLiteral("kept")});
    const QString first = scratch(QStringLiteral("first"));
    const QString second = scratch(QStringLiteral("second"));
    expectDone({QStringLiteral("export"), first});
    quit();
    ASSERT_TRUE(QDir(root()).removeRecursively());
    start();
    // Two at once: together they bring each item once.
    const auto one = run({QStringLiteral("restore"), first});
    const auto two = run({QStringLiteral("restore"), first});
    EXPECT_EQ(one->exitCode(), 0) << qPrintable(one->output());
    EXPECT_EQ(two->exitCode(), 0) << qPrintable(two->output());
    EXPECT_TRUE((one->output() + two->output()).contains(QStringLiteral("added\t3")));
    EXPECT_TRUE((one->output() + two->output()).contains(QStringLiteral("repeated\t3")));
    expectDone({QStringLiteral("export"), second});
    const Said difference = shell(QStringLiteral("diff -r '%1' '%2'").arg(first, second));
    EXPECT_EQ(difference.status, 0) << qPrintable(difference.text);
    expectRefused(1, {QStringLiteral("export"), second}); // not empty
    expectRefused(1, {QStringLiteral("restore"), scratch(QStringLiteral("config"))});
    EXPECT_EQ(library().recordIds(), library().projectionIds());
}

TEST_F(VerbsTest, AFullDiskEndsAnExportWithoutLeavings)
{
    const QString disk = scratch(QStringLiteral("disk"));
    QDir().mkpath(disk);
    if (!m_disk->mount(disk, "size=256k"))
        GTEST_SKIP() << "no disk of a chosen size can be mounted here";
    start();
    const QString big = scratch(QStringLiteral("big.bmp.png"));
    writeFile(big, pngOf(picture(900, 700, 5)) + QByteArray(400'000, 'x'));
    expectDone({QStringLiteral("import"), big});
    expectRefused(1, {QStringLiteral("export"), disk + QStringLiteral("/export")});
    EXPECT_TRUE(QDir(disk).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
}

TEST_F(VerbsTest, WatchPrintsALineForEachChange)
{
    start();
    const auto watch = run({QStringLiteral("watch")});
    copyText(QStringLiteral("watched"));
    ASSERT_TRUE(holds(1));
    const QString id = library().items().front().id;
    // It may have begun to listen after the copy; an edit comes as often as need be.
    ASSERT_TRUE(eventually([&] {
        expectDone({QStringLiteral("pin"), id});
        expectDone({QStringLiteral("unpin"), id});
        return watch->output().contains(QStringLiteral("\tedited\t") + id);
    }));
    const QStringList lines = watch->output().split(u'\n', Qt::SkipEmptyParts);
    for (const QString& line : lines)
        EXPECT_GE(line.split(u'\t').size(), 2) << qPrintable(line);
    EXPECT_FALSE(watch->output().contains(QStringLiteral("watched")));
    quit();
    EXPECT_EQ(watch->exitCode(), 1); // there is nothing to watch any more
}

TEST_F(VerbsTest, RecognisesTheTextInAPicture)
{
    const QString page = scratch(QStringLiteral("a page.png"));
    const Said drawn =
        shell(QStringLiteral("convert -background white -fill black -pointsize 18 "
                             "-font /usr/share/fonts-droid-fallback/truetype/DroidSansFallback.ttf "
                             "label:'会议改到周五下午' -font DejaVu-Sans label:'meeting on Friday' "
                             "-append -bordercolor white -border 12x12 '%1'")
                  .arg(page));
    ASSERT_EQ(drawn.status, 0) << qPrintable(drawn.text);
    start();
    const QString text = QStringLiteral("会议改到周五下午\nmeeting on Friday");
    EXPECT_EQ(ask({QStringLiteral("recognize"), page}).text, text + QLatin1Char('\n'));
    const Said said =
        ask({QStringLiteral("recognize"), QStringLiteral("--fast"), QStringLiteral("--json"), page});
    EXPECT_EQ(said.status, 0);
    const QJsonObject result = QJsonDocument::fromJson(said.text.toUtf8()).object();
    EXPECT_EQ(result.value(QStringLiteral("text")).toString(), text);
    EXPECT_GT(result.value(QStringLiteral("width")).toInt(), 100);
    const QJsonArray lines = result.value(QStringLiteral("lines")).toArray();
    ASSERT_EQ(lines.size(), 2);
    EXPECT_LT(lines.at(0)[QStringLiteral("y")].toInt(), lines.at(1)[QStringLiteral("y")].toInt());
    EXPECT_EQ(library().items().size(), 0); // nothing is copied or kept

    QImage blank(200, 100, QImage::Format_RGB32);
    blank.fill(Qt::white);
    writeFile(scratch(QStringLiteral("blank.png")), pngOf(blank));
    expectRefused(1, {QStringLiteral("recognize"), scratch(QStringLiteral("blank.png"))});
    expectRefused(1, {QStringLiteral("recognize"), scratch(QStringLiteral("none.png"))});
    writeFile(scratch(QStringLiteral("text.png")), QByteArrayLiteral("no picture"));
    expectRefused(1, {QStringLiteral("recognize"), scratch(QStringLiteral("text.png"))});
    expectRefused(2, {QStringLiteral("recognize"), page, page});
}

TEST_F(VerbsTest, WithoutABusOrADisplayItSaysSoInOneLine)
{
    const QString bus = environment().value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"));
    environment().insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("unix:path=/nowhere"));
    expectRefused(1, {QStringLiteral("status")});
    environment().insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), bus);
    environment().remove(QStringLiteral("DISPLAY"));
    expectRefused(1, {QStringLiteral("status")});
    environment().insert(QStringLiteral("DISPLAY"), QStringLiteral(":9999"));
    expectRefused(1, {QStringLiteral("status")});
    EXPECT_EQ(ask({QStringLiteral("search"), QStringLiteral("--help")}).status, 0);
    expectRefused(2, {QStringLiteral("search"), QStringLiteral("--limit")});
}

} // namespace

} // namespace tessary::testing
