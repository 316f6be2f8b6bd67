#include "platform/x11/PasteKeys.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

// Key codes of the keys by position, as every server on Linux counts them.
constexpr xcb_keycode_t kPositionV = 55;
constexpr xcb_keycode_t kPositionPeriod = 60;
constexpr xcb_keycode_t kControlLeft = 37;
constexpr xcb_keycode_t kCapsLock = 66;
constexpr xcb_keycode_t kShiftLeft = 50;
constexpr xcb_keycode_t kInsert = 118;

PasteKeys keysOf(const char* layouts, const char* variants = "", xkb_layout_index_t active = 0,
                 const char* options = "")
{
    const XkbPointer<xkb_context> context(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
    const xkb_rule_names names{"evdev", "pc105", layouts, variants, options};
    const XkbPointer<xkb_keymap> keymap(
        xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
    const XkbPointer<xkb_state> state(xkb_state_new(keymap.get()));
    xkb_state_update_mask(state.get(), 0, 0, 0, 0, 0, active);
    return PasteKeys::find(state.get());
}

TEST(PasteKeysTest, FindsVWhereTheLayoutHasIt)
{
    const PasteKeys::Chord atItsUsualPlace{kControlLeft, kPositionV};
    for (const char* layout : {"us", "de", "fr", "cn", "jp"})
        EXPECT_EQ(keysOf(layout).chord(PasteKeystroke::ControlV), atItsUsualPlace) << layout;
    EXPECT_EQ(keysOf("us", "dvorak").chord(PasteKeystroke::ControlV),
              (PasteKeys::Chord{kControlLeft, kPositionPeriod}));
}

TEST(PasteKeysTest, ALayoutWithoutVHasOnlyTheOtherKeys)
{
    for (const char* layout : {"ru", "gr", "ara", "ua"}) {
        const PasteKeys keys = keysOf(layout);
        EXPECT_EQ(keys.chord(PasteKeystroke::ControlV), std::nullopt) << layout;
        EXPECT_EQ(keys.chord(PasteKeystroke::ShiftInsert), (PasteKeys::Chord{kShiftLeft, kInsert})) << layout;
    }
}

TEST(PasteKeysTest, TheActiveOneOfSeveralLayoutsCounts)
{
    EXPECT_TRUE(keysOf("us,ru", ",", 0).v);
    EXPECT_FALSE(keysOf("us,ru", ",", 1).v);
    EXPECT_TRUE(keysOf("ru,de", ",", 1).v);
}

TEST(PasteKeysTest, LocksAndShiftMakeNoDifference)
{
    const XkbPointer<xkb_context> context(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
    const xkb_rule_names names{"evdev", "pc105", "us", "", ""};
    const XkbPointer<xkb_keymap> keymap(
        xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
    const XkbPointer<xkb_state> state(xkb_state_new(keymap.get()));
    xkb_state_update_mask(state.get(), 1, 0, 2 | 16, 0, 0, 0);
    EXPECT_EQ(PasteKeys::find(state.get()).v, kPositionV);
}

TEST(PasteKeysTest, AControlKeyThatWasMovedIsFound)
{
    EXPECT_EQ(keysOf("us", "", 0, "ctrl:swapcaps").control, kCapsLock);
}

} // namespace
} // namespace tessary
