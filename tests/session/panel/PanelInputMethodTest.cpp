#include "tests/session/panel/PanelSession.h"
#include "tests/support/RecordSamples.h"

#include <QFile>
#include <QProcess>

namespace tessary::testing {

namespace {

/// Chinese by an input method, which has the keys as long as it composes.
class PanelInputMethodTest : public PanelSession {
protected:
    void SetUp() override
    {
        prepare({textRecord(QStringLiteral("你好世界"), 1'700'000'000),
                 textRecord(QStringLiteral("something else"), 1'700'000'060)});
        // The input method's address is where the desktop keeps its settings.
        ASSERT_TRUE(QFile::link(qEnvironmentVariable("XDG_CONFIG_HOME") + QStringLiteral("/ibus"),
                                scratch(QStringLiteral("config/ibus"))));
        startWithPanel();
        target = &open(PasteTarget::Kind::Xterm);
        ASSERT_TRUE(opensPanel());
        ASSERT_TRUE(lists(2));
        // The engine is that of whoever has the keyboard. Choosing tells nothing of how it went.
        ASSERT_TRUE(eventually([] {
            (void)ibusEngine({QStringLiteral("libpinyin")});
            return ibusEngine({}) == "libpinyin\n";
        }));
    }
    static QByteArray ibusEngine(const QStringList& chosen)
    {
        QProcess process;
        process.start(QStringLiteral("ibus"), QStringList{QStringLiteral("engine")} + chosen);
        EXPECT_TRUE(process.waitForFinished());
        return process.readAllStandardOutput();
    }

    PasteTarget* target = nullptr;
};

TEST_F(PanelInputMethodTest, WhatWasComposedIsLookedFor)
{
    type(QStringLiteral("nihao"));
    press("space"); // takes what is proposed
    ASSERT_TRUE(lists(1));
    press("Return");
    EXPECT_TRUE(arrives(*target, QStringLiteral("你好世界")));
}

TEST_F(PanelInputMethodTest, SpaceAfterAnArrowStillBelongsToTheComposition)
{
    press("Down");
    type(QStringLiteral("nihao"));
    press("space");
    ASSERT_TRUE(lists(1));
    EXPECT_EQ(cutField(), QStringLiteral("你好"));
    EXPECT_FALSE(tessary().output().contains(QLatin1String("preview")));
}

TEST_F(PanelInputMethodTest, ReturnEndsTheCompositionAndPastesNothing)
{
    type(QStringLiteral("nihao"));
    press("Return"); // takes the letters as they are
    EXPECT_EQ(cutField(), QStringLiteral("nihao"));
    EXPECT_TRUE(isShown());
    EXPECT_EQ(target->text(), QString());
}

TEST_F(PanelInputMethodTest, EscapeEndsTheCompositionAndOnlyThenThePanel)
{
    type(QStringLiteral("nihao"));
    press("Escape");
    type(QStringLiteral("ma"));
    press("space");
    EXPECT_EQ(cutField().size(), 1);
    EXPECT_TRUE(isShown());
    press("Escape");
    EXPECT_TRUE(goes());
}

TEST_F(PanelInputMethodTest, ArrowsMoveInTheCompositionAndNotInTheList)
{
    type(QStringLiteral("nihao"));
    press("Down"); // another proposal
    press("Escape");
    press("ctrl+c");
    EXPECT_TRUE(eventually([] { return clipboard() == QStringLiteral("something else"); }));
}

} // namespace

} // namespace tessary::testing
