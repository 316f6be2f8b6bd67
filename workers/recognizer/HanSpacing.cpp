#include "workers/recognizer/HanSpacing.h"

#include <unicode/uchar.h>

namespace tessary::recognizer {
namespace {

char32_t firstOf(const QString& text)
{
    const auto points = text.toUcs4();
    return points.isEmpty() ? 0 : points.first();
}

char32_t lastOf(const QString& text)
{
    const auto points = text.toUcs4();
    return points.isEmpty() ? 0 : points.last();
}

bool isWideSign(char32_t character)
{
    return isWide(character) && u_ispunct(UChar32(character)) != 0;
}

bool keepsBlank(char32_t before, char32_t after)
{
    if (isWideSign(before) || isWideSign(after))
        return false;
    return !(isWide(before) && isWide(after));
}

} // namespace

bool isWide(char32_t character)
{
    const int width = u_getIntPropertyValue(UChar32(character), UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH;
}

QString textOf(const LineReading& reading)
{
    QString text;
    for (const ReadSymbol& symbol : reading) {
        if (symbol.blankBefore && !text.isEmpty() && keepsBlank(lastOf(text), firstOf(symbol.text)))
            text.append(QLatin1Char(' '));
        text.append(symbol.text);
    }
    return text;
}

} // namespace tessary::recognizer
