#include "tests/session/panel/PanelSession.h"
#include "tests/support/RecordSamples.h"

namespace tessary::testing {

namespace {

/// Items "one" (the newest), "two" and "three", and what happens to them while the panel is open.
class PanelLibraryTest : public PanelSession {
protected:
    void SetUp() override
    {
        prepare({textRecord(QStringLiteral("three"), 1'700'000'000),
                 textRecord(QStringLiteral("two"), 1'700'000'060),
                 textRecord(QStringLiteral("one"), 1'700'000'120)});
        startWithPanel();
        target = &open(PasteTarget::Kind::Gtk3);
        ASSERT_TRUE(opensPanel());
        ASSERT_TRUE(lists(3));
    }
    ::testing::AssertionResult becomes(const char* text, bool LibraryItem::*state)
    {
        const auto is = [&] {
            const std::optional<LibraryItem> item = library().text(QLatin1String(text));
            return item && (*item).*state;
        };
        return eventually(is) ? ::testing::AssertionSuccess() : ::testing::AssertionFailure() << text;
    }

    PasteTarget* target = nullptr;
};

TEST_F(PanelLibraryTest, WhatIsCopiedMeanwhileComesToTheTopAndTheFirstRowStaysSelected)
{
    copyText(QStringLiteral("new"));
    ASSERT_TRUE(lists(4));
    EXPECT_TRUE(isShown());
    copyText(QStringLiteral("newer"));
    ASSERT_TRUE(lists(5));
    press("Return");
    EXPECT_TRUE(arrives(*target, QStringLiteral("newer")));
}

TEST_F(PanelLibraryTest, TheArrowsSelectWhatIsPasted)
{
    xdotool({QStringLiteral("key"), QStringLiteral("Down"), QStringLiteral("Down"), QStringLiteral("Up")});
    press("Return");
    EXPECT_TRUE(arrives(*target, QStringLiteral("two")));
}

TEST_F(PanelLibraryTest, AnItemThatIsThrownAwayIsGoneAndTheNextOneIsSelected)
{
    press("ctrl+BackSpace");
    ASSERT_TRUE(lists(2));
    EXPECT_TRUE(becomes("one", &LibraryItem::isDeleted));
    EXPECT_TRUE(isShown());
    press("Return");
    EXPECT_TRUE(arrives(*target, QStringLiteral("two")));
}

TEST_F(PanelLibraryTest, ThrowingAwayTheLastRowSelectsTheOneAboveAndAnEmptyListPastesNothing)
{
    xdotool({QStringLiteral("key"), QStringLiteral("Down"), QStringLiteral("Down"),
             QStringLiteral("ctrl+BackSpace")});
    ASSERT_TRUE(lists(2));
    EXPECT_TRUE(becomes("three", &LibraryItem::isDeleted));
    press("ctrl+BackSpace");
    ASSERT_TRUE(lists(1));
    EXPECT_TRUE(becomes("two", &LibraryItem::isDeleted));
    press("ctrl+BackSpace");
    ASSERT_TRUE(lists(0));
    xdotool(
        {QStringLiteral("key"), QStringLiteral("Return"), QStringLiteral("Up"), QStringLiteral("ctrl+c")});
    press("Escape"); // the keys before have been dealt with
    EXPECT_TRUE(goes());
    EXPECT_EQ(target->text(), QString());
}

TEST_F(PanelLibraryTest, FavouritesAndPinsReachTheLibraryAndThePanelStays)
{
    press("Down");
    press("ctrl+d");
    ASSERT_TRUE(lists(3));
    EXPECT_TRUE(becomes("two", &LibraryItem::isFavorite));
    press("ctrl+p"); // "two" is the first now
    ASSERT_TRUE(lists(3));
    EXPECT_TRUE(becomes("two", &LibraryItem::isPinned));
    EXPECT_TRUE(isShown());
    press("Up");
    press("Return");
    EXPECT_TRUE(arrives(*target, QStringLiteral("two")));
}

TEST_F(PanelLibraryTest, CopyingOnlyLeavesThePanelAndTheTargetAlone)
{
    press("Down");
    press("ctrl+c");
    EXPECT_TRUE(eventually([] { return clipboard() == QStringLiteral("two"); }));
    EXPECT_TRUE(isShown());
    press("Escape");
    EXPECT_TRUE(goes());
    EXPECT_EQ(target->text(), QString());
    EXPECT_EQ(library().items().size(), 3U); // it is no new item
}

TEST_F(PanelLibraryTest, SpaceTypesUntilAnArrowWasPressedAndAgainAfterTyping)
{
    type(QStringLiteral("a b"));
    EXPECT_EQ(cutField(), QStringLiteral("a b"));
    ASSERT_TRUE(lists(4)); // what was cut is an item as well
    press("Down");
    press("space");
    EXPECT_TRUE(isInFront("one")); // in a window of its own
    EXPECT_TRUE(goes());
    press("Escape");
    EXPECT_TRUE(isInFront("target"));
    ASSERT_TRUE(opensPanel());
    press("Down");
    type(QStringLiteral("c d"));
    EXPECT_EQ(cutField(), QStringLiteral("c d"));
}

} // namespace

} // namespace tessary::testing
