#include "recognition/OCRReminderClassifier.h"

#include "base/Calendar.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

using namespace Qt::StringLiterals;

const Date kNow{1'772'590'830.25}; // 2026-03-04, 02:20:30 UTC

std::optional<OCRReminderDraft> draftOf(const QString& text)
{
    return OCRReminderClassifier::draft(text, kNow);
}

TEST(OCRReminderClassifierTest, ATextWithoutAnythingIsNoTask)
{
    EXPECT_EQ(draftOf({}), std::nullopt);
    EXPECT_EQ(draftOf(u" \t\n\r\n\u3000\u2028 \v\f\u0085"_s), std::nullopt);
}

TEST(OCRReminderClassifierTest, TomorrowAloneIsNowOneDayLater)
{
    const QString text = u"\n\n   买牛奶  \n明天"_s;
    const Date due = Calendar::current().addingDays(kNow, 1);
    EXPECT_EQ(draftOf(text), (OCRReminderDraft{u"买牛奶"_s, text, due}));
}

TEST(OCRReminderClassifierTest, TodayAloneIsNow)
{
    EXPECT_EQ(draftOf(u"今天交作业"_s), (OCRReminderDraft{u"今天交作业"_s, u"今天交作业"_s, kNow}));
}

TEST(OCRReminderClassifierTest, TomorrowGoesBeforeToday)
{
    EXPECT_EQ(OCRReminderClassifier::detectDate(u"今天或者明天"_s, kNow),
              Calendar::current().addingDays(kNow, 1));
}

TEST(OCRReminderClassifierTest, AListMarkWantsItsBlank)
{
    EXPECT_EQ(draftOf(u"- milk"_s), (OCRReminderDraft{u"- milk"_s, u"- milk"_s, std::nullopt}));
    EXPECT_EQ(draftOf(u"-milk"_s), std::nullopt);
}

TEST(OCRReminderClassifierTest, EachWordMakesATask)
{
    for (const QString& word :
         {u"TODO"_s, u"todo"_s, u"待办"_s, u"待完成"_s, u"记得"_s, u"提醒"_s,   u"需要"_s, u"请"_s,
          u"完成"_s, u"安排"_s, u"处理"_s, u"购买"_s,   u"提交"_s, u"打电话"_s, u"发送"_s, u"回复"_s,
          u"预定"_s, u"- "_s,   u"•"_s,    u"☐"_s,      u"□"_s,    u"✅"_s}) {
        const QString text = u"甲"_s + word + u"乙"_s;
        EXPECT_EQ(draftOf(text), (OCRReminderDraft{text, text, std::nullopt})) << word.toStdString();
    }
}

TEST(OCRReminderClassifierTest, CapitalsDoNotMatter)
{
    EXPECT_TRUE(draftOf(u"My ToDo list"_s).has_value());
}

TEST(OCRReminderClassifierTest, ADateMakesATaskWithoutAnyWord)
{
    const std::optional<OCRReminderDraft> draft = draftOf(u"The review is on March 20, 2026 at 6pm"_s);
    ASSERT_TRUE(draft.has_value());
    EXPECT_EQ(draft->dueDate, Date::fromDateTime(QDateTime(QDate(2026, 3, 20), QTime(18, 0))));
}

TEST(OCRReminderClassifierTest, ATextThatIsADateInTheChineseFormIsThatDate)
{
    EXPECT_EQ(OCRReminderClassifier::detectDate(u"2026年3月5日 18:30"_s, kNow),
              Date::fromDateTime(QDateTime(QDate(2026, 3, 5), QTime(18, 30))));
}

TEST(OCRReminderClassifierTest, TheTitleIsTheFirstLineWhereverTheWordStands)
{
    EXPECT_EQ(draftOf(u"会议纪要\n讨论了预算\n记得发票"_s)->title, u"会议纪要"_s);
}

TEST(OCRReminderClassifierTest, EverySeparatorEndsALine)
{
    for (const QString& separator :
         {u"\n"_s, u"\v"_s, u"\f"_s, u"\r"_s, u"\r\n"_s, u"\u0085"_s, u"\u2028"_s, u"\u2029"_s})
        EXPECT_EQ(draftOf(separator + u" 甲 "_s + separator + u"请"_s)->title, u"甲"_s);
}

TEST(OCRReminderClassifierTest, ALongFirstLineIsALongTitle)
{
    const QString line = u"请"_s.repeated(5000);
    EXPECT_EQ(draftOf(line)->title, line);
}

TEST(OCRReminderClassifierTest, ProseIsNoTask)
{
    EXPECT_EQ(draftOf(u"The quick brown fox jumps over the lazy dog"_s), std::nullopt);
    EXPECT_EQ(draftOf(u"春天的花园里开满了花"_s), std::nullopt);
}

} // namespace
} // namespace tessary
