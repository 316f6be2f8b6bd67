#include "store/grams/TextGrams.h"

#include <gmock/gmock.h>

#include <random>

namespace tessary {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;

std::vector<std::string> gramsOf(QByteArrayView text)
{
    std::vector<TextGrams::Gram> grams;
    TextGrams::append(text, grams);
    std::vector<std::string> texts;
    texts.reserve(grams.size());
    for (const TextGrams::Gram gram : grams)
        texts.push_back(TextGrams::GramBytes(gram).toByteArray().toStdString());
    return texts;
}

std::vector<std::string> wantedGrams(QByteArrayView piece)
{
    std::vector<std::string> texts;
    for (const QByteArray& gram : TextGrams::wantedBy(piece).grams)
        texts.push_back(gram.toStdString());
    return texts;
}

std::string wantedBeginning(QByteArrayView piece)
{
    return TextGrams::wantedBy(piece).beginningOfGram.toStdString();
}

TEST(TextGramsTest, AsciiGoesByThreeCharactersAndIsShorterAtTheEnd)
{
    EXPECT_THAT(gramsOf("HeLlo"), ElementsAre("hel", "ell", "llo", "lo", "o"));
    EXPECT_THAT(gramsOf("a"), ElementsAre("a"));
    EXPECT_THAT(gramsOf(""), IsEmpty());
}

TEST(TextGramsTest, OtherTextGoesByTwo)
{
    EXPECT_THAT(gramsOf("会议室"), ElementsAre("会议", "议室", "室"));
    EXPECT_THAT(gramsOf("ab会c"), ElementsAre("ab", "b会", "会c", "c"));
    EXPECT_THAT(gramsOf("É😀"), ElementsAre("É😀", "😀"));
}

TEST(TextGramsTest, NoGramCrossesANulOrABorder)
{
    EXPECT_THAT(gramsOf(QByteArrayView("ab\0cd", 5)), ElementsAre("ab", "b", "cd", "d"));
    EXPECT_THAT(gramsOf(QByteArray("x") + TextGrams::kBorder + TextGrams::kBorder + "会"),
                ElementsAre("x", "会"));
    EXPECT_THAT(gramsOf(QByteArrayView("\0\0", 2)), IsEmpty());
}

TEST(TextGramsTest, APieceWantsItsWholeGrams)
{
    EXPECT_THAT(wantedGrams("Hello"), ElementsAre("hel", "ell", "llo"));
    EXPECT_THAT(wantedGrams("会议"), ElementsAre("会议"));
    EXPECT_THAT(wantedGrams("ab会"), ElementsAre("ab", "b会"));
    EXPECT_EQ(wantedBeginning("Hello"), "");
}

TEST(TextGramsTest, AShortPieceWantsTheBeginningOfOne)
{
    EXPECT_EQ(wantedBeginning("TH"), "th");
    EXPECT_EQ(wantedBeginning("会"), "会");
    EXPECT_EQ(wantedBeginning(""), "");
    EXPECT_THAT(wantedGrams("th"), IsEmpty());
}

/// Of few characters, so that pieces come again, with broken UTF-8 among them.
QByteArray someText(std::mt19937& chance, size_t most)
{
    const std::vector<QByteArray> characters{"a", "B", "c",    " ",    "会",   "议",
                                             "é", "😀", "\x80", "\xE4", "\xF9", QByteArray(1, '\0')};
    QByteArray text;
    for (size_t left = chance() % (most + 1); left > 0; --left)
        text += characters.at(chance() % characters.size());
    return text;
}

TEST(TextGramsTest, ATextHasWhatAnyOfItsPiecesWants)
{
    std::mt19937 chance(7);
    for (int round = 0; round < 20'000; ++round) {
        const QByteArray piece = QString::fromUtf8(someText(chance, 6)).toUtf8();
        const QByteArray text = someText(chance, 5) + piece.toUpper() + someText(chance, 5);
        ASSERT_THAT(gramsOf(text), IsSupersetOf(wantedGrams(piece))) << text.toHex().toStdString();
        const std::string beginning = wantedBeginning(piece);
        const auto beginsSo = [&](const std::string& gram) { return gram.starts_with(beginning); };
        ASSERT_TRUE(beginning.empty() || std::ranges::any_of(gramsOf(text), beginsSo))
            << text.toHex().toStdString();
    }
}

} // namespace
} // namespace tessary
