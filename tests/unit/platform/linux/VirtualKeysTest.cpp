#include "platform/linux/VirtualKeys.h"

#include <gtest/gtest.h>

#include <linux/input-event-codes.h>
#include <set>

namespace tessary {
namespace {

TEST(VirtualKeysTest, KnowsTheKeysOfTheDefaultShortcuts)
{
    EXPECT_EQ(keycodeOfVirtualKey(49), KEY_SPACE + 8);
    EXPECT_EQ(keycodeOfVirtualKey(15), KEY_R + 8);
    EXPECT_EQ(keycodeOfVirtualKey(13), KEY_W + 8);
    EXPECT_EQ(keycodeOfVirtualKey(35), KEY_P + 8);
    EXPECT_EQ(keycodeOfVirtualKey(31), KEY_O + 8);
    EXPECT_EQ(keycodeOfVirtualKey(4), KEY_H + 8);
}

TEST(VirtualKeysTest, KnowsTheKeysThatHaveLabelsOfTheirOwn)
{
    EXPECT_EQ(keycodeOfVirtualKey(36), KEY_ENTER + 8);
    EXPECT_EQ(keycodeOfVirtualKey(48), KEY_TAB + 8);
    EXPECT_EQ(keycodeOfVirtualKey(51), KEY_BACKSPACE + 8);
    EXPECT_EQ(keycodeOfVirtualKey(53), KEY_ESC + 8);
    EXPECT_EQ(keycodeOfVirtualKey(117), KEY_DELETE + 8);
    EXPECT_EQ(keycodeOfVirtualKey(123), KEY_LEFT + 8);
    EXPECT_EQ(keycodeOfVirtualKey(124), KEY_RIGHT + 8);
    EXPECT_EQ(keycodeOfVirtualKey(125), KEY_DOWN + 8);
    EXPECT_EQ(keycodeOfVirtualKey(126), KEY_UP + 8);
}

TEST(VirtualKeysTest, NoTwoCodesShareAKeyAndEachLeadsBack)
{
    std::set<quint8> keycodes;
    int known = 0;
    for (quint32 virtualKey = 0; virtualKey < 256; ++virtualKey) {
        const std::optional<quint8> keycode = keycodeOfVirtualKey(virtualKey);
        if (!keycode)
            continue;
        ++known;
        keycodes.insert(*keycode);
        EXPECT_EQ(virtualKeyOfKeycode(*keycode), virtualKey);
    }
    EXPECT_EQ(static_cast<int>(keycodes.size()), known);
    EXPECT_GT(known, 100);
}

TEST(VirtualKeysTest, CodesOfNoKeyAndOfModifiersHaveNone)
{
    for (const quint32 virtualKey :
         {0x34U, 0x37U, 0x38U, 0x3AU, 0x3BU, 0x7FU, 0x80U, 31U + 256U, 4294967295U})
        EXPECT_EQ(keycodeOfVirtualKey(virtualKey), std::nullopt) << virtualKey;
    EXPECT_EQ(virtualKeyOfKeycode(KEY_LEFTSHIFT + 8), std::nullopt);
    EXPECT_EQ(virtualKeyOfKeycode(0), std::nullopt);
}

} // namespace
} // namespace tessary
