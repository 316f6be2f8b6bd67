#include "capture/ClipboardImageName.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

TEST(ClipboardImageNameTest, TellsTheSecondOfTheCopy)
{
    EXPECT_EQ(clipboardImageName(QDateTime(QDate(2026, 3, 5), QTime(9, 7, 3))),
              QStringLiteral("剪贴板图片 2026-03-05 09.07.03.png"));
}

TEST(ClipboardImageNameTest, ANumberedNameLeadsBackToItsPlainOne)
{
    const QString name = clipboardImageName(QDateTime(QDate(2026, 3, 5), QTime(9, 7, 3)));
    EXPECT_EQ(nominalImageName(name), name);
    EXPECT_NE(numberedImageName(name, 2), name);
    EXPECT_EQ(nominalImageName(numberedImageName(name, 12)), name);
}

TEST(ClipboardImageNameTest, OtherFilesAreNotTakenForOurs)
{
    for (const char* name :
         {"a.png", "剪贴板图片.png", "剪贴板图片 2026-03-05 09.07.03.jpg",
          "x剪贴板图片 2026-03-05 09.07.03.png", "剪贴板图片 2026-03-05 09.07.03 copy.png"})
        EXPECT_TRUE(nominalImageName(QString::fromUtf8(name)).isEmpty()) << name;
}

} // namespace
} // namespace tessary
