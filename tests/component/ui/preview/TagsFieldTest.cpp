#include "ui/preview/TagsField.h"

#include "tests/support/Await.h"
#include "ui/kit/SymbolButton.h"
#include "ui/kit/Theme.h"
#include "ui/preview/TagChip.h"

#include <QInputMethodEvent>
#include <QSignalSpy>

namespace tessary {
namespace {

class TagsFieldTest : public ::testing::Test {
protected:
    TagsFieldTest()
    {
        field.resize(240, 32);
        field.show();
        edit = field.findChild<QLineEdit*>();
    }
    QStringList chips() const
    {
        QStringList texts;
        for (const TagChip* chip : field.findChildren<TagChip*>())
            if (!chip->isHidden())
                texts.append(chip->text());
        return texts;
    }

    void type(const QString& text)
    {
        QInputMethodEvent event;
        event.setCommitString(text);
        QCoreApplication::sendEvent(edit, &event);
    }

    Theme theme;
    TagsField field{theme};
    QLineEdit* edit;
};

TEST_F(TagsFieldTest, SaysWhatToTypeWhileItIsEmpty)
{
    EXPECT_EQ(edit->placeholderText(), QStringLiteral("标签，用逗号分隔"));
    field.setText(QStringLiteral("one"));
    EXPECT_TRUE(edit->placeholderText().isEmpty());
}

TEST_F(TagsFieldTest, ACommaOfEitherKindMakesAChip)
{
    QSignalSpy edited(&field, &TagsField::edited);
    type(QStringLiteral("旅行，"));
    QTest::keyClicks(edit, QStringLiteral("lake, rest"));
    EXPECT_EQ(chips(), (QStringList{QStringLiteral("旅行"), QStringLiteral("lake")}));
    EXPECT_EQ(edit->text().trimmed(), QStringLiteral("rest"));
    EXPECT_EQ(field.text(), QStringLiteral("旅行, lake, rest"));
    EXPECT_FALSE(edited.isEmpty());
}

TEST_F(TagsFieldTest, ReturnMakesAChipOfTheRest)
{
    QTest::keyClicks(edit, QStringLiteral("one"));
    QTest::keyClick(edit, Qt::Key_Return);
    EXPECT_EQ(chips(), QStringList{QStringLiteral("one")});
    EXPECT_TRUE(edit->text().isEmpty());
}

TEST_F(TagsFieldTest, ARepeatIsNoSecondChip)
{
    field.setText(QStringLiteral("one, two"));
    QTest::keyClicks(edit, QStringLiteral("one,"));
    EXPECT_EQ(field.text(), QStringLiteral("one, two"));
}

TEST_F(TagsFieldTest, BackspaceAtTheStartAndTheChipsButtonTakeAway)
{
    field.setText(QStringLiteral("one, two, three"));
    QTest::keyClick(edit, Qt::Key_Backspace);
    EXPECT_EQ(field.text(), QStringLiteral("one, two"));
    field.findChild<TagChip*>()->findChild<SymbolButton*>()->click();
    EXPECT_EQ(field.text(), QStringLiteral("two"));
}

TEST_F(TagsFieldTest, ManyTagsTakeMoreLinesAndStayWithin)
{
    const int before = field.heightForWidth(240);
    field.setText(QStringLiteral("a long tag, another long tag, 很长很长的标签, more, ") +
                  QStringLiteral("x").repeated(100));
    EXPECT_GT(field.heightForWidth(240), before);
    field.resize(240, field.heightForWidth(240));
    for (const TagChip* chip : field.findChildren<TagChip*>())
        EXPECT_TRUE(field.rect().contains(chip->geometry())) << chip->text().toStdString();
    EXPECT_TRUE(field.rect().contains(edit->geometry()));
}

TEST_F(TagsFieldTest, ReadOnlyItKeepsItsTags)
{
    field.setText(QStringLiteral("one"));
    field.setReadOnly(true);
    QTest::keyClick(edit, Qt::Key_Backspace);
    QTest::keyClicks(edit, QStringLiteral("two,"));
    EXPECT_EQ(field.text(), QStringLiteral("one"));
}

} // namespace
} // namespace tessary
