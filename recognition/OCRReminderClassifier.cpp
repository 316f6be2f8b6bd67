#include "recognition/OCRReminderClassifier.h"

#include "recognition/dates/DateDetector.h"

#include <QLocale>

#include <array>

namespace tessary {
namespace {

/// What tasks are told by, in the order in which it is looked for. The last five are marks of lists.
constexpr std::array<QStringView, 22> kTaskWords{
    u"TODO", u"todo", u"待办",   u"待完成", u"记得", u"提醒", u"需要", u"请", u"完成", u"安排", u"处理",
    u"购买", u"提交", u"打电话", u"发送",   u"回复", u"预定", u"- ",   u"•",  u"☐",    u"□",    u"✅",
};

bool isLineSeparator(QChar character)
{
    switch (character.unicode()) {
    case 0x000A:
    case 0x000B:
    case 0x000C:
    case 0x000D:
    case 0x0085:
    case 0x2028:
    case 0x2029:
        return true;
    default:
        return false;
    }
}

/// The first line that is not blank, trimmed; empty when there is none.
QString firstLine(QStringView text)
{
    qsizetype start = 0;
    while (start < text.size()) {
        qsizetype end = start;
        while (end < text.size() && !isLineSeparator(text.at(end)))
            ++end;
        const QStringView line = text.sliced(start, end - start).trimmed();
        if (!line.isEmpty())
            return line.toString();
        start = end + 1;
    }
    return {};
}

bool holdsTaskWord(const QString& text)
{
    const QLocale locale;
    const QString lowered = locale.toLower(text);
    return std::any_of(kTaskWords.begin(), kTaskWords.end(),
                       [&](QStringView word) { return lowered.contains(locale.toLower(word.toString())); });
}

/// A text that is a date and a time in the Chinese form, and nothing else.
std::optional<Date> wholeTextDate(const QString& text)
{
    const QLocale chinese(QLocale::Chinese, QLocale::China);
    const QDateTime time = chinese.toDateTime(text, QStringLiteral("yyyy年M月d日 HH:mm"));
    if (!time.isValid())
        return std::nullopt;
    return Date::fromDateTime(time);
}

} // namespace

std::optional<OCRReminderDraft> OCRReminderClassifier::draft(const QString& text, Date now)
{
    const QString title = firstLine(text);
    if (title.isEmpty())
        return std::nullopt;
    const std::optional<Date> date = detectDate(text, now);
    if (!date && !holdsTaskWord(text))
        return std::nullopt;
    return OCRReminderDraft{title, text, date};
}

std::optional<Date> OCRReminderClassifier::detectDate(const QString& text, Date now)
{
    if (const std::optional<Date> date = DateDetector::current().firstDate(text, now))
        return date;
    if (const std::optional<Date> date = wholeTextDate(text))
        return date;
    if (text.contains(QStringLiteral("明天")))
        return Calendar::current().addingDays(now, 1);
    if (text.contains(QStringLiteral("今天")))
        return now;
    return std::nullopt;
}

} // namespace tessary
