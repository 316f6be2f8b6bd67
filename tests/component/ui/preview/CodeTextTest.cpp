#include "ui/preview/CodeText.h"

#include <QString>

#include <gtest/gtest.h>

namespace tessary {
namespace {

bool isCode(const char* text)
{
    return looksLikeCode(QString::fromUtf8(text));
}

TEST(CodeTextTest, ProgramsInManyLanguagesAre)
{
    EXPECT_TRUE(isCode("#include <vector>\n\nint main()\n{\n    return 0;\n}\n"));
    EXPECT_TRUE(isCode("def add(a, b):\n    return a + b\n\nprint(add(1, 2))\n"));
    EXPECT_TRUE(isCode("const a = 1;\nfunction f() {\n  return a;\n}\n"));
    EXPECT_TRUE(isCode("#!/bin/sh\nset -e\ncd /tmp && ls\ngit status\n"));
    EXPECT_TRUE(isCode("SELECT id, name FROM item WHERE id = 3;"));
}

TEST(CodeTextTest, StructuredDataIs)
{
    EXPECT_TRUE(isCode("{\n  \"name\": \"x\",\n  \"tags\": [1, 2],\n  \"more\": {\n  }\n}\n"));
    EXPECT_TRUE(isCode("<ul>\n  <li>one</li>\n  <li>two</li>\n</ul>\n"));
}

TEST(CodeTextTest, ProseIsNot)
{
    EXPECT_FALSE(isCode("产品周会纪要（2026 年 11 月 20 日）\n\n一、搜索\n1. 输入停顿 180 ms 后才查询；\n2. "
                        "app: 与 tag: 等条件"));
    EXPECT_FALSE(
        isCode("Dear all,\n\nPlease return the forms (both of them).\nIf you cannot, call me.\n\nThanks"));
    EXPECT_FALSE(isCode("Import taxes rose. Let us return; the rest is class."));
    EXPECT_FALSE(isCode("- milk\n- eggs\n- bread"));
    EXPECT_FALSE(isCode("one\ttwo\nthree\tfour"));
}

TEST(CodeTextTest, NothingIsNot)
{
    EXPECT_FALSE(isCode(""));
    EXPECT_FALSE(isCode("\n \n\t\n"));
    EXPECT_FALSE(isCode("hello"));
}

TEST(CodeTextTest, AHugeTextIsJudgedByItsBeginning)
{
    const QString prose = QStringLiteral("这是一个普通的句子。\n").repeated(2000);
    EXPECT_FALSE(looksLikeCode(prose + QStringLiteral("int main() {\n}\n").repeated(100000)));
}

} // namespace
} // namespace tessary
