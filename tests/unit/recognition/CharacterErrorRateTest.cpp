#include "bench/recognition/CharacterErrorRate.h"

#include <gtest/gtest.h>

namespace tessary::bench {
using namespace Qt::StringLiterals;

namespace {

TEST(CharacterErrorRateTest, TheSameTextHasNoErrors)
{
    EXPECT_EQ(characterErrors(u"剪贴板 library"_s, u"剪贴板 library"_s), (CharacterErrors{0, 11}));
}

TEST(CharacterErrorRateTest, ACharacterReplacedLeftOutOrAddedIsOneError)
{
    EXPECT_EQ(characterErrors(u"昨天下午"_s, u"昨夭下午"_s).distance, 1);
    EXPECT_EQ(characterErrors(u"昨天下午"_s, u"昨下午"_s).distance, 1);
    EXPECT_EQ(characterErrors(u"昨天下午"_s, u"昨天下上午"_s).distance, 1);
    EXPECT_EQ(characterErrors(u"kitten"_s, u"sitting"_s).distance, 3);
}

TEST(CharacterErrorRateTest, LinesInTheWrongOrderAreErrors)
{
    EXPECT_EQ(characterErrors(u"甲乙\n丙丁"_s, u"丙丁\n甲乙"_s).distance, 4);
}

TEST(CharacterErrorRateTest, ARunOfBlanksAndLineBreaksIsOneBlank)
{
    EXPECT_EQ(characterErrors(u"one\ntwo"_s, u"  one \r\n\t two\n"_s).distance, 0);
    EXPECT_EQ(characterErrors(u"one two"_s, u"onetwo"_s).distance, 1);
}

TEST(CharacterErrorRateTest, ABlankBetweenHanCharactersIsAnError)
{
    EXPECT_EQ(characterErrors(u"文字识别"_s, u"文 字 识 别"_s).distance, 3);
}

TEST(CharacterErrorRateTest, WidthsAreAlikeUnlessToldApart)
{
    EXPECT_EQ(characterErrors(u"好，走（快）"_s, u"好,走(快)"_s).distance, 0);
    EXPECT_EQ(characterErrors(u"好，走（快）"_s, u"好,走(快)"_s, Widths::ToldApart).distance, 3);
}

TEST(CharacterErrorRateTest, ACharacterOutsideTheBasicPlaneCountsOnce)
{
    EXPECT_EQ(characterErrors(u"𠮷野家"_s, u"吉野家"_s), (CharacterErrors{1, 3}));
}

TEST(CharacterErrorRateTest, NothingReadIsEverythingMissed)
{
    EXPECT_DOUBLE_EQ(characterErrors(u"全部"_s, {}).rate(), 1);
    EXPECT_DOUBLE_EQ(characterErrors({}, u"多"_s).rate(), 1);
    EXPECT_DOUBLE_EQ(characterErrors({}, {}).rate(), 0);
}

TEST(CharacterErrorRateTest, ASumWeighsPicturesByTheirLength)
{
    CharacterErrors sum = characterErrors(u"ab"_s, u"xy"_s);
    sum += characterErrors(u"abcdefgh"_s, u"abcdefgh"_s);
    EXPECT_DOUBLE_EQ(sum.rate(), 0.2);
}

} // namespace
} // namespace tessary::bench
