#include "search/SearchQueryParser.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

namespace tessary {
namespace {

constexpr unsigned kSeed = 20240517;
constexpr int kTexts = 20'000;
constexpr int kMostPieces = 12;

const Calendar kUtc{QTimeZone::utc()};

/// Texts made of the pieces that mean something, and of any UTF-16 units at all.
class RandomTexts {
public:
    QString next()
    {
        static const std::array pieces{
            QStringLiteral("app:"),   QStringLiteral("TAG:"),    QStringLiteral("before:"),
            QStringLiteral("After:"), QStringLiteral("is:"),     QStringLiteral("favorite"),
            QStringLiteral("\""),     QStringLiteral(" "),       QStringLiteral("\u3000"),
            QStringLiteral("\n"),     QStringLiteral(":"),       QStringLiteral("2024-05-01"),
            QStringLiteral("2024-"),  QStringLiteral("中文"),    QStringLiteral("😀"),
            QStringLiteral("İſ"),     QStringLiteral("e\u0301"), QStringLiteral("%_*")};
        QString text;
        for (size_t i = below(kMostPieces); i > 0; --i) {
            if (below(4) == 0)
                text += QChar(static_cast<char16_t>(below(0x10000)));
            else
                text += pieces.at(below(pieces.size()));
        }
        return text;
    }

private:
    size_t below(size_t limit) { return m_random() % limit; }

    std::mt19937 m_random{kSeed};
};

bool isWord(const QString& text)
{
    return !text.isEmpty() &&
           std::none_of(text.begin(), text.end(), [](QChar unit) { return unit.isSpace(); });
}

TEST(SearchQueryParserFuzzTest, WhateverIsTypedGivesWordsAndTheSameQueryEachTime)
{
    RandomTexts texts;
    for (int i = 0; i < kTexts; ++i) {
        const QString text = texts.next();
        const SearchQuery query = SearchQueryParser::parse(text, kUtc);
        ASSERT_TRUE(std::all_of(query.keywords.begin(), query.keywords.end(), isWord)) << qPrintable(text);
        ASSERT_EQ(SearchQueryParser::parse(text, kUtc), query) << qPrintable(text);
        ASSERT_EQ(SearchQueryParser::parse(u' ' + text + u'\n', kUtc), query) << qPrintable(text);
        ASSERT_LE(query.keywords.join(QString()).size(), text.size()) << qPrintable(text);
    }
}

TEST(SearchQueryParserFuzzTest, OperatorsOfTheirOwnAreRemovedFromAnyText)
{
    RandomTexts texts;
    for (int i = 0; i < kTexts; ++i) {
        const QString text = texts.next().remove(u'"').remove(u':');
        const SearchQuery plain = SearchQueryParser::parse(text, kUtc);
        const SearchQuery query = SearchQueryParser::parse(
            QStringLiteral("app:A B ") + text + QStringLiteral(" tag:\"x y\" is:favorite"), kUtc);
        ASSERT_EQ(query.appName, QStringLiteral("A")) << qPrintable(text);
        ASSERT_EQ(query.tagName, QStringLiteral("x y")) << qPrintable(text);
        ASSERT_TRUE(query.favoritesOnly) << qPrintable(text);
        ASSERT_EQ(query.keywords, QStringList{QStringLiteral("B")} + plain.keywords) << qPrintable(text);
    }
}

} // namespace
} // namespace tessary
