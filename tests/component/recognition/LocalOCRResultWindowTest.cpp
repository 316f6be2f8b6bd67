#include "tests/component/recognition/ResultWindowFixture.h"

#include <QSignalSpy>

namespace tessary::testing {
namespace {

using ResultWindowTest = ResultWindowFixture;

TEST_F(ResultWindowTest, ATextThatIsNoTaskHasNoButton)
{
    open(result(u"春天的花园"_s));
    EXPECT_FALSE(addButton()->isVisible());
    EXPECT_EQ(status()->statusText(), u"Apple Vision 本地离线识别"_s);
    EXPECT_EQ(status()->countText(), u"5 个字符"_s);
    EXPECT_FALSE(view().isSuccessBubbleVisible());
}

TEST_F(ResultWindowTest, ATaskCanBeAdded)
{
    open(task(u"记得买牛奶"_s));
    ASSERT_TRUE(addButton()->isVisible());
    EXPECT_EQ(addButton()->text(), u"添加待办"_s);
    EXPECT_EQ(status()->statusText(), u"识别到待办，可手动添加"_s);
    addButton()->click();
    ASSERT_TRUE(eventually([&] { return view().isSuccessBubbleVisible(); }));
    EXPECT_EQ(view().reminderStatus(), OCRReminderStatus{OCRReminderStatus::Created{}});
    EXPECT_EQ(status()->statusText(), u"已成功添加待办事项"_s);
    EXPECT_FALSE(addButton()->isVisible());
    EXPECT_EQ(desk.drafts.size(), 1);
}

TEST_F(ResultWindowTest, AReminderMadeBeforeItOpensIsToldByTheBubble)
{
    open(result(u"记得买牛奶"_s, {OCRReminderStatus::Created{}}));
    EXPECT_TRUE(view().isSuccessBubbleVisible());
    EXPECT_FALSE(addButton()->isVisible());
}

TEST_F(ResultWindowTest, AFailureIsToldAndCanBeTriedAgain)
{
    desk.refuses = true;
    open(task(u"记得买牛奶"_s));
    addButton()->click();
    const QString told = u"添加失败：未获得“提醒事项”访问权限"_s;
    ASSERT_TRUE(eventually([&] { return status()->statusText() == told; }));
    EXPECT_FALSE(view().isSuccessBubbleVisible());
    ASSERT_TRUE(addButton()->isVisible());
    EXPECT_TRUE(addButton()->isEnabled());
    EXPECT_EQ(view().text(), u"记得买牛奶"_s);
    EXPECT_TRUE(desk.copied.isEmpty());
    desk.refuses = false;
    addButton()->click();
    EXPECT_TRUE(eventually([&] { return view().isSuccessBubbleVisible(); }));
    EXPECT_EQ(desk.drafts.size(), 2);
}

TEST_F(ResultWindowTest, AFailureTooLongForItsPlaceIsTheTooltip)
{
    open(result(u"记得"_s, {OCRReminderStatus::Failed{u"很长的说明"_s.repeated(40)}}));
    ASSERT_TRUE(eventually([&] { return status()->width() > 0; }));
    EXPECT_TRUE(status()->shownStatus().endsWith(u'…'));
    EXPECT_EQ(status()->toolTip(), status()->statusText());
}

TEST_F(ResultWindowTest, ProseMadeOfATaskCreatesNothing)
{
    const RecognitionResult shown = task(u"记得买牛奶"_s);
    open(shown);
    edit()->setPlainText(u"春天的花园"_s);
    addButton()->click();
    EXPECT_TRUE(desk.drafts.isEmpty());
    EXPECT_EQ(view().reminderStatus(), shown.status);
    EXPECT_TRUE(addButton()->isVisible());
    EXPECT_TRUE(addButton()->isEnabled());
    edit()->clear();
    addButton()->click();
    EXPECT_TRUE(desk.drafts.isEmpty());
}

TEST_F(ResultWindowTest, TheReminderIsMadeOfTheTextAsItIsNow)
{
    open(task(u"记得买牛奶"_s));
    edit()->setPlainText(u"\n  请订票 \n后天上午"_s);
    EXPECT_EQ(status()->countText(), u"12 个字符"_s);
    addButton()->click();
    ASSERT_EQ(desk.drafts.size(), 1);
    EXPECT_EQ(desk.drafts.first().title, u"请订票"_s);
    EXPECT_EQ(desk.drafts.first().notes, u"\n  请订票 \n后天上午"_s);
    EXPECT_TRUE(desk.drafts.first().dueDate.has_value());
}

TEST_F(ResultWindowTest, OneReminderIsMadeAtATime)
{
    desk.waits = true;
    open(task(u"记得买牛奶"_s));
    addButton()->click();
    EXPECT_TRUE(view().isCreatingReminder());
    EXPECT_EQ(addButton()->text(), u"正在添加..."_s);
    EXPECT_FALSE(addButton()->isEnabled());
    QTest::keyClick(edit(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(desk.drafts.size(), 1);
    desk.answer();
    EXPECT_TRUE(eventually([&] { return !view().isCreatingReminder(); }));
    EXPECT_EQ(view().reminderStatus(), OCRReminderStatus{OCRReminderStatus::Created{}});
}

TEST_F(ResultWindowTest, AWindowThatGoesLeavesTheCreationToItself)
{
    desk.waits = true;
    open(task(u"记得买牛奶"_s));
    addButton()->click();
    controller.close();
    desk.answer();
    ASSERT_TRUE(eventually([&] { return desk.resumed == 1; }));
    open(result(u"春天"_s));
    EXPECT_EQ(view().reminderStatus(), OCRReminderStatus{});
    EXPECT_EQ(desk.drafts.size(), 1);
}

TEST_F(ResultWindowTest, TheTextIsCopiedAgainAsItIsNow)
{
    open(result(u"一行\u00a0字"_s));
    named<PushButton>("copyAgain")->click();
    edit()->moveCursor(QTextCursor::End);
    QTest::keyClicks(edit(), u"!"_s);
    named<PushButton>("copyAgain")->click();
    EXPECT_EQ(desk.copied, (QList<QString>{u"一行\u00a0字"_s, u"一行\u00a0字!"_s}));
}

TEST_F(ResultWindowTest, EscapeAndControlWClose)
{
    for (const auto& [key, modifiers] :
         {std::pair{Qt::Key_Escape, Qt::NoModifier}, std::pair{Qt::Key_W, Qt::ControlModifier}}) {
        open(result(u"字"_s));
        ASSERT_TRUE(eventually([&] { return controller.window()->isActiveWindow(); }));
        const QSignalSpy closed(&controller, &LocalOCRResultWindowController::closed);
        QTest::keyClick(edit(), key, modifiers);
        EXPECT_TRUE(eventually([&] { return !controller.isOpen(); }));
        EXPECT_EQ(closed.count(), 1);
    }
}

TEST_F(ResultWindowTest, ControlReturnAddsTheReminder)
{
    open(task(u"记得买牛奶"_s));
    ASSERT_TRUE(eventually([&] { return controller.window()->isActiveWindow(); }));
    QTest::keyClick(edit(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_TRUE(eventually([&] { return desk.drafts.size() == 1; }));
    EXPECT_EQ(view().text(), u"记得买牛奶"_s);
}

TEST_F(ResultWindowTest, TheCloseButtonAndTheWindowManagerClose)
{
    open(result(u"字"_s));
    named<QAbstractButton>("close")->click();
    EXPECT_TRUE(eventually([&] { return !controller.isOpen(); }));
    open(result(u"字"_s));
    controller.window()->close();
    EXPECT_TRUE(eventually([&] { return !controller.isOpen(); }));
}

TEST_F(ResultWindowTest, TabGoesFromTheTextThroughTheButtons)
{
    open(task(u"记得买牛奶"_s));
    ASSERT_TRUE(eventually([&] { return edit()->hasFocus(); }));
    QStringList order;
    for (int stop = 0; stop < 5; ++stop) {
        order.append(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(order, (QStringList{u"recognizedText"_s, u"copyAgain"_s, u"addReminder"_s, u"minimize"_s,
                                  u"close"_s}));
    EXPECT_TRUE(edit()->hasFocus());
}

TEST_F(ResultWindowTest, EveryControlHasAName)
{
    open(task(u"记得买牛奶"_s));
    for (const QWidget* control : controller.window()->findChildren<QWidget*>())
        if (control->focusPolicy() != Qt::NoFocus && control->isVisible() && control != edit()->viewport()) {
            const auto* button = qobject_cast<const QAbstractButton*>(control);
            const QString name =
                button != nullptr && !button->text().isEmpty() ? button->text() : control->accessibleName();
            EXPECT_FALSE(name.isEmpty()) << control->metaObject()->className();
        }
    EXPECT_EQ(status()->accessibleName(), u"5 个字符, 识别到待办，可手动添加"_s);
}

} // namespace
} // namespace tessary::testing
