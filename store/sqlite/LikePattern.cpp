#include "store/sqlite/LikePattern.h"

#include <cstring>
#include <string_view>

namespace tessary {
namespace {

/// Longer needles are looked for by a method whose time does not depend on the needle.
constexpr qsizetype kLongNeedle = 128;
constexpr unsigned char kAsciiEnd = 0x80;

unsigned char folded(char byte)
{
    const auto value = static_cast<unsigned char>(byte);
    return value >= 'A' && value <= 'Z' ? static_cast<unsigned char>(value | 0x20U) : value;
}

QByteArray foldedBytes(QByteArrayView text)
{
    QByteArray result(text.size(), Qt::Uninitialized);
    std::transform(text.begin(), text.end(), result.begin(),
                   [](char byte) { return static_cast<char>(folded(byte)); });
    return result;
}

bool isFirstOfCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

/// How common a byte is in texts, roughly: letters in the order in which English uses them, and of Chinese
/// the first bytes of its characters, all in a narrow range, before the others.
int commonness(unsigned char byte)
{
    constexpr std::string_view kSeldomFirst = "zqjxkvbywgpfmucdlhrsnioate ";
    constexpr int kOther = 8;
    constexpr int kFirstOfChinese = 30;
    constexpr int kFollowing = 6;
    if (byte >= 0xE0)
        return kFirstOfChinese;
    if (byte >= kAsciiEnd)
        return kFollowing;
    const auto place = kSeldomFirst.find(static_cast<char>(byte));
    return place == std::string_view::npos ? kOther : static_cast<int>(place);
}

bool startsWithNeedle(const char* text, const QByteArray& needle)
{
    return std::equal(needle.begin(), needle.end(), text, [](char wanted, char found) {
        return static_cast<unsigned char>(wanted) == folded(found);
    });
}

/// What stands between wild cards, where it is longest.
QByteArray longestLiteral(QByteArrayView pattern)
{
    QByteArrayView longest;
    const char* begin = pattern.begin();
    while (begin != pattern.end()) {
        const char* const end =
            std::find_if(begin, pattern.end(), [](char byte) { return byte == '%' || byte == '_'; });
        if (end - begin > longest.size())
            longest = QByteArrayView(begin, end);
        begin = end == pattern.end() ? end : end + 1;
    }
    return longest.toByteArray();
}

/// The places of one byte value in a text, in order.
class Places {
public:
    Places(QByteArrayView text, char byte) : m_byte(byte), m_end(text.end()) { find(text.begin()); }

    [[nodiscard]] const char* place() const { return m_place; } ///< The text's end when there is none.
    void next() { find(m_place + 1); }

private:
    void find(const char* from)
    {
        const void* found = std::memchr(from, m_byte, static_cast<size_t>(m_end - from));
        m_place = found == nullptr ? m_end : static_cast<const char*>(found);
    }

    char m_byte;
    const char* m_end;
    const char* m_place = nullptr;
};

} // namespace

LikePattern::LikePattern(QByteArrayView pattern) : m_pattern(foldedBytes(pattern))
{
    m_needle = longestLiteral(m_pattern);
    m_isNeedle =
        m_pattern.size() == m_needle.size() + 2 && m_pattern.startsWith('%') && m_pattern.endsWith('%');
    const auto isRarer = [](char one, char other) {
        return commonness(static_cast<unsigned char>(one)) < commonness(static_cast<unsigned char>(other));
    };
    m_rarest = std::min_element(m_needle.begin(), m_needle.end(), isRarer) - m_needle.begin();
}

bool LikePattern::matches(QByteArrayView text) const
{
    return hasNeedle(text) && (m_isNeedle || matchesGeneral(text));
}

bool LikePattern::hasNeedle(QByteArrayView text) const
{
    if (m_needle.isEmpty())
        return true;
    if (text.size() < m_needle.size())
        return false;
    return m_needle.size() > kLongNeedle ? containsLong(text) : contains(text);
}

bool LikePattern::contains(QByteArrayView text) const
{
    // The rarest byte can only stand where there is room for the needle around it.
    const QByteArrayView candidates = text.sliced(m_rarest, text.size() - m_needle.size() + 1);
    const char rarest = m_needle.at(m_rarest);
    const bool isLetter = rarest >= 'a' && rarest <= 'z';
    Places lower(candidates, rarest);
    Places upper(isLetter ? candidates : candidates.last(0), static_cast<char>(rarest & ~0x20));
    while (lower.place() != candidates.end() || upper.place() != candidates.end()) {
        Places& first = lower.place() <= upper.place() ? lower : upper;
        if (startsWithNeedle(first.place() - m_rarest, m_needle))
            return true;
        first.next();
    }
    return false;
}

bool LikePattern::containsLong(QByteArrayView text) const
{
    const QByteArray haystack = foldedBytes(text);
    return memmem(haystack.constData(), static_cast<size_t>(haystack.size()), m_needle.constData(),
                  static_cast<size_t>(m_needle.size())) != nullptr;
}

bool LikePattern::matchesGeneral(QByteArrayView text) const
{
    const char* at = text.begin();
    const char* wanted = m_pattern.begin();
    const char* afterPercent = nullptr; // of the pattern, behind the last % met
    const char* retry = nullptr;        // of the text, where what follows that % was tried last
    const auto skipCharacter = [end = text.end()](const char*& place) {
        do {
            ++place;
        } while (place != end && !isFirstOfCharacter(*place));
    };
    while (at != text.end()) {
        if (wanted != m_pattern.end() && *wanted == '%') {
            afterPercent = ++wanted;
            retry = at;
        } else if (wanted != m_pattern.end() && *wanted == '_') {
            skipCharacter(at);
            ++wanted;
        } else if (wanted != m_pattern.end() && static_cast<unsigned char>(*wanted) == folded(*at)) {
            ++at;
            ++wanted;
        } else if (afterPercent != nullptr) {
            skipCharacter(retry);
            at = retry;
            wanted = afterPercent;
        } else {
            return false;
        }
    }
    return std::all_of(wanted, m_pattern.end(), [](char rest) { return rest == '%'; });
}

} // namespace tessary
