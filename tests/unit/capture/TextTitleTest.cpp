#include "capture/TextTitle.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

TEST(TextTitleTest, IsTheFirstLineThatIsNotBlankTrimmed)
{
    EXPECT_EQ(titleOf(u"\n\n  hello world  \nmore"), QStringLiteral("hello world"));
    EXPECT_EQ(titleOf(u"\r\n\t\u3000\r\n第一行\u2028第二行"), QStringLiteral("第一行"));
    EXPECT_EQ(titleOf(u"only"), QStringLiteral("only"));
}

TEST(TextTitleTest, OfABlankTextIsNone)
{
    for (const QStringView text : {QStringView(u""), QStringView(u"   "), QStringView(u"\n \n\t\r\n")})
        EXPECT_EQ(titleOf(text), std::nullopt);
}

TEST(TextTitleTest, IsCutToItsFirstEightyCharacters)
{
    EXPECT_EQ(titleOf(QString(100, u'x')), QString(80, u'x'));
    EXPECT_EQ(titleOf(QString(80, u'x')), QString(80, u'x'));
    EXPECT_EQ(titleOf(QString(81, u'中')), QString(80, u'中'));
}

TEST(TextTitleTest, NeverCutsACharacterApart)
{
    const QString family = QStringLiteral("👩‍👩‍👧");
    EXPECT_EQ(titleOf(family.repeated(100)), family.repeated(80));
    const QString accented = QStringLiteral("e\u0301");
    EXPECT_EQ(titleOf(accented.repeated(100)), accented.repeated(80));
}

TEST(TextTitleTest, OfAHugeLineIsShort)
{
    EXPECT_EQ(titleOf(QString(20'000'000, u'y'))->size(), 80);
}

} // namespace
} // namespace tessary
