#include "tests/session/panel/PanelSession.h"
#include "tests/support/RecordSamples.h"

#include <QProcess>

namespace tessary::testing {

namespace {

ScreenshotRecord item(const char* text)
{
    return textRecord(QString::fromUtf8(text));
}

class PanelSearchTest : public PanelSession {
protected:
    void SetUp() override
    {
        ScreenshotRecord fromKate = item("written in an editor");
        fromKate.sourceAppName = QStringLiteral("Kate");
        ScreenshotRecord tagged = item("to be paid");
        tagged.tags = {QStringLiteral("money")};
        ScreenshotRecord old = item("of another century");
        old.capturedAt = Date{900'000'000}; // 1998
        giveKeysTo(QStringLiteral("文字"));
        prepare({item("plain letters"), item("复制的文字"), item("清华大学"), fromKate, tagged, old});
        startWithPanel();
        target = &open(PasteTarget::Kind::Gtk3);
    }
    /// Keys that the keyboard has not got: a tool that types would borrow one for each letter, and take it
    /// back before the program has looked what it stood for.
    static void giveKeysTo(const QString& letters)
    {
        constexpr int kFirstFree = 248;
        QStringList keys;
        for (qsizetype i = 0; i < letters.size(); ++i)
            keys +=
                {QStringLiteral("-e"),
                 QStringLiteral("keycode %1 = U%2").arg(kFirstFree + i).arg(letters.at(i).unicode(), 4, 16)};
        ASSERT_EQ(QProcess::execute(QStringLiteral("xmodmap"), keys), 0);
    }
    /// Opens the panel and types, then pastes what was found.
    void findAndPaste(const QString& query)
    {
        ASSERT_TRUE(opensPanel());
        ASSERT_TRUE(lists(6));
        type(query);
        ASSERT_TRUE(lists(1));
        press("Return");
        ASSERT_TRUE(goes());
    }

    PasteTarget* target = nullptr;
};

TEST_F(PanelSearchTest, EveryWayToAskFindsItsItem)
{
    QString all;
    const std::pair<const char*, const char*> pairs[] = {
        {"letters", "plain letters"}, {"文字", "复制的文字"},
        {"qinghua", "清华大学"},      {"app:kate", "written in an editor"},
        {"tag:money", "to be paid"},  {"before:2000-01-01", "of another century"}};
    for (const auto& [query, text] : pairs) {
        findAndPaste(QString::fromUtf8(query));
        all += QString::fromUtf8(text);
        ASSERT_TRUE(arrives(*target, all)) << query;
        ASSERT_TRUE(isInFront("target"));
    }
}

TEST_F(PanelSearchTest, AFavouriteIsFoundAsSuch)
{
    ASSERT_TRUE(opensPanel());
    ASSERT_TRUE(lists(6));
    type(QStringLiteral("paid"));
    ASSERT_TRUE(lists(1));
    press("ctrl+d");
    ASSERT_TRUE(lists(1)); // the library has changed
    press("Escape");
    ASSERT_TRUE(goes());
    ASSERT_TRUE(lists(6));
    findAndPaste(QStringLiteral("is:favorite"));
    EXPECT_TRUE(arrives(*target, QStringLiteral("to be paid")));
}

} // namespace

} // namespace tessary::testing
