#include "tests/session/panel/ScreenReaderSession.h"
#include "tests/support/RecordSamples.h"

namespace tessary::testing {
namespace {

class AccessibilityTest : public ScreenReaderSession {
protected:
    const QString field = QStringLiteral("搜索剪贴板文字、来源 App...");
};

TEST_F(AccessibilityTest, AnItemIsFoundChosenAndPastedWithTheTreeAlone)
{
    startWithPanel();
    for (const char* text : {"Grüße 世界 from afar", "something newer"}) {
        copyText(QString::fromUtf8(text));
        ASSERT_TRUE(holdsText(QString::fromUtf8(text)));
    }
    ASSERT_TRUE(lists(2));
    PasteTarget& target = open(PasteTarget::Kind::Gtk3);
    ASSERT_TRUE(opensPanel());
    ChildProcess& listener = listening({QStringLiteral("object:state-changed:selected"),
                                        QStringLiteral("object:property-change:accessible-name")});
    reader({QStringLiteral("set"), QStringLiteral("text"), field, QStringLiteral("afar")});
    EXPECT_EQ(reader({QStringLiteral("text"), QStringLiteral("text"), field}), QStringLiteral("afar"));
    reader({QStringLiteral("find"), QStringLiteral("status bar"), QStringLiteral("1 个结果")});
    EXPECT_TRUE(listener.printed(QStringLiteral("accessible-name\tstatus bar\t1 个结果")));
    EXPECT_TRUE(listener.printed(QStringLiteral("selected\tlist item\tGrüße 世界 from afar")));
    const QString row = QStringLiteral("Grüße 世界 from afar, 文字*");
    reader({QStringLiteral("state"), QStringLiteral("list item"), row, QStringLiteral("selected")});
    reader({QStringLiteral("act"), QStringLiteral("list item"), row, QStringLiteral("Press")});
    EXPECT_TRUE(arrives(target, QStringLiteral("Grüße 世界 from afar")));
    EXPECT_TRUE(goes());
}

TEST_F(AccessibilityTest, RowsAreChosenPinnedAndToldOfByTheTree)
{
    prepare({textRecord(QStringLiteral("older"), 1'700'000'000),
             textRecord(QStringLiteral("newer"), 1'700'000'060)});
    startWithPanel();
    ASSERT_TRUE(opensPanel());
    const QString older = QStringLiteral("older, 文字*");
    EXPECT_EQ(reader({QStringLiteral("count"), QStringLiteral("list"), QStringLiteral("搜索结果")}),
              QStringLiteral("2"));
    reader({QStringLiteral("state"), QStringLiteral("list item"), older, QStringLiteral("!selected")});
    reader({QStringLiteral("act"), QStringLiteral("list item"), older, QStringLiteral("SetFocus")});
    reader({QStringLiteral("state"), QStringLiteral("list item"), older, QStringLiteral("selected")});
    EXPECT_EQ(reader({QStringLiteral("text"), QStringLiteral("text"), QStringLiteral("预览")}),
              QStringLiteral("older"));
    reader({QStringLiteral("act"), QStringLiteral("list item"), older, QStringLiteral("ShowMenu")});
    reader({QStringLiteral("act"), QStringLiteral("menu item"), QStringLiteral("置顶"),
            QStringLiteral("Press")});
    reader({QStringLiteral("find"), QStringLiteral("list item"), QStringLiteral("older, 文字*置顶")});
}

TEST_F(AccessibilityTest, ButtonsTellWhatTheyAreAndWhetherTheyAreOnOrOpen)
{
    startWithPanel();
    ASSERT_TRUE(opensPanel());
    const QString checkBox = QStringLiteral("check box");
    const QString pin = QStringLiteral("置顶");
    reader({QStringLiteral("state"), checkBox, pin, QStringLiteral("!checked")});
    reader({QStringLiteral("act"), checkBox, pin, QStringLiteral("Toggle")});
    reader({QStringLiteral("state"), checkBox, pin, QStringLiteral("checked")});
    reader({QStringLiteral("find"), QStringLiteral("push button"), QStringLiteral("设置")});
    const QString button = QStringLiteral("push button");
    const QString filter = QStringLiteral("过滤");
    reader({QStringLiteral("state"), button, filter, QStringLiteral("!expanded")});
    reader({QStringLiteral("act"), button, filter, QStringLiteral("ShowMenu")});
    reader({QStringLiteral("state"), button, filter, QStringLiteral("expanded")});
    const QString menuItem = QStringLiteral("menu item");
    reader({QStringLiteral("state"), menuItem, QStringLiteral("最新优先"), QStringLiteral("!checked")});
    reader({QStringLiteral("act"), menuItem, QStringLiteral("最新优先"), QStringLiteral("Press")});
    reader({QStringLiteral("gone"), menuItem, QStringLiteral("最新优先")});
    reader({QStringLiteral("state"), button, filter, QStringLiteral("!expanded")});
}

TEST_F(AccessibilityTest, ANoteIsWrittenInThePreviewByTheTree)
{
    prepare({textRecord(QStringLiteral("to be annotated"), 1'700'000'000)});
    startWithPanel();
    ASSERT_TRUE(opensPanel());
    reader({QStringLiteral("act"), QStringLiteral("list item"), QStringLiteral("to be annotated*"),
            QStringLiteral("ShowMenu")});
    reader({QStringLiteral("act"), QStringLiteral("menu item"), QStringLiteral("预览"),
            QStringLiteral("Press")});
    reader({QStringLiteral("find"), QStringLiteral("frame"), QStringLiteral("to be annotated")});
    reader({QStringLiteral("set"), QStringLiteral("text"), QStringLiteral("备注"),
            QStringLiteral("for Monday")});
    reader({QStringLiteral("act"), QStringLiteral("push button"), QStringLiteral("保存"),
            QStringLiteral("Press")});
    EXPECT_TRUE(eventually([&] {
        const auto item = library().text(QStringLiteral("to be annotated"));
        return item && item->note == QStringLiteral("for Monday");
    }));
}

} // namespace
} // namespace tessary::testing
