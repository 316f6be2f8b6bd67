#include "recognition/dates/DateDetector.h"

#include <QLocale>

#include <gtest/gtest.h>

namespace tessary {
namespace {

using namespace Qt::StringLiterals;
using Order = NumericDateGrammar::Order;

/// Wednesday, 4 March 2026, 10:20:30 in Shanghai, where nothing is ever put forward or back.
QDateTime nowInShanghai()
{
    return {QDate(2026, 3, 4), QTime(10, 20, 30), QTimeZone("Asia/Shanghai")};
}

/// What is found, as the wall shows it there; "-" for nothing.
QString found(const QString& text, const QDateTime& now = nowInShanghai(), Order order = Order::MonthFirst)
{
    const DateDetector detector(Calendar{now.timeZone()}, order);
    const std::optional<Date> date = detector.firstDate(text, Date::fromDateTime(now));
    if (!date)
        return u"-"_s;
    return date->toDateTime().toTimeZone(now.timeZone()).toString(u"yyyy-MM-dd HH:mm"_s);
}

struct Case {
    const char16_t* text;
    const char16_t* expected;
};

void expectAll(std::initializer_list<Case> cases)
{
    for (const Case& one : cases) {
        const QString text = QString::fromUtf16(one.text);
        EXPECT_EQ(found(text), QString::fromUtf16(one.expected)) << text.toStdString();
    }
}

void expectNone(std::initializer_list<const char16_t*> texts)
{
    for (const char16_t* one : texts) {
        const QString text = QString::fromUtf16(one);
        EXPECT_EQ(found(text), u"-"_s) << text.toStdString();
    }
}

TEST(DateDetectorTest, FindsChineseDaysOfTheCalendar)
{
    expectAll({
        {u"3月5日下午3点", u"2026-03-05 15:00"},
        {u"2026年3月5日", u"2026-03-05 09:00"},
        {u"请在2026年12月31日 18:30前提交", u"2026-12-31 18:30"},
        {u"二〇二六年三月十五日上午九点半", u"2026-03-15 09:30"},
        {u"３月５日（周四）１５：３０ 开会", u"2026-03-05 15:30"},
        {u"3 月 5 日 15 : 30", u"2026-03-05 15:30"},
        {u"截止 3月8号 晚上12点", u"2026-03-09 00:00"},
        {u"26年4月1日", u"2026-04-01 09:00"},
        {u"2月28日交房租", u"2027-02-28 09:00"},
        {u"3月4日开会", u"2026-03-04 09:00"},
        {u"二月二十九日", u"2028-02-29 09:00"},
        {u"明年3月5日", u"2027-03-05 09:00"},
        {u"下个月5号交电费", u"2026-04-05 09:00"},
        {u"本月20日 14:00", u"2026-03-20 14:00"},
        {u"5号下午两点", u"2026-03-05 14:00"},
        {u"3号上午10点", u"2026-04-03 10:00"},
        {u"十月一日凌晨十二点", u"2026-10-01 00:00"},
        {u"3月5日中午12点", u"2026-03-05 12:00"},
        {u"3月5日中午1点", u"2026-03-05 13:00"},
        {u"3月5日24点", u"2026-03-06 00:00"},
        {u"3月5日，晚上八点一刻", u"2026-03-05 20:15"},
        {u"3月5日 20点零五分", u"2026-03-05 20:05"},
        {u"3月5日-8日外出", u"2026-03-05 09:00"},
        {u"3月5日下午3点-5点", u"2026-03-05 15:00"},
        {u"農曆新年前，3月6日 星期五 下午3時", u"2026-03-06 15:00"},
    });
}

TEST(DateDetectorTest, FindsChineseDaysCountedFromNow)
{
    expectAll({
        {u"下周五 18:30", u"2026-03-13 18:30"},
        {u"后天上午", u"2026-03-06 09:00"},
        {u"周三晚上八点半", u"2026-03-04 20:30"},
        {u"周三上午9点", u"2026-03-11 09:00"},
        {u"这周日聚餐", u"2026-03-08 09:00"},
        {u"下下周一交报告", u"2026-03-16 09:00"},
        {u"星期天 10:00", u"2026-03-08 10:00"},
        {u"下個禮拜二下午", u"2026-03-10 15:00"},
        {u"本周一", u"2026-03-02 09:00"},
        {u"明天下午3点开会", u"2026-03-05 15:00"},
        {u"今天 18:30 前回复", u"2026-03-04 18:30"},
        {u"今天晚上", u"2026-03-04 20:00"},
        {u"今晚8点看电影", u"2026-03-04 20:00"},
        {u"明早7点半出发", u"2026-03-05 07:30"},
        {u"明晚", u"2026-03-05 20:00"},
        {u"大后天", u"2026-03-07 09:00"},
        {u"後天 15時", u"2026-03-06 15:00"},
        {u"明天傍晚", u"2026-03-05 18:00"},
        {u"2小时后提醒我", u"2026-03-04 12:20"},
        {u"半小时后", u"2026-03-04 10:50"},
        {u"三天后复查", u"2026-03-07 10:20"},
        {u"两周后 9:00", u"2026-03-18 09:00"},
        {u"3个月之后", u"2026-06-04 10:20"},
        {u"45 分钟后取餐", u"2026-03-04 11:05"},
    });
}

TEST(DateDetectorTest, FindsJapaneseDates)
{
    expectAll({
        {u"明後日", u"2026-03-06 09:00"},
        {u"来週の金曜日 午後3時", u"2026-03-13 15:00"},
        {u"3月5日(木) 15時半", u"2026-03-05 15:30"},
        {u"明日までに提出", u"2026-03-05 09:00"},
        {u"明日の朝8時", u"2026-03-05 08:00"},
        {u"今日の午後6時に集合", u"2026-03-04 18:00"},
        {u"あさって 10:00", u"2026-03-06 10:00"},
        {u"木曜日の15時", u"2026-03-05 15:00"},
        {u"次の月曜日", u"2026-03-09 09:00"},
        {u"再来週の水曜 正午", u"2026-03-18 12:00"},
        {u"令和8年3月5日 午前10時15分", u"2026-03-05 10:15"},
        {u"明晩7時", u"2026-03-05 19:00"},
        {u"明朝", u"2026-03-05 09:00"},
        {u"2時間後に確認", u"2026-03-04 12:20"},
        {u"3日後", u"2026-03-07 10:20"},
        {u"2026年3月5日（木曜日）15:30〜", u"2026-03-05 15:30"},
        {u"土曜 深夜", u"2026-03-08 00:00"},
    });
}

TEST(DateDetectorTest, FindsEnglishDates)
{
    expectAll({
        {u"March 5 at 6pm", u"2026-03-05 18:00"},
        {u"Dinner on 5 March 2026", u"2026-03-05 09:00"},
        {u"next Friday 10:30", u"2026-03-13 10:30"},
        {u"tomorrow at noon", u"2026-03-05 12:00"},
        {u"Call back in 2 hours", u"2026-03-04 12:20"},
        {u"Fri 18:30", u"2026-03-06 18:30"},
        {u"Thursday, March 5th, 2026 at 6:30 PM", u"2026-03-05 18:30"},
        {u"Due Mar. 5, 2026", u"2026-03-05 09:00"},
        {u"the 5th of March", u"2026-03-05 09:00"},
        {u"6pm on March 5", u"2026-03-05 18:00"},
        {u"10:30 tomorrow", u"2026-03-05 10:30"},
        {u"Let's meet tomorrow.", u"2026-03-05 09:00"},
        {u"tomorrow morning", u"2026-03-05 09:00"},
        {u"tonight", u"2026-03-04 20:00"},
        {u"tonight at 9 pm", u"2026-03-04 21:00"},
        {u"today by 17:00", u"2026-03-04 17:00"},
        {u"this afternoon", u"2026-03-04 15:00"},
        {u"in half an hour", u"2026-03-04 10:50"},
        {u"in a week", u"2026-03-11 10:20"},
        {u"in three days at 8:00", u"2026-03-07 08:00"},
        {u"Monday at 9 o'clock", u"2026-03-09 09:00"},
        {u"on Wednesday at 9am", u"2026-03-11 09:00"},
        {u"SUNDAY 12 p.m.", u"2026-03-08 12:00"},
        {u"Dec 25", u"2026-12-25 09:00"},
        {u"Thu, 05 Mar 2026 12:30:45 GMT", u"2026-03-05 20:30"},
        {u"May 1 at midnight", u"2026-05-02 00:00"},
        {u"the day after tomorrow", u"2026-03-06 09:00"},
    });
}

TEST(DateDetectorTest, FindsNumericDates)
{
    expectAll({
        {u"2026-03-05 18:30", u"2026-03-05 18:30"},
        {u"2026-3-5", u"2026-03-05 09:00"},
        {u"2026/3/5 下午3点", u"2026-03-05 15:00"},
        {u"2026.3.5", u"2026-03-05 09:00"},
        {u"Deadline: 2026-03-05T18:30:00Z", u"2026-03-06 02:30"},
        {u"2026-03-05T18:30:00+01:00", u"2026-03-06 01:30"},
        {u"start 2026-03-05T18:30:00.250-0500", u"2026-03-06 07:30"},
        {u"5/3/2026", u"2026-05-03 09:00"},
        {u"25/3/2026", u"2026-03-25 09:00"},
        {u"05.03.2026 um 14:00", u"2026-03-05 09:00"},
        {u"3/5 18:30", u"2026-03-05 18:30"},
        {u"3/5(木) 15時", u"2026-03-05 15:00"},
        {u"12/24/26 7:15 pm", u"2026-12-24 19:15"},
        {u"２０２６－０３－０５", u"-"},
        {u"（2026-03-05）", u"2026-03-05 09:00"},
        {u"到期：2026-03-05。", u"2026-03-05 09:00"},
    });
}

TEST(DateDetectorTest, LeavesVersionsPricesAndOtherNumbersAlone)
{
    expectNone({
        u"tessary 2.10.3-1+deb12u4",
        u"v2026.3.5",
        u"Python 3.11.2",
        u"libstdc++.so.6.0.30",
        u"Linux 6.1.0-18-amd64",
        u"node-2026.03.05.1",
        u"¥3.50",
        u"$5/3 for two",
        u"合计 1,234.56 元",
        u"€12,99 / 3",
        u"138-0013-8000",
        u"+86 10 8888 6666",
        u"(555) 123-4567",
        u"2026-555-1234",
        u"192.168.1.1",
        u"10.3.5.26:8080",
        u"fe80::1ff:fe23:4567:890a",
        u"16:9",
        u"1920x1080 at 60 Hz",
        u"3/5",
        u"完成 3/5 项",
        u"page 12/31",
        u"score 3-5",
        u"ISBN 978-7-111-21382-6",
        u"ticket 20260305",
        u"https://example.com/2026/03/05/post",
        u"IMG_2026-03-05.png",
        u"backup-2026-03-05.tar.gz",
        u"sha256:2026a3b5",
        u"100086",
        u"3.5 GB of 12 GB",
        u"邮编 100080",
        u"身份证 110101199003071234",
    });
}

TEST(DateDetectorTest, LeavesTimesOfALogAlone)
{
    expectNone({
        u"12:30:45.123 INFO started",
        u"[12:30:45] connected",
        u"12:30",
        u"2026-03-05 12:30:45,123 INFO main: ready",
        u"[2026-03-05 12:30:45] request done",
        u"2026-03-05T12:30:45.123Z ERROR failed",
        u"Mar  5 12:30:45 host sshd[812]: session opened",
        u"2026/03/05 12:30:45 [error] 31#31: *1 open() failed",
        u"-rw-r--r-- 1 root root 4096 Mar  5 12:30 notes.txt",
        u"real 0m3.310s",
        u"uptime 11:57, load average: 1.24",
        u"Built in 3 minutes",
        u"completed in 2 hours",
        u"[  12.305] usb 1-1: new device",
    });
    EXPECT_EQ(found(u"12:30:45 INFO up\n2026-03-05 12:30:45 WARN low\n明天下午3点重启"_s),
              u"2026-03-05 15:00"_s);
}

TEST(DateDetectorTest, LeavesProseAlone)
{
    expectNone({
        u"今天",
        u"明天",
        u"明天 开会",
        u"今天天气很好，我们去公园",
        u"昨天下午3点",
        u"上周五已经发过了",
        u"一周一次",
        u"每周五 18:30",
        u"每周一次的例会",
        u"几天后他走了",
        u"3月",
        u"2026年",
        u"三月份的报表",
        u"5号楼二单元",
        u"第3日",
        u"13月5日",
        u"2月30日",
        u"2026-02-30",
        u"2026-13-05",
        u"6月31日",
        u"2026年2月29日",
        u"农历八月十五日",
        u"下午3点",
        u"3小时",
        u"四点建议",
        u"毎週の金曜日",
        u"今日はいい天気です",
        u"May I come in?",
        u"We may 5 times retry",
        u"the sun sat in the west",
        u"every Friday at 5",
        u"last Monday",
        u"Section 3.5 of March",
        u"Today we learn about dates",
        u"March 2026",
        u"February 30",
        u"at 6",
        u"in 2 ways",
        u"a march of 20 miles",
        u"Windows 95 and Mac OS 9",
        u"room 5/3",
        u"第十三届全国运动会",
        u"北京市海淀区中关村大街27号",
        u"One day in the life",
        u"25:61",
        u"second 5",
    });
}

TEST(DateDetectorTest, TheFirstDateOfTheTextCounts)
{
    EXPECT_EQ(found(u"版本 2.3.1\n下周五 18:30 开会，3月20日之前回复"_s), u"2026-03-13 18:30"_s);
    EXPECT_EQ(found(u"2月30日不行，改到 3月6日"_s), u"2026-03-06 09:00"_s);
}

TEST(DateDetectorTest, TheLocaleOrdersDayAndMonth)
{
    EXPECT_EQ(found(u"5/3/2026"_s, nowInShanghai(), Order::DayFirst), u"2026-03-05 09:00"_s);
    EXPECT_EQ(found(u"5-3-2026"_s, nowInShanghai(), Order::DayFirst), u"2026-03-05 09:00"_s);
    EXPECT_EQ(NumericDateGrammar::orderOf(QLocale(u"en_GB"_s)), Order::DayFirst);
    EXPECT_EQ(NumericDateGrammar::orderOf(QLocale(u"de_DE"_s)), Order::DayFirst);
    EXPECT_EQ(NumericDateGrammar::orderOf(QLocale(u"en_US"_s)), Order::MonthFirst);
    EXPECT_EQ(NumericDateGrammar::orderOf(QLocale(u"zh_CN"_s)), Order::MonthFirst);
}

TEST(DateDetectorTest, ATimeThatTheClocksJumpOverIsNoDate)
{
    const QDateTime now(QDate(2026, 3, 4), QTime(10, 0), QTimeZone("Europe/Berlin"));
    EXPECT_EQ(found(u"2026-03-29 02:30"_s, now), u"-"_s);
    EXPECT_EQ(found(u"2026-03-29 03:30"_s, now), u"2026-03-29 03:30"_s);
}

TEST(DateDetectorTest, FromHereIsCountedInTheTimeZoneGiven)
{
    const QDateTime now(QDate(2026, 12, 31), QTime(23, 30), QTimeZone("America/New_York"));
    EXPECT_EQ(found(u"明天下午3点"_s, now), u"2027-01-01 15:00"_s);
    EXPECT_EQ(found(u"in 2 hours"_s, now), u"2027-01-01 01:30"_s);
}

/// Each would take for ever if a position were looked at from more than a bounded distance.
TEST(DateDetectorTest, LongTextsEnd)
{
    constexpr qsizetype kLength = 300'000;
    for (const QString& piece : {u"2026-"_s, u"3月 "_s, u"周"_s, u" "_s, u"in 2 "_s, u"一"_s, u"12:"_s,
                                 u"next "_s, u"下下"_s, u"a"_s, u"Mar "_s, u"今天 "_s})
        EXPECT_EQ(found(piece.repeated(kLength / piece.size())), u"-"_s) << piece.toStdString();
}

} // namespace
} // namespace tessary
