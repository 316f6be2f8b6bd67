#include "app/HotKeyShortcut.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

std::optional<HotKeyShortcut> parse(const char* text)
{
    return HotKeyShortcut::fromRawValue(QString::fromUtf8(text));
}

TEST(HotKeyShortcutTest, ItsTextFormRoundTrips)
{
    const std::optional<HotKeyShortcut> shortcut = parse("v2|31|6144|O");
    ASSERT_TRUE(shortcut);
    EXPECT_EQ(*shortcut, (HotKeyShortcut{31, 6144, QStringLiteral("O")}));
    EXPECT_EQ(shortcut->rawValue(), QStringLiteral("v2|31|6144|O"));
}

TEST(HotKeyShortcutTest, RefusesOtherVersionsMissingPiecesAndBadNumbers)
{
    for (const char* text :
         {"v1|31|6144|O", "v2|31|6144", "v2|x|6144|O", "v2|31|-1|O", "", "|", "v2|31|6144|",
          "v2|4294967296|1|O", "v2|31|4294967296|O", "v2|+|6144|O", "v2| 31|6144|O", "v2|0x1F|6144|O",
          "v2|31|++1|O", "V2|31|6144|O", "Disabled", "optionX", "v2|３１|6144|O"})
        EXPECT_EQ(parse(text), std::nullopt) << text;
}

TEST(HotKeyShortcutTest, TakesALeadingPlusAndTheLargestNumbers)
{
    EXPECT_EQ(parse("v2|31|+6144|O"), (HotKeyShortcut{31, 6144, QStringLiteral("O")}));
    EXPECT_EQ(parse("v2|4294967295|4294967295|O"),
              (HotKeyShortcut{4294967295U, 4294967295U, QStringLiteral("O")}));
}

TEST(HotKeyShortcutTest, EmptyPiecesAreDropped)
{
    EXPECT_EQ(parse("|v2||31|6144|O"), (HotKeyShortcut{31, 6144, QStringLiteral("O")}));
}

TEST(HotKeyShortcutTest, TheLabelKeepsFurtherBars)
{
    EXPECT_EQ(parse("v2|31|6144|A|B"), (HotKeyShortcut{31, 6144, QStringLiteral("A|B")}));
}

TEST(HotKeyShortcutTest, DisabledStaysDisabled)
{
    const std::optional<HotKeyShortcut> shortcut = parse("disabled");
    ASSERT_TRUE(shortcut);
    EXPECT_TRUE(shortcut->isDisabled());
    EXPECT_EQ(shortcut->modifiers, 0U);
    EXPECT_TRUE(shortcut->keyLabel.isEmpty());
    EXPECT_EQ(shortcut->rawValue(), QStringLiteral("disabled"));
}

TEST(HotKeyShortcutTest, ReadsTheNamesOfEarlierForms)
{
    EXPECT_EQ(parse("optionSpace"), (HotKeyShortcut{49, 2048, QStringLiteral("Space")}));
    EXPECT_EQ(parse("optionH"), (HotKeyShortcut{4, 2048, QStringLiteral("H")}));
    EXPECT_EQ(parse("controlOptionW"), (HotKeyShortcut{13, 6144, QStringLiteral("W")}));
    EXPECT_EQ(parse("controlOptionR"), (HotKeyShortcut{15, 6144, QStringLiteral("R")}));
    EXPECT_EQ(parse("optionP"), (HotKeyShortcut{35, 2048, QStringLiteral("P")}));
    EXPECT_EQ(parse("controlOptionO"), (HotKeyShortcut{31, 6144, QStringLiteral("O")}));
}

TEST(HotKeyShortcutTest, ShowsItsModifiersInTheFixedOrder)
{
    EXPECT_EQ((HotKeyShortcut{1, 0x100 | 0x200 | 0x800 | 0x1000, {}}).modifierTitle(),
              QStringLiteral("⌃⌥⇧⌘"));
    EXPECT_EQ((HotKeyShortcut{1, 6144, {}}).modifierTitle(), QStringLiteral("⌃⌥"));
    EXPECT_TRUE(HotKeyShortcut{}.modifierTitle().isEmpty());
}

TEST(HotKeyShortcutTest, SumsTheModifiersThatAreHeld)
{
    EXPECT_EQ(HotKeyShortcut::carbonModifiers(Qt::NoModifier), std::nullopt);
    EXPECT_EQ(HotKeyShortcut::carbonModifiers(Qt::KeypadModifier), std::nullopt);
    EXPECT_EQ(HotKeyShortcut::carbonModifiers(Qt::ControlModifier | Qt::AltModifier), 6144U);
    EXPECT_EQ(HotKeyShortcut::carbonModifiers(Qt::MetaModifier | Qt::ShiftModifier), 768U);
}

TEST(HotKeyShortcutTest, LabelsKeysByCodeElseByCharacter)
{
    EXPECT_EQ(HotKeyShortcut::label(36, QStringLiteral("\r")), QStringLiteral("↩"));
    EXPECT_EQ(HotKeyShortcut::label(49, QStringLiteral(" ")), QStringLiteral("Space"));
    EXPECT_EQ(HotKeyShortcut::label(126, {}), QStringLiteral("↑"));
    EXPECT_EQ(HotKeyShortcut::label(31, QStringLiteral("o")), QStringLiteral("O"));
    EXPECT_EQ(HotKeyShortcut::label(200, {}), QStringLiteral("Key"));
}

} // namespace
} // namespace tessary
