#include "app/commandline/ItemLines.h"

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QVariantMap>

namespace tessary {
namespace {

QJsonObject item(const char* json)
{
    return QJsonDocument::fromJson(json).object();
}

TEST(ItemLinesTest, AnItemIsFiveFieldsOnOneLine)
{
    qputenv("TZ", "UTC");
    const QByteArray line = ItemLines::line(item(R"({"id":"A","capturedAt":0,"contentType":1,
        "sourceAppName":"Text\tEditor","generatedTitle":"two\nlines","filename":"name"})"));
    EXPECT_EQ(line, "A\t1970-01-01T00:00:00\ttext\tText Editor\ttwo lines\n");
    qunsetenv("TZ");
}

TEST(ItemLinesTest, APictureGoesByItsFileNameAndMayHaveNoApplication)
{
    const QByteArray line =
        ItemLines::line(item(R"({"id":"A","contentType":0,"sourceAppName":null,"filename":"截屏.png"})"));
    EXPECT_TRUE(line.endsWith("\timage\t\t截屏.png\n")) << line.constData();
}

TEST(ItemLinesTest, WhatATerminalWouldObeyIsBlank)
{
    EXPECT_EQ(ItemLines::flat(QStringLiteral("a\x1b[31mb\u202ec\u009bd\r\ne")),
              QStringLiteral("a [31mb c d e"));
}

TEST(ItemLinesTest, FactsAreLinesOfNameAndValue)
{
    const QVariantMap facts{{QStringLiteral("b"), true},
                            {QStringLiteral("list"), QStringList{QStringLiteral("x"), QStringLiteral("y")}},
                            {QStringLiteral("n"), qlonglong{5'000'000'000}}};
    EXPECT_EQ(ItemLines::facts(facts), "b\tyes\nlist\tx y\nn\t5000000000\n");
    EXPECT_EQ(ItemLines::json(facts), "{\"b\":true,\"list\":[\"x\",\"y\"],\"n\":5000000000}\n");
}

} // namespace
} // namespace tessary
