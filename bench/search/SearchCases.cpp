#include "bench/search/SearchCases.h"

#include "store/PinyinText.h"

namespace tessary::bench {
namespace {

constexpr int kPage = 101;
constexpr qsizetype kTextLimit = 20'000;
constexpr int kFarOffset = 100'000;

/// The syllables run together, as one types them.
QString pinyin(const QString& han)
{
    return PinyinText().searchText(han).section(QLatin1Char(' '), -1);
}

} // namespace

SearchCases::SearchCases(const SampleWords& words, qint64 items, Date oldest, Date newest)
    : m_words(words),
      m_items(items),
      m_oldest(oldest),
      m_newest(newest)
{
}

ListRequest SearchCases::list(ScreenshotScope scope, ScreenshotSort sort, int offset) const
{
    ListRequest request;
    request.scope = scope;
    request.sort = sort;
    request.limit = kPage;
    request.offset = offset;
    request.now = m_newest.addingSeconds(1);
    request.calendar = Calendar{QTimeZone::utc()};
    request.maximumTextLength = kTextLimit;
    return request;
}

ListRequest SearchCases::search(const QString& text) const
{
    ListRequest request = list(ScreenshotScope::All, ScreenshotSort::Newest);
    request.rawQuery = text;
    return request;
}

QString SearchCases::day(double share) const
{
    const double span = m_newest.secondsSince1970 - m_oldest.secondsSince1970;
    return m_oldest.addingSeconds(span * share).toDateTime().toUTC().toString(QStringLiteral("yyyy-MM-dd"));
}

QList<SearchCase> SearchCases::searches() const
{
    const QString space(u' ');
    const QString wideSpace(u'\u3000');
    const SampleWords& w = m_words;
    const auto found = [this](const char* name, const QString& text) {
        return SearchCase{QString::fromLatin1(name), search(text)};
    };
    QList<SearchCase> cases{
        found("nothing", QStringLiteral("qqzzxxyy")),
        found("nothing, Han", QStringLiteral("饕餮饕餮")),
        found("rare word", w.rare),
        found("common word", w.common),
        found("word of old items only", w.onlyOld),
        found("two common words", w.common + space + w.secondCommon),
        found("common and rare word", w.common + space + w.rare),
        found("common word and nothing", w.common + QStringLiteral(" qqzzxxyy")),
        found("phrase with a space", w.firstOfPair + space + w.secondOfPair),
        found("phrase with an ideographic space", w.commonHan + wideSpace + w.secondCommonHan),
        found("two ASCII letters, common", w.commonLetters),
        found("two ASCII letters, rare", w.rareLetters),
        found("one letter, common", w.commonLetter),
        found("one letter, rare", w.rareLetter),
        found("two Han characters, common", w.commonHan),
        found("two Han characters, rare", w.rareHan),
        found("one Han character, common", w.commonCharacter),
        found("one Han character, rare", w.rareCharacter),
        found("pinyin of a common word", pinyin(w.commonHanStart)),
        found("pinyin of a rare word", pinyin(w.rareHanStart)),
        found("pinyin, one syllable", pinyin(w.commonCharacter)),
        found("pinyin, no word", QStringLiteral("zhuangshuai")),
        found("operator only, app:", QStringLiteral("app:kate")),
        found("operator only, tag:", QStringLiteral("tag:todo")),
        found("operator only, after: (last tenth)", QStringLiteral("after:") + day(0.9)),
        found("operator only, before: (first tenth)", QStringLiteral("before:") + day(0.1)),
        found("operator and common word", QStringLiteral("app:kate ") + w.common),
        found("operator and rare word", QStringLiteral("app:kate ") + w.rare),
        found("rare operator and common word", QStringLiteral("tag:todo is:favorite ") + w.common),
        found("date and word of old items", QStringLiteral("after:") + day(0.5) + space + w.onlyOld),
        found("wild cards", w.common.left(1) + u'_' + w.common.mid(2) + u'%' + w.secondCommon),
    };
    for (const ScreenshotSort sort : {ScreenshotSort::Oldest, ScreenshotSort::FileSize})
        for (const QString& word : {w.common, w.rare}) {
            SearchCase sorted{
                (word == w.rare ? QStringLiteral("rare word, ") : QStringLiteral("common word, ")) +
                    rawValue(sort),
                search(word)};
            sorted.request.sort = sort;
            cases.append(sorted);
        }
    SearchCase images{QStringLiteral("common word, images"), search(w.common)};
    images.request.scope = ScreenshotScope::Images;
    cases.append(images);
    return cases;
}

QList<SearchCase> SearchCases::farPages() const
{
    QList<SearchCase> cases;
    if (m_items > kFarOffset)
        cases.append({QStringLiteral("page at offset 100,000"),
                      list(ScreenshotScope::All, ScreenshotSort::Newest, kFarOffset)});
    cases.append({QStringLiteral("last page"),
                  list(ScreenshotScope::All, ScreenshotSort::Newest, static_cast<int>(m_items) - kPage)});
    return cases;
}

} // namespace tessary::bench
