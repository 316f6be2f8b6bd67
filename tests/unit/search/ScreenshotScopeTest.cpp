#include "search/ScreenshotScope.h"

#include "search/ScreenshotSort.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace tessary {
namespace {

TEST(ScreenshotScopeTest, EachHasItsNameItsTitleAndItsSymbol)
{
    QStringList lines;
    for (const ScreenshotScope scope : kScreenshotScopes)
        lines.append(rawValue(scope) + u'|' + title(scope) + u'|' + systemImage(scope));
    const QStringList expected{QStringLiteral("all|所有剪贴板|photo.on.rectangle.angled"),
                               QStringLiteral("recentlyUsed|最近使用|clock.arrow.circlepath"),
                               QStringLiteral("today|今天|calendar"),
                               QStringLiteral("last7Days|最近 7 天|clock"),
                               QStringLiteral("last30Days|最近 30 天|clock"),
                               QStringLiteral("favorites|收藏|star"),
                               QStringLiteral("landscape|横图|rectangle"),
                               QStringLiteral("portrait|竖图|rectangle.portrait"),
                               QStringLiteral("largeImages|大尺寸图片|arrow.up.left.and.arrow.down.right"),
                               QStringLiteral("images|图片|photo.stack"),
                               QStringLiteral("textItems|文字|text.alignleft"),
                               QStringLiteral("trash|回收站|trash")};
    EXPECT_EQ(lines, expected);
}

TEST(ScreenshotSortTest, EachHasItsName)
{
    QStringList names;
    for (const ScreenshotSort sort : kScreenshotSorts)
        names.append(rawValue(sort));
    EXPECT_EQ(names.join(u' '), QStringLiteral("relevance newest oldest recentlyUsed fileSize"));
}

} // namespace
} // namespace tessary
