#include "workers/recognizer/ScriptEvidence.h"
#include "tests/unit/workers/recognizer/Readings.h"
#include "workers/recognizer/Plausibility.h"

#include <gtest/gtest.h>

namespace tessary::recognizer {
namespace {

using testing::readingOf;

ScriptEvidence evidenceOf(const char16_t* text, double confidence = 99)
{
    ScriptEvidence evidence;
    evidence.add(readingOf(QString::fromUtf16(text), confidence));
    return evidence;
}

TEST(ScriptTest, TakesTheLanguagesInTheirOrderAndPassesOthersOver)
{
    EXPECT_EQ(scriptsOf({QStringLiteral("fr-FR"), QStringLiteral("ja-JP"), QStringLiteral("zh-Hans"),
                         QStringLiteral("ja-JP"), QString()}),
              (QList{Script::Japanese, Script::Simplified}));
    EXPECT_TRUE(scriptsOf({QStringLiteral("zh")}).isEmpty());
}

TEST(ScriptTest, NamesThePackages)
{
    EXPECT_EQ(packageOf(Script::Simplified), QStringLiteral("tesseract-ocr-chi-sim"));
    EXPECT_EQ(packageOf(Script::Traditional), QStringLiteral("tesseract-ocr-chi-tra"));
    EXPECT_EQ(packageOf(Script::Latin), QStringLiteral("tesseract-ocr-eng"));
    EXPECT_EQ(packageOf(Script::Japanese), QStringLiteral("tesseract-ocr-jpn"));
}

TEST(ScriptEvidenceTest, TakesLatinForLatinDespiteAMisreadCharacter)
{
    EXPECT_TRUE(evidenceOf(u"The quick brown fox, 12 时").isLatin());
    EXPECT_FALSE(evidenceOf(u"安装 Linux 内核").isLatin());
    EXPECT_TRUE(evidenceOf(u"").isLatin());
}

TEST(ScriptEvidenceTest, TellsKanaFromTheFewThatAWrongReadingHas)
{
    EXPECT_TRUE(evidenceOf(u"設定へようこそ").hasKana());
    EXPECT_FALSE(evidenceOf(u"作可以重新編達内核来増思に").hasKana());
    EXPECT_FALSE(evidenceOf(u"Linux").hasKana());
}

TEST(ScriptEvidenceTest, ComparesTheChineseModelsByTheirHanCharactersOnly)
{
    EXPECT_EQ(leadOfTraditional(evidenceOf(u"Linux"), evidenceOf(u"Linux")), std::nullopt);
    EXPECT_DOUBLE_EQ(leadOfTraditional(evidenceOf(u"系统", 96), evidenceOf(u"系統", 98)).value_or(0), 2);
}

TEST(ScriptEvidenceTest, CountsTheVotesOfTheJapaneseModelWhereTheOthersDiffer)
{
    const ScriptEvidence simplified = evidenceOf(u"说明体设");
    const ScriptEvidence traditional = evidenceOf(u"說明體設");
    EXPECT_GT(voteForTraditional(simplified, traditional, evidenceOf(u"説明體設")), 0);
    EXPECT_LT(voteForTraditional(simplified, traditional, evidenceOf(u"洗明体没")), 0);
    EXPECT_DOUBLE_EQ(voteForTraditional(simplified, traditional, evidenceOf(u"明")), 0);
}

TEST(PlausibilityTest, WantsMoreOfWhatMayBeAnIcon)
{
    EXPECT_TRUE(isPlausible(readingOf(QStringLiteral("回"), 96), false));
    EXPECT_FALSE(isPlausible(readingOf(QStringLiteral("回"), 96), true));
    EXPECT_FALSE(isPlausible(readingOf(QStringLiteral("©"), 99), true));
    EXPECT_TRUE(isPlausible(readingOf(QStringLiteral("颜色"), 98), true));
    EXPECT_FALSE(isPlausible(readingOf(QStringLiteral("x]"), 96), true));
}

TEST(PlausibilityTest, TakesNoTextForWhatTheEngineIsUnsureOf)
{
    EXPECT_FALSE(isPlausible(readingOf(QStringLiteral("ie il f"), 40), false));
    EXPECT_FALSE(isPlausible({}, false));
    EXPECT_FALSE(isPlausible({}, true));
}

} // namespace
} // namespace tessary::recognizer
