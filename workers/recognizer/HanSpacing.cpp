#include "workers/recognizer/HanSpacing.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <optional>
#include <vector>

namespace tessary::recognizer {
namespace {

// Parts of a line's height, which is what a Han character is wide.
constexpr double kBlankBesideHan = 0.27; ///< From here on, what lies between Han and Latin is a blank.
constexpr double kBlankBetweenHan = 0.5;
constexpr double kMoreThanUsual = 0.35; ///< The same above what lies between most: terminals set Han apart.
constexpr double kWideSign = 0.56;      ///< From here on, the free half of a full-width sign.
constexpr double kCentredSign = 0.25;   ///< The same before a sign that stands in the middle of its field.
constexpr double kBlankBesideWideSign = 1.1;

enum class Kind { Latin, Han, Opening, Closing, WideOpening, WideClosing };

char32_t characterOf(const ReadSymbol& symbol)
{
    const auto points = symbol.text.toUcs4();
    return points.isEmpty() ? 0 : points.first();
}

bool isOneOf(char32_t character, QStringView set)
{
    return character != 0 && character < 0x10000 && set.contains(QChar(char16_t(character)));
}

Kind kindOf(char32_t character)
{
    if (isOneOf(character, u"「『（【《〈〔〖［｛"))
        return Kind::WideOpening;
    if (isOneOf(character, u"」』）】》〉〕〗］｝，。、；：！？"))
        return Kind::WideClosing;
    if (isOneOf(character, u"([{“‘"))
        return Kind::Opening;
    if (isOneOf(character, u")]},.;:!?”’"))
        return Kind::Closing;
    return isWide(character) ? Kind::Han : Kind::Latin;
}

/// The full-width form of a sign that has one.
std::optional<QChar> wideForm(char32_t sign)
{
    constexpr QStringView kNarrow = u"(),:;!?";
    constexpr QStringView kWide = u"（），：；！？";
    for (qsizetype i = 0; i < kNarrow.size(); ++i)
        if (kNarrow.at(i).unicode() == sign)
            return kWide.at(i);
    return std::nullopt;
}

/// A line on its way to text: what stands where, and which of the signs are really full-width.
class Line {
public:
    explicit Line(LineReading reading) : m_symbols(std::move(reading))
    {
        dropDoubles();
        pairQuotes();
        for (qsizetype i = 0; i < m_symbols.size(); ++i)
            widen(i);
        m_usualGap = usualGap();
    }

    [[nodiscard]] QString text() const
    {
        QString result;
        for (qsizetype i = 0; i < m_symbols.size(); ++i) {
            if (i > 0 && blankBefore(i))
                result.append(QLatin1Char(' '));
            result.append(m_symbols.at(i).text);
        }
        return result;
    }

private:
    [[nodiscard]] Kind kind(qsizetype i) const { return m_kinds.at(i); }
    [[nodiscard]] bool isHan(qsizetype i) const
    {
        return i >= 0 && i < m_symbols.size() &&
               (kind(i) == Kind::Han || kind(i) == Kind::WideOpening || kind(i) == Kind::WideClosing);
    }
    [[nodiscard]] double gapBefore(qsizetype i) const
    {
        return i < m_symbols.size() ? m_symbols.at(i).gapBefore : 0;
    }

    /// The median gap between Han characters; 0 where there are too few to tell.
    [[nodiscard]] double usualGap() const
    {
        constexpr size_t kFewest = 4;
        std::vector<double> gaps;
        for (qsizetype i = 1; i < m_symbols.size(); ++i)
            if (kind(i - 1) == Kind::Han && kind(i) == Kind::Han)
                gaps.push_back(gapBefore(i));
        if (gaps.size() < kFewest)
            return 0;
        const auto middle = gaps.begin() + std::ptrdiff_t(gaps.size() / 2);
        std::nth_element(gaps.begin(), middle, gaps.end());
        return *middle;
    }

    /// Drops the comma that engines see in the stop behind it.
    void dropDoubles()
    {
        for (qsizetype i = m_symbols.size() - 2; i >= 0; --i)
            if (m_symbols.at(i).text == QLatin1String(",") &&
                m_symbols.at(i + 1).text == QStringLiteral("。"))
                m_symbols.removeAt(i);
    }

    /// Quotation marks open and close by turns; where one of a pair is curved, so is the other.
    void pairQuotes()
    {
        qsizetype opened = -1;
        for (qsizetype i = 0; i < m_symbols.size(); ++i) {
            const char32_t character = characterOf(m_symbols.at(i));
            m_kinds.append(kindOf(character));
            if (character != U'"' && character != U'“' && character != U'”')
                continue;
            m_kinds[i] = opened < 0 ? Kind::Opening : Kind::Closing;
            if (opened >= 0 && (character != U'"' || m_symbols.at(opened).text != QLatin1String("\""))) {
                m_symbols[opened].text = QStringLiteral("“");
                m_symbols[i].text = QStringLiteral("”");
            }
            opened = opened < 0 ? i : -1;
        }
    }

    /// Engines read many a full-width sign as a narrow one with a blank.
    void widen(qsizetype i)
    {
        const std::optional<QChar> wide = wideForm(characterOf(m_symbols.at(i)));
        if (!wide)
            return;
        const bool last = i + 1 == m_symbols.size();
        const bool closesWide = kind(i) == Kind::Closing && isHan(i - 1) &&
                                (gapBefore(i) >= kCentredSign || gapBefore(i + 1) >= kWideSign || last);
        const bool closesLatin = kind(i) == Kind::Closing && isHan(i + 1) && gapBefore(i + 1) >= kWideSign;
        const bool opensWide = kind(i) == Kind::Opening && isHan(i + 1) &&
                               (gapBefore(i) >= kWideSign || gapBefore(i + 1) >= kCentredSign);
        if (closesWide || closesLatin || opensWide) {
            m_symbols[i].text = *wide;
            m_kinds[i] = kind(i) == Kind::Opening ? Kind::WideOpening : Kind::WideClosing;
        }
    }

    [[nodiscard]] bool blankBefore(qsizetype i) const
    {
        const Kind before = kind(i - 1);
        const Kind here = kind(i);
        const double gap = gapBefore(i);
        const bool engine = m_symbols.at(i).blankBefore;
        if (!aroundHan(i))
            return engine;
        if (here == Kind::Closing || before == Kind::Opening)
            return false;
        if (before == Kind::WideOpening || before == Kind::WideClosing || here == Kind::WideOpening ||
            here == Kind::WideClosing)
            return gap >= kBlankBesideWideSign;
        if (before == Kind::Han && here == Kind::Han)
            return engine && gap >= std::max(kBlankBetweenHan, m_usualGap + kMoreThanUsual);
        if (here == Kind::Opening || (before == Kind::Closing && wideForm(characterOf(m_symbols.at(i - 1)))))
            return gap >= kBlankBesideHan && gap < kWideSign;
        return gap >= kBlankBesideHan;
    }
    /// Whether Han stands beside this place, or behind the sign there.
    [[nodiscard]] bool aroundHan(qsizetype i) const
    {
        const bool signBefore = kind(i - 1) == Kind::Closing || kind(i - 1) == Kind::Opening;
        const bool signHere = kind(i) == Kind::Closing || kind(i) == Kind::Opening;
        return isHan(i - 1) || isHan(i) || (signBefore && isHan(i - 2)) || (signHere && isHan(i + 1));
    }

    LineReading m_symbols;
    QList<Kind> m_kinds;
    double m_usualGap = 0;
};

} // namespace

bool isWide(char32_t character)
{
    const int width = u_getIntPropertyValue(UChar32(character), UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH;
}

QString textOf(const LineReading& reading)
{
    return Line(reading).text();
}

} // namespace tessary::recognizer
