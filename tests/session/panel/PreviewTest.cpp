#include "tests/session/panel/PanelSession.h"
#include "tests/support/RecordSamples.h"

#include <QFile>

namespace tessary::testing {

namespace {

/// The preview of an item, opened from the panel, with real keys.
class PreviewTest : public PanelSession {
protected:
    void SetUp() override
    {
        prepare({textRecord(QStringLiteral("alpha words"), 1'700'000'000)});
        startWithPanel();
    }
    ::testing::AssertionResult opensPreview()
    {
        if (const auto opened = opensPanel(); !opened)
            return opened;
        if (const auto listed = lists(1); !listed)
            return listed;
        press("ctrl+y");
        return isPreviewInFront();
    }
    ::testing::AssertionResult isPreviewInFront()
    {
        const auto is = [this] {
            const auto window = screen.visible("alpha words");
            return window && screen.hasKeyboard(window->id);
        };
        return eventually(is) ? ::testing::AssertionSuccess()
                              : ::testing::AssertionFailure() << "no preview has the keyboard";
    }
    ::testing::AssertionResult previewCloses()
    {
        return eventually([this] { return !screen.visible("alpha words"); })
                   ? ::testing::AssertionSuccess()
                   : ::testing::AssertionFailure() << "the preview is still there";
    }
    void focusNote() { clickAt(noteCentre()); }
    [[nodiscard]] QPoint noteCentre() const
    {
        const QRect window = screen.visible("alpha words")->geometry;
        constexpr int kFromRight = 140;
        constexpr int kFromTop = 460;
        return {window.right() - kFromRight, window.top() + kFromTop};
    }
    [[nodiscard]] QString note() const
    {
        const auto item = library().text(QStringLiteral("alpha words"));
        return item ? item->note : QString();
    }
};

TEST_F(PreviewTest, ANoteTypedIsAskedAboutSavedAndThereAgain)
{
    ASSERT_TRUE(opensPreview());
    xdotool({QStringLiteral("key"), QStringLiteral("ctrl+plus"), QStringLiteral("ctrl+minus"),
             QStringLiteral("ctrl+0")});
    focusNote();
    type(QStringLiteral("remember"));
    press("Escape"); // asks
    press("Escape"); // takes the question back
    type(QStringLiteral(" this"));
    press("ctrl+w");
    press("Return"); // saving is the default
    ASSERT_TRUE(previewCloses());
    EXPECT_EQ(note(), QStringLiteral("remember this"));
    ASSERT_TRUE(opensPreview());
    focusNote();
    press("ctrl+a");
    press("ctrl+c");
    EXPECT_TRUE(eventually([] { return clipboard() == QStringLiteral("remember this"); }));
    press("Escape");
    EXPECT_TRUE(previewCloses());
}

TEST_F(PreviewTest, WhenTheProgramIsAskedToEndWhatWasTypedIsSaved)
{
    ASSERT_TRUE(opensPreview());
    focusNote();
    type(QStringLiteral("in a hurry"));
    press("ctrl+Home"); // has arrived when the keys before have
    press("ctrl+a");
    press("ctrl+c");
    ASSERT_TRUE(eventually([] { return clipboard() == QStringLiteral("in a hurry"); }));
    quit();
    EXPECT_EQ(note(), QStringLiteral("in a hurry"));
}

TEST_F(PreviewTest, TheTextIsExportedToWhereThePersonSays)
{
    const QString path = scratch(QStringLiteral("exported.txt"));
    ASSERT_TRUE(opensPreview());
    const QRect window = screen.visible("alpha words")->geometry;
    constexpr QPoint kExport(316, 32);
    clickAt(window.topLeft() + kExport);
    ASSERT_TRUE(eventually([&] {
        const auto dialog = screen.visible("导出");
        return dialog && screen.hasKeyboard(dialog->id);
    }));
    press("ctrl+a");
    type(path);
    press("Return");
    EXPECT_TRUE(eventually([&] { return readFile(path) == "alpha words"; }));
}

} // namespace
} // namespace tessary::testing
