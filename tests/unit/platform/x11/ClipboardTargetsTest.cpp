#include "platform/x11/ClipboardTargets.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

TEST(ClipboardTargetsTest, TakesTextInTheOrderOfItsFidelity)
{
    const ClipboardTargets targets =
        ClipboardTargets::choose({"STRING", "text/plain;charset=utf-8", "UTF8_STRING"});
    EXPECT_EQ(targets.text, (QList<QByteArray>{"UTF8_STRING", "text/plain;charset=utf-8", "STRING"}));
    EXPECT_TRUE(targets.png.isEmpty());
    EXPECT_TRUE(targets.bitmap.isEmpty());
}

TEST(ClipboardTargetsTest, TakesPngForItselfAndOtherBitmapsLosslessFirst)
{
    const ClipboardTargets targets =
        ClipboardTargets::choose({"image/webp", "image/jpeg", "image/bmp", "image/tiff", "image/png"});
    EXPECT_EQ(targets.png, QList<QByteArray>{"image/png"});
    EXPECT_EQ(targets.bitmap, (QList<QByteArray>{"image/tiff", "image/bmp", "image/jpeg", "image/webp"}));
}

TEST(ClipboardTargetsTest, IgnoresEverythingElse)
{
    const ClipboardTargets targets =
        ClipboardTargets::choose({"text/html", "text/uri-list", "image/svg+xml", "TIMESTAMP", "\xff\xfe"});
    EXPECT_TRUE(targets.png.isEmpty() && targets.bitmap.isEmpty() && targets.text.isEmpty());
    EXPECT_FALSE(targets.hasSecrecyHint);
}

TEST(ClipboardTargetsTest, SeesTheHintThatContentsAreSecret)
{
    EXPECT_TRUE(ClipboardTargets::choose({"UTF8_STRING", "x-kde-passwordManagerHint"}).hasSecrecyHint);
    EXPECT_TRUE(ClipboardTargets::knownNames().contains("x-kde-passwordManagerHint"));
}

TEST(ClipboardTargetsTest, AnOwnerThatDoesNotAnswerIsAskedForTextOfOldOnly)
{
    const ClipboardTargets targets = ClipboardTargets::unannounced();
    EXPECT_EQ(targets.text, (QList<QByteArray>{"UTF8_STRING", "STRING"}));
    EXPECT_TRUE(targets.png.isEmpty());
}

} // namespace
} // namespace tessary
