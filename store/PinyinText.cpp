#include "store/PinyinText.h"

#include "store/HanSyllables.h"
#include "store/LatinTransform.h"

namespace tessary {
namespace {

constexpr qsizetype kLongestPiece = 256; // UTF-16 units handed to ICU at once

constexpr bool isAscii(char16_t unit)
{
    return unit < 0x80;
}

/// Punctuation of Chinese text, which no transliteration touches and which turns up all the time.
constexpr bool isCjkPunctuation(char16_t unit)
{
    return (unit >= 0x3001 && unit <= 0x3004) || (unit >= 0x3008 && unit <= 0x3020) ||
           (unit >= 0xFF01 && unit <= 0xFF0F) || (unit >= 0xFF1A && unit <= 0xFF20) || unit == 0x2014 ||
           unit == 0x2026 || (unit >= 0x2018 && unit <= 0x201F) || unit == 0x3000;
}

/// Collects the romanised text and its compact form, and sets syllables apart from their neighbours.
class RomanisedText {
public:
    explicit RomanisedText(qsizetype expected)
    {
        m_spaced.reserve(2 * expected + 1);
        m_compact.reserve(expected);
    }

    void addAscii(char16_t unit)
    {
        const bool isUpper = unit >= u'A' && unit <= u'Z';
        const auto lower = static_cast<char16_t>(isUpper ? unit + 0x20 : unit);
        const bool isAlphanumeric = (lower >= u'a' && lower <= u'z') || (lower >= u'0' && lower <= u'9');
        if (isAlphanumeric)
            separate(false);
        m_spaced.append(QChar(lower));
        if (isAlphanumeric)
            m_compact.append(QChar(lower));
        m_last = isAlphanumeric ? Last::Alphanumeric : Last::Other;
    }
    void addPunctuation(char16_t unit)
    {
        m_spaced.append(QChar(unit));
        m_last = Last::Other;
    }
    void addSyllable(QLatin1StringView syllable)
    {
        separate(true);
        m_spaced.append(syllable);
        m_compact.append(syllable);
        m_last = Last::Syllable;
    }
    /// Text that is already romanised and lower-cased.
    void addOther(QStringView text)
    {
        bool first = true;
        for (qsizetype i = 0; i < text.size(); ++i) {
            const char32_t character = codePoint(text, i);
            const bool isAlphanumeric = QChar::isLetterOrNumber(character);
            if (first && isAlphanumeric)
                separate(false);
            first = false;
            append(m_spaced, character);
            if (isAlphanumeric)
                append(m_compact, character);
            m_last = isAlphanumeric ? Last::Alphanumeric : Last::Other;
        }
    }
    [[nodiscard]] QString joined() &&
    {
        m_spaced += QLatin1Char(' ');
        m_spaced += m_compact;
        return std::move(m_spaced);
    }

    /// The character at `index`, which is moved to its last unit.
    [[nodiscard]] static char32_t codePoint(QStringView text, qsizetype& index)
    {
        const QChar unit = text.at(index);
        if (unit.isHighSurrogate() && index + 1 < text.size() && text.at(index + 1).isLowSurrogate())
            return QChar::surrogateToUcs4(unit, text.at(++index));
        return unit.unicode();
    }

private:
    enum class Last { Other, Alphanumeric, Syllable };

    void separate(bool isSyllable)
    {
        if (m_last == Last::Syllable || (isSyllable && m_last == Last::Alphanumeric))
            m_spaced.append(QLatin1Char(' '));
    }
    static void append(QString& text, char32_t character)
    {
        if (QChar::requiresSurrogates(character)) {
            text.append(QChar(QChar::highSurrogate(character)));
            text.append(QChar(QChar::lowSurrogate(character)));
        } else {
            text.append(QChar(static_cast<char16_t>(character)));
        }
    }

    QString m_spaced;
    QString m_compact;
    Last m_last = Last::Other;
};

} // namespace

class PinyinText::Romanizer {
public:
    [[nodiscard]] QString searchText(QStringView text)
    {
        RomanisedText result(text.size());
        qsizetype runStart = 0; // of characters that only ICU can romanise
        qsizetype i = 0;
        while (i < text.size()) {
            const qsizetype end = addSimple(text, i, i > runStart, result, runStart);
            if (end > i) {
                i = runStart = end;
                continue;
            }
            const bool isPair = text.at(i).isHighSurrogate() && i + 1 < text.size();
            i += isPair ? 2 : 1;
            if (i - runStart >= kLongestPiece) {
                addRun(text.sliced(runStart, i - runStart), result);
                runStart = i;
            }
        }
        addRun(text.sliced(runStart), result);
        return std::move(result).joined();
    }

private:
    /// Adds what needs no ICU at `start`, behind the run before it.
    /// @returns where that ends; `start` itself when the character belongs into a run.
    qsizetype addSimple(QStringView text, qsizetype start, bool isInRun, RomanisedText& result,
                        qsizetype runStart)
    {
        const char16_t unit = text.at(start).unicode();
        if (isAscii(unit)) {
            addRun(text.sliced(runStart, start - runStart), result);
            result.addAscii(unit);
            return start + 1;
        }
        if (isCjkPunctuation(unit))
            return isInRun ? start : addPunctuation(text, start, result);
        qsizetype last = start;
        const QLatin1StringView syllable = m_syllables.of(RomanisedText::codePoint(text, last), m_latin);
        if (syllable.isEmpty())
            return start;
        addRun(text.sliced(runStart, start - runStart), result);
        result.addSyllable(syllable);
        return last + 1;
    }

    /// Punctuation beside a script of its own is that script's, which may have its own way with it.
    qsizetype addPunctuation(QStringView text, qsizetype start, RomanisedText& result)
    {
        qsizetype end = start;
        while (end < text.size() && isCjkPunctuation(text.at(end).unicode()))
            ++end;
        if (end < text.size() && !isAscii(text.at(end).unicode())) {
            qsizetype next = end;
            if (m_syllables.of(RomanisedText::codePoint(text, next), m_latin).isEmpty())
                return start;
        }
        for (qsizetype i = start; i < end; ++i)
            result.addPunctuation(text.at(i).unicode());
        return end;
    }

    void addRun(QStringView run, RomanisedText& result)
    {
        if (!run.isEmpty())
            result.addOther(m_latin.romanised(run));
    }

    LatinTransform m_latin;
    HanSyllables m_syllables;
};

PinyinText::PinyinText() : m_romanizer(std::make_unique<Romanizer>()) {}
PinyinText::~PinyinText() = default;
PinyinText::PinyinText(PinyinText&&) noexcept = default;
PinyinText& PinyinText::operator=(PinyinText&&) noexcept = default;

QString PinyinText::searchText(QStringView text)
{
    return m_romanizer->searchText(text);
}

} // namespace tessary
