#include "bench/tools/SampleTexts.h"

#include <cmath>

namespace tessary::bench {
namespace {

constexpr double kShortest = 10;
constexpr double kLongest = 2000;
constexpr double kBend = 3.3; // the larger, the more of them are short

bool endsWord(QChar unit)
{
    return unit.isSpace() || unit == u'。' || unit == u'，' || unit == u'、';
}

bool isLatin(QChar unit)
{
    return unit.isLetterOrNumber() && unit.unicode() < 0x2000;
}

/// Cut to that length, or before a Latin word or a pair of surrogates that would be cut in two.
void shorten(QString& text, qsizetype length)
{
    if (text.size() <= length)
        return;
    qsizetype end = length;
    while (end > length / 2 && isLatin(text.at(end - 1)) && isLatin(text.at(end)))
        --end;
    if (text.at(end - 1).isHighSurrogate())
        --end;
    text.truncate(end);
}

} // namespace

SampleTexts::SampleTexts(quint64 seed) : m_random(seed), m_texts(DebianTexts::installed()) {}

qsizetype SampleTexts::below(qsizetype limit)
{
    return static_cast<qsizetype>(m_random() % static_cast<quint64>(limit));
}

qsizetype SampleTexts::start(const QString& paragraph)
{
    if (below(3) == 0)
        return 0;
    qsizetype at = below(paragraph.size());
    while (at > 0 && !endsWord(paragraph.at(at - 1)))
        --at;
    return at;
}

QString SampleTexts::passage(const QStringList& paragraphs, qsizetype length)
{
    qsizetype index = below(paragraphs.size());
    QString text = paragraphs.at(index).sliced(start(paragraphs.at(index)));
    while (text.size() < length)
        text += QLatin1Char('\n') + paragraphs.at(++index % paragraphs.size());
    shorten(text, length);
    return text.trimmed();
}

QString SampleTexts::chinese(qsizetype length)
{
    return passage(m_texts.chinese, length);
}

QString SampleTexts::japanese(qsizetype length)
{
    return passage(m_texts.japanese, length);
}

QString SampleTexts::english(qsizetype length)
{
    return passage(m_texts.english, length);
}

QString SampleTexts::code(qsizetype length)
{
    return passage(m_texts.code, length);
}

QString SampleTexts::mixed(qsizetype length)
{
    constexpr qsizetype kPart = 40;
    QString text;
    while (text.size() < length)
        text += chinese(4 + below(kPart)) + QLatin1Char(' ') + english(4 + below(kPart)) + QLatin1Char('\n');
    shorten(text, length);
    return text.trimmed();
}

QString SampleTexts::message()
{
    return m_texts.messages.at(below(m_texts.messages.size()));
}

QString SampleTexts::ofAnyKind(qsizetype length)
{
    constexpr qsizetype kParts = 20; // of which each kind has some
    const qsizetype part = below(kParts);
    if (part < 7)
        return chinese(length);
    if (part < 12)
        return english(length);
    if (part < 14)
        return japanese(length);
    if (part < 16)
        return mixed(length);
    if (part < 19)
        return code(length);
    return message();
}

QString SampleTexts::next(Source source)
{
    const double share = std::pow(std::generate_canonical<double, 32>(m_random), kBend);
    const auto length = static_cast<qsizetype>(kShortest * std::pow(kLongest / kShortest, share));
    QString text = source == Source::Former ? passage(m_texts.policy, length) : ofAnyKind(length);
    while (text.size() < static_cast<qsizetype>(kShortest))
        text += QLatin1Char(' ') + message();
    ++m_number;
    const qsizetype before = m_used.size();
    m_used.insert(qHash(text));
    if (m_used.size() == before)
        text += QStringLiteral(" %1").arg(m_number);
    return text;
}

} // namespace tessary::bench
