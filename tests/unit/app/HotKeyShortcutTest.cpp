#include "app/HotKeyShortcut.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

std::optional<HotKeyShortcut> parse(const char* text)
{
    return HotKeyShortcut::fromRawValue(QString::fromUtf8(text));
}

TEST(HotKeyShortcutTest, ATextFormParsesAndGivesTheSameTextBack)
{
    const auto shortcut = parse("v2|31|6144|O");
    ASSERT_TRUE(shortcut);
    EXPECT_EQ(*shortcut, (HotKeyShortcut{31, 6144, QStringLiteral("O")}));
    EXPECT_EQ(shortcut->rawValue(), QStringLiteral("v2|31|6144|O"));
    EXPECT_EQ(shortcut->id(), shortcut->rawValue());
}

TEST(HotKeyShortcutTest, GarbledTextsDoNotParse)
{
    for (const char* text :
         {"v1|31|6144|O", "v2|31|6144", "v2|x|6144|O", "v2|31|-1|O", "", "v2", "|||", "V2|31|6144|O",
          "v2|+|6144|O", "v2|31|4294967296|O", "v2|31|99999999999999999999999|O", "v2| 31|6144|O",
          "v2|31|6144|", "v2|++1|6144|O", "v2|٣|6144|O", "optionX", "Disabled", "v2|3.0|1|O"})
        EXPECT_FALSE(parse(text)) << text;
}

TEST(HotKeyShortcutTest, ALeadingPlusIsAccepted)
{
    EXPECT_EQ(parse("v2|31|+6144|O"), (HotKeyShortcut{31, 6144, QStringLiteral("O")}));
    EXPECT_EQ(parse("v2|4294967295|0|O")->keyCode, 4294967295U);
}

TEST(HotKeyShortcutTest, TheLabelKeepsFurtherBars)
{
    EXPECT_EQ(parse("v2|31|6144|A|B")->keyLabel, QStringLiteral("A|B"));
    EXPECT_EQ(parse("v2|31|6144|A||B|")->keyLabel, QStringLiteral("A||B|"));
}

TEST(HotKeyShortcutTest, EmptyPiecesAreDropped)
{
    EXPECT_EQ(parse("||v2||31|6144|O"), parse("v2|31|6144|O"));
    EXPECT_EQ(parse("v2|31|6144||O")->keyLabel, QStringLiteral("O"));
}

TEST(HotKeyShortcutTest, DisabledParsesToAShortcutWithoutAKey)
{
    const auto shortcut = parse("disabled");
    ASSERT_TRUE(shortcut);
    EXPECT_TRUE(shortcut->isDisabled());
    EXPECT_EQ(*shortcut, HotKeyShortcut{});
    EXPECT_EQ(shortcut->rawValue(), QStringLiteral("disabled"));
}

TEST(HotKeyShortcutTest, LegacyNamesAreReadAndWrittenInTheNewForm)
{
    const std::pair<const char*, const char*> names[] = {{"optionSpace", "v2|49|2048|Space"},
                                                         {"optionR", "v2|15|2048|R"},
                                                         {"optionW", "v2|13|2048|W"},
                                                         {"optionH", "v2|4|2048|H"},
                                                         {"optionP", "v2|35|2048|P"},
                                                         {"optionO", "v2|31|2048|O"},
                                                         {"controlOptionSpace", "v2|49|6144|Space"},
                                                         {"controlOptionR", "v2|15|6144|R"},
                                                         {"controlOptionW", "v2|13|6144|W"},
                                                         {"controlOptionH", "v2|4|6144|H"},
                                                         {"controlOptionP", "v2|35|6144|P"},
                                                         {"controlOptionO", "v2|31|6144|O"}};
    for (const auto& [name, text] : names)
        EXPECT_EQ(parse(name)->rawValue(), QString::fromLatin1(text));
}

TEST(HotKeyShortcutTest, ModifiersAreShownInAFixedOrder)
{
    EXPECT_EQ((HotKeyShortcut{31, 256 + 512 + 2048 + 4096, {}}).modifierTitle(), QStringLiteral("⌃⌥⇧⌘"));
    EXPECT_EQ((HotKeyShortcut{31, 6144, {}}).modifierTitle(), QStringLiteral("⌃⌥"));
    EXPECT_EQ(HotKeyShortcut{}.modifierTitle(), QString());
}

TEST(HotKeyShortcutTest, AKeyEventsModifiersBecomeTheMask)
{
    EXPECT_EQ(HotKeyShortcut::carbonModifiers(Qt::ControlModifier), 4096U);
    EXPECT_EQ(HotKeyShortcut::carbonModifiers(Qt::AltModifier | Qt::KeypadModifier), 2048U);
    EXPECT_EQ(HotKeyShortcut::carbonModifiers(Qt::ShiftModifier | Qt::MetaModifier), 768U);
    EXPECT_EQ(HotKeyShortcut::carbonModifiers(Qt::KeypadModifier), std::nullopt);
}

TEST(HotKeyShortcutTest, KeysAreLabelledByCodeElseByTheirCharacters)
{
    const std::pair<quint32, const char*> labels[] = {{36, "↩"},   {48, "⇥"},  {49, "Space"}, {51, "⌫"},
                                                      {53, "Esc"}, {117, "⌦"}, {123, "←"},    {124, "→"},
                                                      {125, "↓"},  {126, "↑"}};
    for (const auto& [keyCode, label] : labels)
        EXPECT_EQ(HotKeyShortcut::label(keyCode, QStringLiteral("x")), QString::fromUtf8(label));
    EXPECT_EQ(HotKeyShortcut::label(31, QStringLiteral("o")), QStringLiteral("O"));
    EXPECT_EQ(HotKeyShortcut::label(31, QString()), QStringLiteral("Key"));
}

} // namespace
} // namespace tessary
