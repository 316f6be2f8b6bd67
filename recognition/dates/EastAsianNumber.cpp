#include "recognition/dates/EastAsianNumber.h"

namespace tessary {
namespace {

constexpr QStringView kDigits = u"零一二三四五六七八九";
constexpr int kYearDigits = 4;
constexpr int kTen = 10;

std::optional<int> wordDigit(QChar character)
{
    if (character == u'〇' || character == u'○')
        return 0;
    if (character == u'两' || character == u'兩')
        return 2;
    const qsizetype index = character.isNull() ? -1 : kDigits.indexOf(character);
    if (index < 0)
        return std::nullopt;
    return static_cast<int>(index);
}

/// How many tens stand here: 十 is one, 二十 two, 廿 two.
std::optional<int> takeTens(TextScanner& scanner)
{
    if (scanner.take(u'十'))
        return 1;
    if (scanner.take(u'廿'))
        return 2;
    if (scanner.take(u'卅'))
        return 3;
    const std::optional<int> digit = wordDigit(scanner.peek());
    if (!digit || *digit < 2 || scanner.peek(1) != u'十')
        return std::nullopt;
    scanner.advance(2);
    return digit;
}

} // namespace

std::optional<int> EastAsianNumber::take(TextScanner& scanner)
{
    if (TextScanner::digit(scanner.peek()))
        return scanner.takeNumber(1, 2);
    const TextScanner start = scanner;
    const std::optional<int> tens = takeTens(scanner);
    int value = tens.value_or(0) * kTen;
    bool any = tens.has_value();
    if (!tens && (scanner.peek() == u'零' || scanner.peek() == u'〇') && wordDigit(scanner.peek(1)))
        scanner.advance(1);
    if (const std::optional<int> ones = wordDigit(scanner.peek())) {
        value += *ones;
        any = true;
        scanner.advance(1);
    }
    if (!any || isPart(scanner.peek())) {
        scanner = start;
        return std::nullopt;
    }
    return value;
}

std::optional<int> EastAsianNumber::takeYear(TextScanner& scanner)
{
    if (TextScanner::digit(scanner.peek()))
        return scanner.takeNumber(kYearDigits, kYearDigits);
    int year = 0;
    for (int index = 0; index < kYearDigits; ++index) {
        const std::optional<int> digit = wordDigit(scanner.peek(index));
        if (!digit)
            return std::nullopt;
        year = year * kTen + *digit;
    }
    scanner.advance(kYearDigits);
    return year;
}

bool EastAsianNumber::isPart(QChar character)
{
    constexpr QStringView kOthers = u"十百千万廿卅";
    return TextScanner::digit(character) || wordDigit(character) ||
           (!character.isNull() && kOthers.contains(character));
}

bool EastAsianNumber::canBegin(const TextScanner& scanner)
{
    if (isPart(scanner.peek(-1)) || scanner.peek(-1) == u'第')
        return false;
    return !TextScanner::digit(scanner.peek()) || scanner.beginsNumber();
}

} // namespace tessary
