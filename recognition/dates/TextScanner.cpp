#include "recognition/dates/TextScanner.h"

#include <QString>

#include <algorithm>

namespace tessary {
namespace {

constexpr int kMostBlanks = 3;
constexpr qsizetype kLongestWord = 12;
constexpr char16_t kWideZero = u'０';
constexpr char16_t kWideNine = u'９';

bool isBlank(QChar character)
{
    return character == u' ' || character == u'\t' || character == QChar::Nbsp || character == u'\u3000';
}

} // namespace

QChar TextScanner::narrow(QChar character)
{
    if (character >= kWideZero && character <= kWideNine)
        return QChar(static_cast<char16_t>(character.unicode() - kWideZero + u'0'));
    return character == u'：' ? QChar(u':') : character;
}

QChar TextScanner::peek(qsizetype ahead) const
{
    const qsizetype index = m_position + ahead;
    return index >= 0 && index < m_text.size() ? narrow(m_text.at(index)) : QChar();
}

bool TextScanner::skipBlanks()
{
    int count = 0;
    while (count < kMostBlanks && isBlank(peek())) {
        advance(1);
        ++count;
    }
    return count > 0;
}

bool TextScanner::take(QChar character)
{
    if (peek() != character || peek().isNull())
        return false;
    advance(1);
    return true;
}

bool TextScanner::take(QStringView literal)
{
    if (m_position > m_text.size() || !m_text.sliced(m_position).startsWith(literal))
        return false;
    advance(literal.size());
    return true;
}

bool TextScanner::takeWord(QLatin1String word)
{
    // Most words differ in their first letter, and this is asked of every word of a text.
    if (peek().toLower() != QChar(word.front()).toLower() || !beginsWord() ||
        !m_text.sliced(m_position).startsWith(word, Qt::CaseInsensitive) || isAsciiLetter(peek(word.size())))
        return false;
    advance(word.size());
    return true;
}

std::optional<int> TextScanner::takeOneOf(std::initializer_list<QStringView> literals)
{
    int index = 0;
    for (const QStringView literal : literals) {
        if (take(literal))
            return index;
        ++index;
    }
    return std::nullopt;
}

std::optional<int> TextScanner::takeNumber(int fewest, int most)
{
    int value = 0;
    int count = 0;
    while (count < most) {
        const std::optional<int> next = digit(peek(count));
        if (!next)
            break;
        value = value * 10 + *next;
        ++count;
    }
    if (count < fewest || digit(peek(count)))
        return std::nullopt;
    advance(count);
    return value;
}

bool TextScanner::beginsNumber() const
{
    const QChar before = peek(-1);
    if (digit(before) || isAsciiLetter(before))
        return false;
    constexpr QStringView kJoints = u".-/:_,+#$¥￥€£%@\\=&~";
    if (!kJoints.contains(before))
        return true;
    // A sign of punctuation that does not join it to anything.
    constexpr QStringView kSentence = u",:~.";
    return kSentence.contains(before) && !digit(peek(-2)) && !isAsciiLetter(peek(-2));
}

bool TextScanner::endsNumber() const
{
    const QChar next = peek();
    if (digit(next) || isAsciiLetter(next) || next == u'_' || next == u'%' || next == u'/')
        return false;
    constexpr QStringView kJoints = u".-:";
    return !kJoints.contains(next) || (!digit(peek(1)) && !isAsciiLetter(peek(1)));
}

bool TextScanner::beginsWord() const
{
    const QChar before = peek(-1);
    return !isAsciiLetter(before) && before != u'_' && before != u'.' && before != u'/' && before != u'-';
}

bool TextScanner::endsWord() const
{
    return !isAsciiLetter(peek()) && peek() != u'_';
}

QString TextScanner::wordBefore() const
{
    qsizetype end = m_position;
    while (end > 0 && m_position - end < kMostBlanks && isBlank(m_text.at(end - 1)))
        --end;
    qsizetype start = end;
    while (start > 0 && end - start < kLongestWord && isAsciiLetter(m_text.at(start - 1)))
        --start;
    return m_text.sliced(start, end - start).toString().toLower();
}

std::optional<int> TextScanner::digit(QChar character)
{
    const char16_t unit = narrow(character).unicode();
    if (unit < u'0' || unit > u'9')
        return std::nullopt;
    return unit - u'0';
}

bool TextScanner::isAsciiLetter(QChar character)
{
    const char16_t unit = character.unicode();
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

} // namespace tessary
