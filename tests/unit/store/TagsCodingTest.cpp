#include "store/TagsCoding.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

TEST(TagsCodingTest, RoundTripsAnyText)
{
    const QStringList tags{QStringLiteral("工作"), QStringLiteral("a\"b\\c"), QString(), QStringLiteral("😀")};
    EXPECT_EQ(decodeTags(encodeTags(tags)), tags);
    EXPECT_EQ(encodeTags({}), "[]");
}

TEST(TagsCodingTest, AnythingButAnArrayOfStringsIsNoTags)
{
    for (const char* json : {"", "not json", "{}", "[1]", "[\"a\", null]", "\"a\"", "[\"a\""})
        EXPECT_TRUE(decodeTags(json).isEmpty()) << json;
}

} // namespace
} // namespace tessary
