#include "ui/preview/TagsText.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

TEST(TagsTextTest, BothCommasSeparate)
{
    EXPECT_EQ(splitTags(QStringLiteral("旅行，壁纸,lake")),
              (QStringList{QStringLiteral("旅行"), QStringLiteral("壁纸"), QStringLiteral("lake")}));
}

TEST(TagsTextTest, BlanksEmptyOnesAndRepeatsAreDropped)
{
    EXPECT_EQ(splitTags(QStringLiteral(" a ,, b　， \t,a,  b")),
              (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    EXPECT_TRUE(splitTags(QStringLiteral(" ，, ")).isEmpty());
    EXPECT_TRUE(splitTags(QString()).isEmpty());
}

TEST(TagsTextTest, ATagMayHaveBlanksWithin)
{
    EXPECT_EQ(splitTags(QStringLiteral("to do, A")),
              (QStringList{QStringLiteral("to do"), QStringLiteral("A")}));
}

TEST(TagsTextTest, WhatIsJoinedSplitsIntoTheSame)
{
    const QStringList tags{QStringLiteral("一"), QStringLiteral("two"), QStringLiteral("三 3")};
    EXPECT_EQ(splitTags(joinedTags(tags)), tags);
}

} // namespace
} // namespace tessary
