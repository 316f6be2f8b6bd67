#include "ui/kit/Sheet.h"

#include "tests/support/Await.h"
#include "ui/kit/TextField.h"
#include "ui/kit/Theme.h"

#include <QAccessible>
#include <QApplication>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>

namespace tessary {
namespace {

using testing::eventually;

class SheetTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        window.resize(600, 400);
        window.show();
        field.setFocus();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        Sheet::Question question{QStringLiteral("exclamationmark.triangle.fill"),
                                 QStringLiteral("保存吗？"),
                                 QStringLiteral("说明。").repeated(20),
                                 {},
                                 1};
        const auto choose = [this](const QString& text) { return [this, text] { chosen.append(text); }; };
        for (const auto& [text, role] : choices)
            question.choices.append({text, role, choose(text)});
        sheet = Sheet::ask(theme, window, question);
    }
    PushButton* button(const QString& text)
    {
        for (auto* each : sheet->findChildren<PushButton*>())
            if (each->text() == text)
                return each;
        return nullptr;
    }
    static void type(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }

    const QList<std::pair<QString, PushButton::Role>> choices{
        {QStringLiteral("discard"), PushButton::Role::Destructive},
        {QStringLiteral("cancel"), PushButton::Role::Ordinary},
        {QStringLiteral("save"), PushButton::Role::Default}};
    Theme theme;
    QWidget window;
    TextField field{theme, &window};
    QPointer<Sheet> sheet;
    QStringList chosen;
};

TEST_F(SheetTest, TheDefaultHasTheKeyboardAndReturnChoosesIt)
{
    EXPECT_TRUE(button(QStringLiteral("save"))->hasFocus());
    type(Qt::Key_Return);
    EXPECT_EQ(chosen, QStringList{QStringLiteral("save")});
    EXPECT_TRUE(eventually([&] { return sheet.isNull(); }));
}

TEST_F(SheetTest, EscapeChoosesWhatItStandsForOnce)
{
    QWidget* focused = QApplication::focusWidget();
    QTest::keyClick(focused, Qt::Key_Escape);
    QTest::keyClick(focused, Qt::Key_Escape);
    EXPECT_EQ(chosen, QStringList{QStringLiteral("cancel")});
}

TEST_F(SheetTest, TabStaysWithinTheCard)
{
    QStringList visited;
    for (int i = 0; i < 4; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        visited.append(qobject_cast<PushButton*>(QApplication::focusWidget())->text());
    }
    EXPECT_EQ(visited, (QStringList{QStringLiteral("discard"), QStringLiteral("cancel"),
                                    QStringLiteral("save"), QStringLiteral("discard")}));
    EXPECT_FALSE(field.hasFocus());
}

TEST_F(SheetTest, CoversTheWindowThatIsResizedAndTakesItsClicks)
{
    window.resize(300, 260);
    EXPECT_EQ(sheet->geometry(), window.rect());
    for (const PushButton* each : sheet->findChildren<PushButton*>())
        EXPECT_TRUE(sheet->rect().contains(each->geometry())) << each->text().toStdString();
    QPushButton beneath(&window);
    QSignalSpy clicked(&beneath, &QPushButton::clicked);
    beneath.lower();
    beneath.show();
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, beneath.geometry().center());
    EXPECT_TRUE(clicked.isEmpty());
    EXPECT_FALSE(sheet.isNull());
}

TEST_F(SheetTest, DismissedItAnswersNothing)
{
    QSignalSpy closed(sheet.data(), &Sheet::closed);
    sheet->dismiss();
    EXPECT_EQ(closed.size(), 1);
    EXPECT_TRUE(eventually([&] { return sheet.isNull(); }));
    EXPECT_TRUE(chosen.isEmpty());
}

TEST_F(SheetTest, ReadsAsADialogWithItsQuestion)
{
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(sheet.data());
    EXPECT_EQ(accessible->role(), QAccessible::Dialog);
    EXPECT_EQ(accessible->text(QAccessible::Name), QStringLiteral("保存吗？"));
}

TEST_F(SheetTest, LargerTextStillFitsTheCard)
{
    const int before = button(QStringLiteral("save"))->y();
    theme.setTextScale(2);
    EXPECT_NE(button(QStringLiteral("save"))->y(), before);
    for (const PushButton* each : sheet->findChildren<PushButton*>())
        EXPECT_TRUE(sheet->rect().contains(each->geometry())) << each->text().toStdString();
}

TEST(TextFieldTest, GrowsWithTheTextAndMakesRoomForItsSymbol)
{
    Theme theme;
    TextField field(theme);
    EXPECT_EQ(field.sizeHint().height(), 32);
    const int plain = field.textMargins().left();
    field.setSymbol(QStringLiteral("magnifyingglass"));
    EXPECT_EQ(field.textMargins().left(), plain + 24);
    theme.setTextScale(2);
    EXPECT_GE(field.sizeHint().height(), 64);
    EXPECT_EQ(field.font().pixelSize(), 2 * Theme::kBodySize);
}

} // namespace
} // namespace tessary
