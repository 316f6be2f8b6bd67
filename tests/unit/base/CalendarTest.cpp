#include "base/Calendar.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

Calendar calendarOf(const char* zone)
{
    return Calendar{QTimeZone(zone)};
}

Date instant(const char* isoText)
{
    return Date::fromDateTime(QDateTime::fromString(QLatin1String(isoText), Qt::ISODate));
}

TEST(CalendarTest, ADayBeginsAtMidnightOfItsZone)
{
    const Calendar shanghai = calendarOf("Asia/Shanghai");
    EXPECT_EQ(shanghai.startOfDay(instant("2024-05-01T20:30:00Z")), instant("2024-05-02T00:00:00+08:00"));
    EXPECT_EQ(shanghai.startOfDay(instant("2024-05-02T00:00:00+08:00")),
              instant("2024-05-02T00:00:00+08:00"));
    EXPECT_EQ(shanghai.startOfDay(instant("2024-05-01T15:59:59Z")), instant("2024-05-01T00:00:00+08:00"));
}

TEST(CalendarTest, FractionsAndTimesBefore1970KeepTheirDay)
{
    const Calendar utc = calendarOf("UTC");
    EXPECT_EQ(utc.startOfDay(Date{86400 - 0.0004}), Date{0});
    EXPECT_EQ(utc.startOfDay(Date{-0.25}), Date{-86400});
    EXPECT_EQ(utc.addingDays(Date{-0.25}, 1), Date{86400 - 0.25});
}

TEST(CalendarTest, DaysOfTwentyThreeAndTwentyFiveHoursCountAsOne)
{
    const Calendar berlin = calendarOf("Europe/Berlin");
    const Date springNoon = instant("2024-03-31T12:00:00+02:00");
    EXPECT_EQ(berlin.startOfDay(springNoon), instant("2024-03-31T00:00:00+01:00"));
    EXPECT_EQ(berlin.addingDays(springNoon, -1), instant("2024-03-30T12:00:00+01:00"));
    const Date autumnNoon = instant("2024-10-27T12:00:00+01:00");
    EXPECT_EQ(berlin.startOfDay(autumnNoon), instant("2024-10-27T00:00:00+02:00"));
    EXPECT_EQ(berlin.addingDays(autumnNoon, -1), instant("2024-10-26T12:00:00+02:00"));
}

TEST(CalendarTest, ADayWithoutMidnightBeginsWithItsFirstInstant)
{
    const Calendar saoPaulo = calendarOf("America/Sao_Paulo");
    const Date first = instant("2018-11-04T01:00:00-02:00");
    EXPECT_EQ(saoPaulo.startOfDay(instant("2018-11-04T12:00:00-02:00")), first);
    EXPECT_EQ(saoPaulo.date(QStringLiteral("2018-11-04")), first);
}

TEST(CalendarTest, ATimeThatTheClocksJumpOverBecomesTheOneTheyJumpTo)
{
    const Calendar berlin = calendarOf("Europe/Berlin");
    EXPECT_EQ(berlin.addingDays(instant("2024-03-30T02:30:00+01:00"), 1),
              instant("2024-03-31T03:30:00+02:00"));
    EXPECT_EQ(berlin.addingDays(instant("2024-03-30T02:30:00+01:00"), 2),
              instant("2024-04-01T02:30:00+02:00"));
}

TEST(CalendarTest, ADayThatAZoneLeftOutBeginsWithTheNext)
{
    const Calendar apia = calendarOf("Pacific/Apia");
    const Date next = instant("2011-12-31T00:00:00+14:00");
    EXPECT_EQ(apia.date(QStringLiteral("2011-12-30")), next);
    EXPECT_EQ(apia.date(QStringLiteral("2011-12-31")), next);
    EXPECT_EQ(apia.date(QStringLiteral("2011-12-29")), instant("2011-12-29T00:00:00-10:00"));
    EXPECT_EQ(apia.addingDays(instant("2011-12-31T12:00:00+14:00"), -2),
              instant("2011-12-29T12:00:00-10:00"));
}

TEST(CalendarTest, ADateIsTheMidnightOfThatDay)
{
    const Calendar newYork = calendarOf("America/New_York");
    EXPECT_EQ(newYork.date(QStringLiteral("2024-05-01")), instant("2024-05-01T00:00:00-04:00"));
    EXPECT_EQ(newYork.date(QStringLiteral("2024-02-29")), instant("2024-02-29T00:00:00-05:00"));
    EXPECT_TRUE(newYork.date(QStringLiteral("9999-12-31")));
    EXPECT_TRUE(newYork.date(QStringLiteral("0001-01-01")));
}

TEST(CalendarTest, AnyOtherTextIsNoDate)
{
    const Calendar utc = calendarOf("UTC");
    for (const char* text : {"",
                             "2024",
                             "2024-05",
                             "2024-5-1",
                             "2024-05-1",
                             "24-05-01",
                             "2024/05/01",
                             "2024-05-01 ",
                             " 2024-05-01",
                             "2024-05-01T00:00",
                             "02024-05-01",
                             "2024-13-01",
                             "2024-00-10",
                             "2024-02-30",
                             "2023-02-29",
                             "2024-05-00",
                             "0000-01-01",
                             "-024-05-01",
                             "+024-05-01",
                             "2024-+5-01",
                             "2024-05- 1",
                             "today",
                             "２０２４-０５-０１",
                             "٢٠٢٤-٠٥-٠١"})
        EXPECT_EQ(utc.date(QString::fromUtf8(text)), std::nullopt) << text;
}

TEST(CalendarTest, TheCurrentOneHasAZone)
{
    EXPECT_TRUE(Calendar::current().timeZone.isValid());
}

} // namespace
} // namespace tessary
