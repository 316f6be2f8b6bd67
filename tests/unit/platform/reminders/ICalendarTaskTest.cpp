#include "platform/reminders/ICalendarTask.h"

#include <QTimeZone>

#include <gtest/gtest.h>
#include <libical/ical.h>

namespace tessary {
namespace {

QDateTime noon()
{
    return {QDate(2026, 3, 4), QTime(12, 0, 5), QTimeZone::utc()};
}

/// What another reader makes of a file.
struct ReadTask {
    explicit ReadTask(const QByteArray& document)
        : calendar(icalparser_parse_string(document.constData()), &icalcomponent_free),
          task(icalcomponent_get_first_component(calendar.get(), ICAL_VTODO_COMPONENT))
    {
    }
    [[nodiscard]] int count(icalproperty_kind kind = ICAL_ANY_PROPERTY) const
    {
        return icalcomponent_count_properties(task, kind);
    }
    [[nodiscard]] QString summary() const { return QString::fromUtf8(icalcomponent_get_summary(task)); }
    [[nodiscard]] QString notes() const { return QString::fromUtf8(icalcomponent_get_description(task)); }

    std::unique_ptr<icalcomponent, decltype(&icalcomponent_free)> calendar;
    icalcomponent* task;
};

QByteArray documentOf(const NewReminder& reminder)
{
    return ICalendarTask(reminder, QStringLiteral("an-id"), noon()).document();
}

NewReminder titled(const QString& title, const QString& notes = {})
{
    return {.list = {}, .title = title, .notes = notes, .due = std::nullopt};
}

TEST(ICalendarTaskTest, ATaskHasItsTextsItsIdAndTheTimeItWasMade)
{
    const QByteArray document = documentOf(titled(QStringLiteral("买牛奶"), QStringLiteral("买牛奶\n两盒")));
    const ReadTask read(document);
    EXPECT_EQ(read.summary(), QStringLiteral("买牛奶"));
    EXPECT_EQ(read.notes(), QStringLiteral("买牛奶\n两盒"));
    for (const char* line : {"BEGIN:VCALENDAR\r\n", "\r\nVERSION:2.0\r\n", "\r\nUID:an-id\r\n",
                             "\r\nDTSTAMP:20260304T120005Z\r\n", "\r\nCREATED:20260304T120005Z\r\n",
                             "\r\nLAST-MODIFIED:20260304T120005Z\r\n", "\r\nEND:VCALENDAR\r\n"})
        EXPECT_TRUE(document.contains(line)) << line;
    EXPECT_EQ(read.count(), 6) << "and nothing else: no alarm, no priority, no due date";
    EXPECT_EQ(icalcomponent_count_components(read.task, ICAL_ANY_COMPONENT), 0);
}

TEST(ICalendarTaskTest, ADueDateIsATimeOnTheWallWithoutAZone)
{
    NewReminder reminder = titled(QStringLiteral("会议"));
    reminder.due = ReminderDateComponents{.year = 2026, .month = 3, .day = 5, .hour = 18, .minute = 30};
    const QByteArray document = documentOf(reminder);
    EXPECT_TRUE(document.contains("\r\nDUE:20260305T183000\r\n")) << document.constData();
    const icaltimetype due = icalcomponent_get_due(ReadTask(document).task);
    EXPECT_EQ(due.zone, nullptr);
    EXPECT_FALSE(icaltime_is_utc(due));
    EXPECT_FALSE(due.is_date);
}

TEST(ICalendarTaskTest, WhatHasAMeaningInTheFormatIsReadBackAsItWas)
{
    for (const char* text :
         {"a, b; c", R"(C:\new\folder\,)", "\"quoted\":;x=y", "\n\nlines\n\n", "a\ttab",
          "BEGIN:VTODO\nEND:VTODO\nEND:VCALENDAR", "\\n is no line end", "😀 and e\u0301"}) {
        const ReadTask read(documentOf(titled(QStringLiteral("t"), QString::fromUtf8(text))));
        ASSERT_NE(read.task, nullptr) << text;
        EXPECT_EQ(read.notes(), QString::fromUtf8(text));
        EXPECT_EQ(read.count(), 6) << text;
    }
}

TEST(ICalendarTaskTest, BlanksAtTheEndsAreWritten)
{
    EXPECT_TRUE(documentOf(titled(QStringLiteral(" a "))).contains("\r\nSUMMARY: a \r\n"));
}

TEST(ICalendarTaskTest, LongTextsAreFoldedBetweenCharactersAndStayWhole)
{
    for (int shift = 0; shift < 6; ++shift) {
        QString title(shift, QLatin1Char('x'));
        for (int i = 0; i < 3000; ++i)
            title += QStringLiteral("提醒,事项；a😀\\");
        const QByteArray document = documentOf(titled(title, title));
        EXPECT_EQ(ReadTask(document).summary(), title);
        EXPECT_EQ(ReadTask(document).notes(), title);
        for (const QByteArray& line : document.split('\n')) {
            EXPECT_LE(line.size(), 76) << "75 octets and a carriage return";
            EXPECT_EQ(QString::fromUtf8(line).toUtf8(), line) << "no character is cut";
        }
    }
}

TEST(ICalendarTaskTest, ControlCharactersAreLeftOutAndLineEndsAreOneKind)
{
    QString text = QStringLiteral("a\r\nb\rc\x01\x1b\x7f");
    text.append(QChar(QChar::Null)).append(QStringLiteral("d"));
    const QByteArray document = documentOf(titled(text, text));
    EXPECT_EQ(ReadTask(document).summary(), QStringLiteral("a\nb\ncd"));
    EXPECT_EQ(ReadTask(document).notes(), QStringLiteral("a\nb\ncd"));
    for (const char byte : document)
        EXPECT_TRUE(byte == '\r' || byte == '\n' || static_cast<unsigned char>(byte) >= ' ');
}

TEST(ICalendarTaskTest, HalfACharacterDoesNotSpoilTheText)
{
    QString text = QStringLiteral("ab");
    text.insert(1, QChar(0xd83d));
    EXPECT_EQ(ReadTask(documentOf(titled(text))).summary(), QStringLiteral("a?b"));
}

TEST(ICalendarTaskTest, TheComponentAloneIsTheSameTask)
{
    const ICalendarTask task(titled(QStringLiteral("a")), QStringLiteral("b"), noon());
    EXPECT_TRUE(task.component().startsWith("BEGIN:VTODO\r\n"));
    EXPECT_TRUE(task.document().contains(task.component()));
}

} // namespace
} // namespace tessary
