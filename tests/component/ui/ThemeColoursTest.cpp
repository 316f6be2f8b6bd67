#include "ui/kit/ThemeColours.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

constexpr double kText = 4.5;
constexpr double kSymbols = 3;

void expectReadable(const ThemeColours& colours)
{
    for (const QColor& background : {colours.window, colours.surface, colours.raised}) {
        EXPECT_GE(contrastRatio(colours.text, background), kText);
        EXPECT_GE(contrastRatio(colours.secondaryText, background), kText);
        EXPECT_GE(contrastRatio(colours.tertiary, background), kSymbols);
    }
    EXPECT_GE(contrastRatio(colours.placeholderText, colours.window), kText);
    EXPECT_GE(contrastRatio(colours.onAccent, colours.accent), kText);
    EXPECT_GE(contrastRatio(colours.secondaryOnAccent, colours.accent), kText);
    EXPECT_GE(contrastRatio(colours.accentText, colours.window), kText);
    for (const QColor& background : {colours.surface, colours.accentTint, colours.accentTintHover})
        EXPECT_GE(contrastRatio(colours.accentText, background), kText);
    EXPECT_GE(contrastRatio(colours.warning, colours.warningFill), kText);
    EXPECT_GE(contrastRatio(colours.success, colours.successFill), kText);
    EXPECT_GE(contrastRatio(colours.danger, colours.surface), kText);
}

TEST(ThemeColoursTest, TextIsReadableInLightAndDark)
{
    expectReadable(themeColours(false, std::nullopt));
    expectReadable(themeColours(true, std::nullopt));
}

TEST(ThemeColoursTest, AnyAccentOfTheDesktopIsMadeReadable)
{
    constexpr int kHueStep = 15;
    for (int hue = 0; hue < 360; hue += kHueStep) {
        SCOPED_TRACE(hue);
        expectReadable(themeColours(false, QColor::fromHsl(hue, 200, 140)));
        expectReadable(themeColours(true, QColor::fromHsl(hue, 200, 110)));
    }
    for (const char* name : {"#ffff00", "#e62d42", "#000000", "#ffffff", "#3584e4", "#00ff00"}) {
        SCOPED_TRACE(name);
        expectReadable(themeColours(false, QColor(QLatin1String(name))));
        expectReadable(themeColours(true, QColor(QLatin1String(name))));
    }
}

TEST(ThemeColoursTest, AReadableAccentIsTakenAsItIs)
{
    const QColor accent(0x1c, 0x5a, 0xb4);
    EXPECT_EQ(themeColours(false, accent).accent.rgb(), accent.rgb());
}

TEST(ContrastRatioTest, BlackOnWhiteIsTheMost)
{
    EXPECT_NEAR(contrastRatio(Qt::black, Qt::white), 21, 0.01);
    EXPECT_NEAR(contrastRatio(Qt::red, Qt::red), 1, 0.001);
}

} // namespace
} // namespace tessary
