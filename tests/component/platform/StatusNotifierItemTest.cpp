#include "platform/linux/StatusNotifierItem.h"

#include "tests/support/BusService.h"
#include "tests/support/PrivateBus.h"

#include <QDBusPendingCall>
#include <QDBusPendingReply>
#include <QPixmap>

namespace tessary {
namespace {

using namespace statusnotifier;
using testing::eventually;

/// A panel on a bus of its own, which asks the item what panels ask.
class StatusNotifierItemTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        registerTypes();
        settings.setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Comma));
        divider.setSeparator(true);
        ASSERT_TRUE(bus.start());
    }
    void startWatcher()
    {
        const auto answer = [this](const QDBusMessage& call) -> std::optional<QDBusMessage> {
            if (call.member() == QLatin1String("RegisterStatusNotifierItem"))
                registered.append(call.arguments().value(0).toString());
            return call.createReply();
        };
        watcher = std::make_unique<testing::BusService>(bus.address(),
                                                        QStringLiteral("org.kde.StatusNotifierWatcher"),
                                                        QStringLiteral("/StatusNotifierWatcher"), answer);
    }
    void startItem()
    {
        item = std::make_unique<StatusNotifierItem>(
            QStringLiteral("Tessary"), QList<QAction*>{&open, &divider, &settings}, bus.address());
        QPixmap pixmap(16, 16);
        pixmap.fill(QColor(1, 2, 3));
        item->setIcon(QIcon(pixmap));
    }
    void startBoth()
    {
        startWatcher();
        startItem();
        ASSERT_TRUE(eventually([&] { return registered.size() == 1; }));
    }
    QList<QVariant> ask(const char* path, const char* interface, const char* method,
                        const QVariantList& arguments)
    {
        QDBusMessage call = QDBusMessage::createMethodCall(registered.last(), QLatin1String(path),
                                                           QLatin1String(interface), QLatin1String(method));
        call.setArguments(arguments);
        const QDBusPendingCall answer = watcher->bus().asyncCall(call);
        EXPECT_TRUE(eventually([&] { return answer.isFinished(); }));
        EXPECT_FALSE(answer.isError()) << qPrintable(answer.error().message());
        return answer.reply().arguments();
    }
    QVariant property(const char* name)
    {
        const QVariantList answer = ask("/StatusNotifierItem", "org.freedesktop.DBus.Properties", "Get",
                                        {QStringLiteral("org.kde.StatusNotifierItem"), QLatin1String(name)});
        return answer.value(0).value<QDBusVariant>().variant();
    }
    QList<QVariant> askMenu(const char* method, const QVariantList& arguments)
    {
        return ask("/Menu", "com.canonical.dbusmenu", method, arguments);
    }
    /// The rows of the menu by number, with the properties that a panel gets.
    QMap<int, QVariantMap> layout()
    {
        const QVariantList answer = askMenu("GetLayout", {0, -1, QStringList()});
        QMap<int, QVariantMap> rows;
        for (const QDBusVariant& child : qdbus_cast<Layout>(answer.value(1)).children) {
            const auto row = qdbus_cast<Layout>(child.variant());
            rows.insert(row.id, row.properties);
        }
        return rows;
    }
    void click(int row)
    {
        askMenu("Event", {row, QStringLiteral("clicked"), QVariant::fromValue(QDBusVariant(0)), 0U});
    }

    testing::PrivateBus bus;
    QAction open{QStringLiteral("Open _all")};
    QAction divider;
    QAction settings{QStringLiteral("设置…")};
    QStringList registered;
    std::unique_ptr<testing::BusService> watcher;
    std::unique_ptr<StatusNotifierItem> item;
};

TEST_F(StatusNotifierItemTest, SaysWhatItIs)
{
    startBoth();
    EXPECT_EQ(property("Title").toString(), QStringLiteral("Tessary"));
    EXPECT_EQ(property("IconAccessibleDesc").toString(), QStringLiteral("Tessary"));
    EXPECT_EQ(property("Status").toString(), QStringLiteral("Active"));
    EXPECT_FALSE(property("ItemIsMenu").toBool());
    EXPECT_EQ(qdbus_cast<ToolTip>(property("ToolTip")).title, QStringLiteral("Tessary"));
    EXPECT_EQ(property("Menu").value<QDBusObjectPath>().path(), QStringLiteral("/Menu"));
    const auto pictures = qdbus_cast<Pictures>(property("IconPixmap"));
    ASSERT_EQ(pictures.size(), 1);
    EXPECT_EQ(pictures.first().width, 16);
    EXPECT_EQ(pictures.first().bytes.size(), 16 * 16 * 4);
    EXPECT_EQ(pictures.first().bytes.left(4), QByteArray("\xff\x01\x02\x03"));
}

TEST_F(StatusNotifierItemTest, IsAnnouncedToAWatcherThatStartsLaterAndToEachNewOne)
{
    startItem();
    startWatcher();
    ASSERT_TRUE(eventually([&] { return registered.size() == 1; }));
    watcher.reset();
    startWatcher();
    EXPECT_TRUE(eventually([&] { return registered.size() == 2; }));
    EXPECT_EQ(registered.first(), registered.last());
    EXPECT_EQ(property("Title").toString(), QStringLiteral("Tessary"));
}

TEST_F(StatusNotifierItemTest, LeavesTheBusWithItsObject)
{
    startBoth();
    const auto isThere = [this] {
        const QDBusPendingReply<bool> answer = watcher->bus().asyncCall([this] {
            QDBusMessage call = QDBusMessage::createMethodCall(
                QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameHasOwner"));
            call.setArguments({registered.last()});
            return call;
        }());
        EXPECT_TRUE(eventually([&] { return answer.isFinished(); }));
        return answer.isValid() && answer.value();
    };
    EXPECT_TRUE(isThere());
    item.reset();
    EXPECT_TRUE(eventually([&] { return !isThere(); }));
}

TEST_F(StatusNotifierItemTest, AClickActivatesIt)
{
    startBoth();
    int activations = 0;
    QPoint menuAt;
    QObject::connect(item.get(), &StatusItem::activated, [&] { ++activations; });
    QObject::connect(item.get(), &StatusItem::menuRequested, [&](const QPoint& at) { menuAt = at; });
    ask("/StatusNotifierItem", "org.kde.StatusNotifierItem", "Activate", {1, 2});
    EXPECT_TRUE(eventually([&] { return activations == 1; }));
    ask("/StatusNotifierItem", "org.kde.StatusNotifierItem", "ContextMenu", {3, 4});
    EXPECT_EQ(menuAt, QPoint(3, 4));
    ask("/StatusNotifierItem", "org.kde.StatusNotifierItem", "Scroll", {120, QStringLiteral("vertical")});
    EXPECT_EQ(activations, 1);
}

TEST_F(StatusNotifierItemTest, TellsOfTheRowsOfItsMenu)
{
    startBoth();
    settings.setEnabled(false);
    const QMap<int, QVariantMap> rows = layout();
    ASSERT_EQ(rows.keys(), (QList<int>{1, 2, 3}));
    EXPECT_EQ(rows[1].value(QStringLiteral("label")), QStringLiteral("Open __all"));
    EXPECT_EQ(rows[1].value(QStringLiteral("enabled")), true);
    EXPECT_EQ(rows[2].value(QStringLiteral("type")), QStringLiteral("separator"));
    EXPECT_EQ(rows[3].value(QStringLiteral("label")), QStringLiteral("设置…"));
    EXPECT_EQ(rows[3].value(QStringLiteral("enabled")), false);
    EXPECT_EQ(qdbus_cast<Shortcuts>(rows[3].value(QStringLiteral("shortcut"))),
              (Shortcuts{{QStringLiteral("Control"), QStringLiteral("comma")}}));
}

TEST_F(StatusNotifierItemTest, TellsOnceOfSeveralChangesAtATime)
{
    startBoth();
    const auto revision = [this] { return askMenu("GetLayout", {0, 0, QStringList()}).value(0).toUInt(); };
    const uint before = revision();
    settings.setVisible(false);
    open.setText(QStringLiteral("Opened"));
    EXPECT_TRUE(eventually([&] { return revision() == before + 1; }));
    EXPECT_EQ(layout()[3].value(QStringLiteral("visible")), false);
    EXPECT_EQ(layout()[1].value(QStringLiteral("label")), QStringLiteral("Opened"));
    EXPECT_EQ(revision(), before + 1);
}

TEST_F(StatusNotifierItemTest, AChosenRowDoesItsWork)
{
    startBoth();
    int opened = 0;
    int shown = 0;
    QObject::connect(&open, &QAction::triggered, [&] { ++opened; });
    QObject::connect(&settings, &QAction::triggered, [&] { ++shown; });
    click(1);
    EXPECT_TRUE(eventually([&] { return opened == 1; }));
    const RowEvent chosen{3, QStringLiteral("clicked"), QDBusVariant(0), 0};
    const RowEvent hovered{1, QStringLiteral("hovered"), QDBusVariant(0), 0};
    const RowEvent unknown{77, QStringLiteral("clicked"), QDBusVariant(0), 0};
    const QVariantList answer =
        askMenu("EventGroup", {QVariant::fromValue(QList<RowEvent>{hovered, unknown, chosen})});
    EXPECT_EQ(qdbus_cast<QList<int>>(answer.value(0)), QList<int>{77});
    EXPECT_TRUE(eventually([&] { return shown == 1; }));
    EXPECT_EQ(opened, 1);
}

TEST_F(StatusNotifierItemTest, ARowThatIsDisabledOrHiddenOrUnknownDoesNothing)
{
    startBoth();
    int done = 0;
    QObject::connect(&open, &QAction::triggered, [&] { ++done; });
    QObject::connect(&settings, &QAction::triggered, [&] { ++done; });
    open.setEnabled(false);
    settings.setVisible(false);
    for (const int row : {-1, 0, 1, 2, 3, 4, 2'000'000'000})
        click(row);
    open.setEnabled(true);
    click(1);
    EXPECT_TRUE(eventually([&] { return done == 1; }));
}

TEST_F(StatusNotifierItemTest, AnswersQuestionsAboutRowsThatAreNot)
{
    startBoth();
    const auto rows =
        qdbus_cast<QList<Row>>(askMenu("GetGroupProperties", {QVariant::fromValue(QList<int>{3, 99, 0}),
                                                              QStringList{QStringLiteral("label")}})
                                   .value(0));
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows.first().properties.keys(), QStringList{QStringLiteral("label")});
    const QVariantList layoutOfNone = askMenu("GetLayout", {99, -1, QStringList()});
    EXPECT_TRUE(qdbus_cast<Layout>(layoutOfNone.value(1)).children.isEmpty());
    EXPECT_EQ(askMenu("GetProperty", {99, QStringLiteral("label")}).size(), 1);
    EXPECT_EQ(askMenu("AboutToShow", {0}).value(0), false);
    const QVariantList shown = askMenu("AboutToShowGroup", {QVariant::fromValue(QList<int>{0, 1, 99})});
    EXPECT_EQ(qdbus_cast<QList<int>>(shown.value(1)), QList<int>{99});
}

TEST_F(StatusNotifierItemTest, WithoutABusItIsSilent)
{
    StatusNotifierItem lonely(QStringLiteral("Tessary"), {&open}, QStringLiteral("unix:path=/nowhere/bus"));
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::red);
    lonely.setIcon(QIcon(pixmap));
    EXPECT_EQ(lonely.pictures().size(), 1);
}

} // namespace
} // namespace tessary
