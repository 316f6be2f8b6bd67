#include "bench/search/SampleWords.h"

#include <QHash>
#include <QSet>

#include <algorithm>

namespace tessary::bench {
namespace {

constexpr qint64 kTextsRead = 40'000;
constexpr qint64 kOldShare = 50; // as in SampleLibrary: the oldest fiftieth has words of its own
constexpr qint64 kFewest = 2;
constexpr qint64 kMost = 40;

using Counts = QHash<QString, qint64>;

bool isHan(QChar unit)
{
    return unit.unicode() >= 0x4E00 && unit.unicode() <= 0x9FFF;
}

bool isLetter(QChar unit)
{
    return unit.unicode() < 0x80 && unit.isLetter();
}

/// In how many of the texts read each piece is.
class Census {
public:
    void read(const QString& text)
    {
        const QString lower = text.toLower();
        if (text.size() > 1 && isHan(text.at(0)) && isHan(text.at(1)))
            ++hanStarts[text.left(2)];
        countWords(lower);
        countCharacters(lower);
    }

    Counts words;
    Counts pairs; // of words, with a space between them
    Counts letters;
    Counts twoLetters;
    Counts han;
    Counts twoHan;
    Counts hanStarts; // two characters with which texts begin

private:
    static void addTo(Counts& counts, const QSet<QString>& pieces)
    {
        for (const QString& piece : pieces)
            ++counts[piece];
    }

    void countWords(const QString& text)
    {
        constexpr qsizetype kShortest = 3;
        QSet<QString> found;
        QSet<QString> foundPairs;
        QString before;
        for (const QString& word : text.split(QLatin1Char(' '))) {
            const bool isWord = word.size() >= kShortest && std::all_of(word.begin(), word.end(), isLetter);
            if (isWord)
                found.insert(word);
            if (isWord && !before.isEmpty() && before != word)
                foundPairs.insert(before + QLatin1Char(' ') + word);
            before = isWord ? word : QString();
        }
        addTo(words, found);
        addTo(pairs, foundPairs);
    }

    void countCharacters(const QString& text)
    {
        QSet<QString> one[2];
        QSet<QString> two[2];
        for (qsizetype i = 0; i < text.size(); ++i) {
            const QChar unit = text.at(i);
            if (!isHan(unit) && !isLetter(unit))
                continue;
            const size_t kind = isHan(unit) ? 1 : 0;
            one[kind].insert(QString(unit));
            const bool isPair =
                i + 1 < text.size() && (kind == 1 ? isHan(text.at(i + 1)) : isLetter(text.at(i + 1)));
            if (isPair)
                two[kind].insert(text.mid(i, 2));
        }
        addTo(letters, one[0]);
        addTo(twoLetters, two[0]);
        addTo(han, one[1]);
        addTo(twoHan, two[1]);
    }
};

/// The most frequent first; those of one frequency in the order of their spelling.
QStringList byFrequency(const Counts& counts)
{
    QStringList pieces = counts.keys();
    std::sort(pieces.begin(), pieces.end(), [&](const QString& left, const QString& right) {
        return std::pair(-counts.value(left), left) < std::pair(-counts.value(right), right);
    });
    return pieces;
}

class Library {
public:
    explicit Library(SQLiteConnection& connection)
        : m_connection(connection),
          m_last(connection.integerResult("SELECT max(rowid) FROM screenshots"))
    {
    }

    [[nodiscard]] qint64 firstNewRow() const { return m_last / kOldShare + 1; }

    void read(Census& census, qint64 from, qint64 to)
    {
        const qint64 step = std::max<qint64>(1, (to - from) / kTextsRead);
        SQLiteStatement rows = m_connection.query("SELECT content_text FROM screenshots WHERE rowid >= ? AND "
                                                  "rowid < ? AND rowid % ? = 0",
                                                  {from, to, step});
        while (rows.nextRow())
            census.read(rows.text(0));
    }
    [[nodiscard]] Census census()
    {
        Census census;
        read(census, 0, m_last + 1);
        return census;
    }
    [[nodiscard]] qint64 count(const QString& piece, qint64 from = 0)
    {
        return m_connection.integerResult(
            "SELECT count(*) FROM screenshots WHERE content_text LIKE ? AND rowid >= ?",
            {QString(u'%' + piece + u'%'), from});
    }
    /// The first of the rarest pieces that is in few texts, but not in one alone if that can be helped.
    [[nodiscard]] QString rare(const Counts& counts, qsizetype shortest)
    {
        constexpr int kTries = 8;
        QStringList pieces = byFrequency(counts);
        std::reverse(pieces.begin(), pieces.end());
        pieces.removeIf([&](const QString& piece) { return piece.size() < shortest; });
        QString best = pieces.value(0);
        qint64 bestCount = count(best);
        for (int i = 1; i < kTries && i < pieces.size() && (bestCount < kFewest || bestCount > kMost); ++i) {
            const qint64 found = count(pieces.at(i));
            if (found >= kFewest && (bestCount < kFewest || found < bestCount)) {
                best = pieces.at(i);
                bestCount = found;
            }
        }
        return best;
    }
    /// The most frequent word of the oldest texts that no newer one has.
    [[nodiscard]] QString onlyOld(const Census& all)
    {
        constexpr int kTries = 15;
        Census old;
        read(old, 0, firstNewRow());
        Counts candidates;
        for (auto word = old.words.constBegin(); word != old.words.constEnd(); ++word) {
            if (all.words.value(word.key()) <= word.value())
                candidates.insert(word.key(), word.value());
        }
        const QStringList words = byFrequency(candidates);
        for (const QString& word : words.first(std::min<qsizetype>(kTries, words.size()))) {
            if (count(word, firstNewRow()) == 0)
                return word;
        }
        return words.value(0);
    }

private:
    SQLiteConnection& m_connection;
    qint64 m_last;
};

} // namespace

SampleWords SampleWords::pick(SQLiteConnection& connection)
{
    constexpr qsizetype kRareWord = 5;
    Library library(connection);
    const Census census = library.census();
    SampleWords words;
    words.common = byFrequency(census.words).value(0);
    words.secondCommon = byFrequency(census.words).value(1);
    words.rare = library.rare(census.words, kRareWord);
    words.onlyOld = library.onlyOld(census);
    const QStringList pair = byFrequency(census.pairs).value(0).split(QLatin1Char(' '));
    words.firstOfPair = pair.value(0);
    words.secondOfPair = pair.value(1);
    words.commonLetters = byFrequency(census.twoLetters).value(0);
    words.rareLetters = library.rare(census.twoLetters, 2);
    words.commonLetter = byFrequency(census.letters).value(0);
    words.rareLetter = byFrequency(census.letters).constLast();
    words.commonHan = byFrequency(census.twoHan).value(0);
    words.secondCommonHan = byFrequency(census.twoHan).value(1);
    words.rareHan = library.rare(census.twoHan, 2);
    words.commonHanStart = byFrequency(census.hanStarts).value(0);
    words.rareHanStart = byFrequency(census.hanStarts).value(census.hanStarts.size() - 1);
    words.commonCharacter = byFrequency(census.han).value(0);
    words.rareCharacter = library.rare(census.han, 1);
    return words;
}

} // namespace tessary::bench
