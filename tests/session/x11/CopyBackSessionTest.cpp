#include "app/AppRuntime.h"
#include "app/ApplicationIdentity.h"
#include "store/Projection.h"
#include "store/RecordColumns.h"
#include "tests/session/x11/PasteFixture.h"
#include "tests/support/FakeWindows.h"

namespace tessary {
namespace {

using testing::await;
using testing::ChildProcess;
using testing::eventually;
using testing::PasteTarget;

/// The runtime with a library of its own on the real clipboard.
class CopyBackSessionTest : public testing::PasteFixture {
protected:
    CopyBackSessionTest()
    {
        allowTyping();
        await(runtime.start());
    }
    ~CopyBackSessionTest() override { await(runtime.shutDown()); }

    QList<ScreenshotRecord> listed() const
    {
        Projection projection(folder.path() + QStringLiteral("/Tessary/Tessary.metadata.sqlite3"));
        return projection.records("SELECT " + columnList(kProjectionColumns) + " FROM screenshots");
    }
    /// Waits until exactly one item is there and was captured so often.
    bool holdsOneItem(qint64 captures)
    {
        return eventually([&] {
            const QList<ScreenshotRecord> items = listed();
            return items.size() == 1 && items.first().duplicateCount == captures;
        });
    }

    testing::FakeWindows windows;
    AppRuntime runtime{platform(clock), windows};
};

TEST_F(CopyBackSessionTest, ATextCopiedBackIsTheSameItemOnceMore)
{
    takeAway("clipboard", "some text");
    ASSERT_TRUE(holdsOneItem(1));
    await(runtime.copy(listed().first(), false));
    EXPECT_TRUE(holdsOneItem(2));
    EXPECT_EQ(xclipSelection("clipboard"), "some text");
    EXPECT_TRUE(listed().first().lastUsedAt);
    EXPECT_EQ(runtime.lastError(), std::nullopt);
}

TEST_F(CopyBackSessionTest, APngCopiedBackIsTheSameItemOnceMore)
{
    const QByteArray png = testing::pngOf(testing::picture(900, 700));
    const QString path = save("picture.png", png);
    ASSERT_EQ(QProcess::execute(QStringLiteral("sh"),
                                {QStringLiteral("-c"),
                                 QStringLiteral("exec xclip -selection clipboard -t image/png -i \"$0\" "
                                                ">/dev/null 2>&1"),
                                 path}),
              0);
    ASSERT_TRUE(holdsOneItem(1));
    await(runtime.copy(listed().first(), false));
    EXPECT_TRUE(holdsOneItem(2));
    EXPECT_EQ(xclipTarget("image/png"), png);
}

TEST_F(CopyBackSessionTest, APickedItemArrivesWhereThePersonWas)
{
    takeAway("clipboard", "picked");
    ASSERT_TRUE(holdsOneItem(1));
    PasteTarget& target = open(PasteTarget::Kind::Gtk3, "target");
    runtime.toggleQuickSearch();
    const RunningApplication ours{QStringLiteral("Tessary"), applicationIdentifier(), std::nullopt,
                                  QCoreApplication::applicationPid(), 1};
    Q_EMIT workspace.applicationActivated(ours); // as the panel does that another program plays here
    open(PasteTarget::Kind::Qt, "panel");
    await(runtime.copy(listed().first(), true));
    EXPECT_TRUE(arrives(target, QStringLiteral("picked")));
    EXPECT_FALSE(windows.isVisible);
    EXPECT_EQ(runtime.lastError(), std::nullopt);
    EXPECT_TRUE(holdsOneItem(2));
}

TEST_F(CopyBackSessionTest, WhatWasCopiedOutlivesTheProgram)
{
    ChildProcess keeper(QStringLiteral(TESSARY_CLIPBOARD_KEEPER),
                        {QStringLiteral("UTF8_STRING"), folder.file(QStringLiteral("kept"))});
    ASSERT_TRUE(keeper.printed(QStringLiteral("managing")));
    takeAway("clipboard", "kept text");
    ASSERT_TRUE(holdsOneItem(1));
    await(runtime.copy(listed().first(), false));
    await(runtime.shutDown());
    EXPECT_TRUE(keeper.printed(QStringLiteral("saved 9 bytes"))) << qPrintable(keeper.output());
}

} // namespace
} // namespace tessary
