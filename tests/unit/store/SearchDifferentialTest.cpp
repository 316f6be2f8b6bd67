#include "tests/unit/store/differential/ExercisedLibrary.h"
#include "tests/unit/store/differential/ListOracle.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>

/// Pages of generated libraries against the one query that says what is on them, run by SQLite alone.
///
/// TESSARY_DIFFERENTIAL_COMPARISONS says how many pages all tests here compare together, and
/// TESSARY_DIFFERENTIAL_LIBRARY, with the number that a failure names, replays that library alone.
namespace tessary::testing {
namespace {

constexpr int kShares = 8;
constexpr quint64 kLibrariesOfShare = 1'000'000; // at most; the numbers of the next share's begin there
constexpr qint64 kPagesOfLibrary = 1000;
constexpr qint64 kPagesBetweenChanges = 8;
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr qint64 kDefaultComparisons = 10'000; // sanitised code takes many times as long
#else
constexpr qint64 kDefaultComparisons = 100'000;
#endif

qint64 numberFromEnvironment(const char* name, qint64 otherwise)
{
    bool isNumber = false;
    const qint64 number = qEnvironmentVariable(name).toLongLong(&isNumber);
    return isNumber ? number : otherwise;
}

/// Such that every way is taken in libraries of some hundred items.
SearchLimits someLimits(Dice& dice)
{
    SearchLimits limits;
    if (dice.oneIn(6))
        return limits;
    limits.rowsBetweenLooks = dice.anyOf(std::array{1, 3, 5, 20, 50});
    limits.mostTested = dice.anyOf(std::array{0, 0, 10, 20, 100});
    limits.rowsPerTested = dice.anyOf(std::array{1, 1, 10});
    limits.mostSorted = dice.anyOf(std::array<qsizetype, 5>{0, 4, 20, 100, 1000});
    limits.mostListed = dice.anyOf(std::array<qsizetype, 5>{0, 5, 30, 200, 60'000});
    limits.mostUnindexed = dice.anyOf(std::array<qint64, 4>{0, 50, 1000, 1000});
    limits.rowsIndexedAtOnce = dice.anyOf(std::array<qint64, 3>{1, 10, 50});
    return limits;
}

std::string described(const SearchLimits& limits)
{
    return QStringLiteral("{%1, %2, %3, %4, %5, %6, %7}")
        .arg(limits.rowsBetweenLooks)
        .arg(limits.mostTested)
        .arg(limits.rowsPerTested)
        .arg(limits.mostSorted)
        .arg(limits.mostListed)
        .arg(limits.mostUnindexed)
        .arg(limits.rowsIndexedAtOnce)
        .toStdString();
}

constexpr size_t kWays = 4; // PageSearch::Way

/// As C++ would spell it, so that nothing in it is invisible.
std::string escaped(const QString& text)
{
    constexpr qsizetype kMost = 300;
    std::string result;
    for (const QChar unit : text.left(kMost))
        result += unit.unicode() >= 0x20 && unit.unicode() < 0x7F
                      ? std::string(1, unit.toLatin1())
                      : QStringLiteral("\\u%1").arg(unit.unicode(), 4, 16, QLatin1Char('0')).toStdString();
    return result;
}

std::string described(const ListRequest& request)
{
    return "query \"" + escaped(request.rawQuery) + "\" scope " + rawValue(request.scope).toStdString() +
           " sort " + rawValue(request.sort).toStdString() + " limit " + std::to_string(request.limit) +
           " offset " + std::to_string(request.offset) + " zone " +
           request.calendar.timeZone.id().toStdString() + " now " +
           std::to_string(request.now.secondsSince1970);
}

std::string described(const QList<ScreenshotRecord>& page)
{
    std::string lines;
    for (const ScreenshotRecord& record : page)
        lines +=
            "    " + identifierText(record.id).toStdString() + " " + escaped(record.filename.left(30)) + "\n";
    return lines.empty() ? "    nothing\n" : lines;
}

/// One library and what is asked about it, all of it made from one number.
class DifferentialRun {
public:
    DifferentialRun(quint64 number, PinyinText& pinyin)
        : m_number(number),
          m_dice(number),
          m_hasNul(m_dice.oneIn(5)),
          m_limits(someLimits(m_dice)),
          m_texts(m_dice, m_hasNul),
          m_queries(m_dice, m_texts, pinyin),
          m_library(
              m_dice, m_texts, m_queries, m_limits,
              m_dice.anyOf(std::array{ExercisedLibrary::Indexing::Never, ExercisedLibrary::Indexing::Now,
                                      ExercisedLibrary::Indexing::Now, ExercisedLibrary::Indexing::Partly})),
          m_oracle(m_library.projectionPath(),
                   m_hasNul ? ListOracle::Like::Naive : ListOracle::Like::OfSQLite)
    {
    }

    /// Stops at the first difference.
    void compare(qint64 pages)
    {
        for (; pages > 0 && !::testing::Test::HasFatalFailure(); --pages) {
            if (m_compared % kPagesBetweenChanges == kPagesBetweenChanges - 1)
                m_library.change();
            comparePage(m_queries.next());
        }
    }
    [[nodiscard]] qint64 compared() const { return m_compared; }
    [[nodiscard]] qint64 notEmpty() const { return m_notEmpty; }
    [[nodiscard]] qint64 refused() const { return m_refused; }
    /// How many pages were found in each way, by its number.
    [[nodiscard]] const std::array<qint64, kWays>& ways() const { return m_ways; }

private:
    void comparePage(const ListRequest& request)
    {
        ++m_compared;
        std::optional<QList<ScreenshotRecord>> wanted = m_oracle.page(request);
        if (!wanted) {
            ++m_refused;
            wanted = m_library.projection().prescribedPage(request, {});
        }
        const QList<ScreenshotRecord> found = m_library.projection().page(request, {});
        m_notEmpty += wanted->isEmpty() ? 0 : 1;
        ++m_ways.at(static_cast<size_t>(m_library.projection().wayOfPage()));
        ASSERT_TRUE(found == *wanted)
            << "TESSARY_DIFFERENTIAL_LIBRARY=" << m_number << ", page " << m_compared << ", limits "
            << described(m_limits) << ", after " << m_library.lastChange() << "\n"
            << described(request) << "\nprescribed:\n"
            << described(*wanted) << "found:\n"
            << described(found);
    }

    quint64 m_number;
    Dice m_dice;
    bool m_hasNul;
    SearchLimits m_limits;
    GeneratedTexts m_texts;
    SearchQueryGenerator m_queries;
    ExercisedLibrary m_library;
    ListOracle m_oracle;
    qint64 m_compared = 0;
    qint64 m_notEmpty = 0;
    qint64 m_refused = 0;
    std::array<qint64, kWays> m_ways{};
};

class SearchDifferentialTest : public ::testing::TestWithParam<int> {};

TEST_P(SearchDifferentialTest, EveryPageIsThePrescribedOne)
{
    const quint64 first = static_cast<quint64>(GetParam()) * kLibrariesOfShare;
    PinyinText pinyin;
    const qint64 replayed = numberFromEnvironment("TESSARY_DIFFERENTIAL_LIBRARY", -1);
    if (replayed >= 0) {
        if (static_cast<quint64>(replayed) / kLibrariesOfShare != static_cast<quint64>(GetParam()))
            GTEST_SKIP() << "only library " << replayed << " is replayed";
        DifferentialRun run(static_cast<quint64>(replayed), pinyin);
        return run.compare(kPagesOfLibrary);
    }
    const qint64 wanted =
        numberFromEnvironment("TESSARY_DIFFERENTIAL_COMPARISONS", kDefaultComparisons) / kShares;
    qint64 compared = 0;
    qint64 notEmpty = 0;
    qint64 refused = 0;
    std::array<qint64, kWays> ways{};
    quint64 number = first;
    for (; compared < wanted && !HasFatalFailure(); ++number) {
        DifferentialRun run(number, pinyin);
        run.compare(std::min(kPagesOfLibrary, wanted - compared));
        compared += run.compared();
        notEmpty += run.notEmpty();
        refused += run.refused();
        std::transform(ways.begin(), ways.end(), run.ways().begin(), ways.begin(), std::plus());
    }
    std::printf(
        "%lld pages of %llu libraries compared, %lld of them not empty; SQLite's own LIKE refused %lld\n",
        static_cast<long long>(compared), static_cast<unsigned long long>(number - first),
        static_cast<long long>(notEmpty), static_cast<long long>(refused));
    std::printf("prescribed %lld, tested %lld, sorted %lld, met %lld\n", static_cast<long long>(ways[0]),
                static_cast<long long>(ways[1]), static_cast<long long>(ways[2]),
                static_cast<long long>(ways[3]));
    EXPECT_GT(notEmpty, compared / 4) << "too few pages say anything";
    constexpr qint64 kFew = 100;
    constexpr qint64 kManyLibraries = 10 * kPagesOfLibrary;
    for (const qint64 count : ways)
        EXPECT_TRUE(compared < kManyLibraries || count > compared / kFew) << "one way is hardly gone";
}

INSTANTIATE_TEST_SUITE_P(Shares, SearchDifferentialTest, ::testing::Range(0, kShares));

} // namespace
} // namespace tessary::testing
