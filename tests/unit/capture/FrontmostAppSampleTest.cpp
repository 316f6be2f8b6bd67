#include "capture/FrontmostAppSample.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

TEST(FrontmostAppSampleTest, IsStoredWithSecondsSince2001AndWithoutAbsentValues)
{
    const QList<FrontmostAppSample> samples{
        {Date{978'307'200.5},
         {QStringLiteral("编辑器"), QStringLiteral("org.example.Editor"),
          QUrl(QStringLiteral("file:///usr/share/a b.desktop"))}},
        {Date{978'307'201.0}, {std::nullopt, QStringLiteral("xterm"), std::nullopt}}};
    EXPECT_EQ(encodeSamples(samples),
              "[{\"application\":{\"bundleIdentifier\":\"org.example.Editor\",\"bundleURL\":"
              "\"file:///usr/share/a%20b.desktop\",\"localizedName\":\"编辑器\"},\"timestamp\":0.5},"
              "{\"application\":{\"bundleIdentifier\":\"xterm\"},\"timestamp\":1}]");
    EXPECT_EQ(decodeSamples(encodeSamples(samples)), samples);
}

TEST(FrontmostAppSampleTest, AnythingElseIsNoHistory)
{
    for (const char* json : {"", "garbage", "{}", "[1]", "[{\"timestamp\":1}]", "[{\"application\":{}}]",
                             "[{\"timestamp\":\"x\",\"application\":{}}]",
                             "[{\"timestamp\":1,\"application\":{\"bundleURL\":3}}]"})
        EXPECT_TRUE(decodeSamples(json).isEmpty()) << json;
}

} // namespace
} // namespace tessary
