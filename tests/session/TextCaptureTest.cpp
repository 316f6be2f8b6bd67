#include "tests/session/SessionTest.h"

#include <QElapsedTimer>

#include <gmock/gmock.h>

#include <vector>

namespace tessary::testing {

namespace {

class TextCaptureTest : public SessionTest {
protected:
    void SetUp() override { start(); }
};

std::vector<QString> numbered(const QString& prefix, int count)
{
    std::vector<QString> texts;
    for (int i = 1; i <= count; ++i)
        texts.push_back(prefix + QString::number(i));
    return texts;
}

TEST_F(TextCaptureTest, AHundredTextsHalfASecondApartAreAllThereInOrder)
{
    ChildProcess& owner = own({QStringLiteral("--prefix"), QStringLiteral("第"), QStringLiteral("--series"),
                               QStringLiteral("100"), QStringLiteral("--every"), QStringLiteral("500")});
    ASSERT_TRUE(eventually([&] { return owner.output().contains(QLatin1String("owning 100")); },
                           std::chrono::seconds(90)));
    EXPECT_TRUE(holds(100));
    EXPECT_EQ(library().texts(), numbered(QStringLiteral("第"), 100));
}

TEST_F(TextCaptureTest, TheSameTextTwiceIsOneItemThatCountsTwo)
{
    copyText(QStringLiteral("again 再来"));
    ASSERT_TRUE(holdsText(QStringLiteral("again 再来")));
    copyText(QStringLiteral("again 再来"));
    EXPECT_TRUE(
        eventually([&] { return library().text(QStringLiteral("again 再来"))->duplicateCount == 2; }));
    EXPECT_TRUE(holds(1));
    EXPECT_GT(library().items().front().lastUsedAt, 0.0);
}

TEST_F(TextCaptureTest, TextIsTrimmedAndTheFirstLineIsItsName)
{
    copyText(QStringLiteral("\n  \t 第一行 first \nsecond line\n\n"));
    ASSERT_TRUE(holds(1));
    const LibraryItem item = library().items().front();
    EXPECT_EQ(item.text, QStringLiteral("第一行 first \nsecond line"));
    EXPECT_EQ(item.filename, QStringLiteral("第一行 first"));
    EXPECT_EQ(item.fileType, QStringLiteral("text"));
    EXPECT_EQ(item.fileSize, item.text.toUtf8().size());
}

TEST_F(TextCaptureTest, BlankTextIsIgnored)
{
    ownForAWhile({QStringLiteral("--offer"), QStringLiteral("UTF8_STRING=text: \t\n \n")});
    EXPECT_TRUE(keepsCopying());
    EXPECT_TRUE(holds(1));
}

TEST_F(TextCaptureTest, RichTextWithoutPlainTextIsIgnored)
{
    ownForAWhile({QStringLiteral("--offer"), QStringLiteral("text/html=text:<b>rich</b>")});
    EXPECT_TRUE(keepsCopying());
    EXPECT_TRUE(holds(1));
}

TEST_F(TextCaptureTest, EveryTextOfAnOwnerThatQuitsAfterTwentyMillisecondsIsKept)
{
    for (int i = 1; i <= 10; ++i) {
        const QString text = QStringLiteral("brief %1").arg(i);
        ChildProcess& owner = own({QStringLiteral("--offer"), QStringLiteral("UTF8_STRING=text:") + text,
                                   QStringLiteral("--quit-after"), QStringLiteral("20")});
        EXPECT_EQ(owner.exitCode(), 0);
        EXPECT_TRUE(holdsText(text));
    }
    EXPECT_TRUE(holds(10));
}

TEST_F(TextCaptureTest, OfManyChangesWithinOneLookTheLastIsKept)
{
    own({QStringLiteral("--prefix"), QStringLiteral("fast "), QStringLiteral("--series"),
         QStringLiteral("40"), QStringLiteral("--every"), QStringLiteral("10")});
    ASSERT_TRUE(holdsText(QStringLiteral("fast 40")));
    const std::size_t kept = library().items().size();
    RecordProperty("kept_of_40", static_cast<int>(kept));
    EXPECT_LE(kept, 3U) << "0.4 s hold at most two looks";
}

TEST_F(TextCaptureTest, ATwentyMegabyteTextIsKeptWhole)
{
    QElapsedTimer timer;
    timer.start();
    own({QStringLiteral("--offer"), QStringLiteral("UTF8_STRING=size:20000000")});
    ASSERT_TRUE(holds(1));
    RecordProperty("milliseconds", static_cast<int>(timer.elapsed()));
    EXPECT_EQ(library().items().front().fileSize, 20000000);
    EXPECT_TRUE(keepsCopying());
}

TEST_F(TextCaptureTest, SeveralOwnersAtOnceLeaveTheLastOneAndAWorkingMonitor)
{
    constexpr int kRivals = 8;
    std::vector<ChildProcess*> rivals;
    rivals.reserve(kRivals);
    for (int i = 0; i < kRivals; ++i) {
        rivals.push_back(&program(QStringLiteral(TESSARY_CLIPBOARD_OWNER),
                                  {QStringLiteral("--prefix"), QStringLiteral("rival %1-").arg(i),
                                   QStringLiteral("--series"), QStringLiteral("5"), QStringLiteral("--every"),
                                   QStringLiteral("100")}));
    }
    for (ChildProcess* rival : rivals)
        ASSERT_TRUE(rival->printed(QStringLiteral("owning 5")));
    ASSERT_TRUE(eventually([&] { return !library().items().empty(); }));
    EXPECT_TRUE(keepsCopying());
    for (const QString& text : library().texts())
        EXPECT_THAT(text.toStdString(), ::testing::MatchesRegex("(rival [0-7]-[1-5])|(marker 1)"));
}

TEST_F(TextCaptureTest, ATextFromACommandLineToolIsKept)
{
    writeFile(scratch(QStringLiteral("copied.txt")), QStringLiteral("from xclip, 来自终端").toUtf8());
    program(QStringLiteral("xclip"), {QStringLiteral("-selection"), QStringLiteral("clipboard"),
                                      QStringLiteral("-quiet"), scratch(QStringLiteral("copied.txt"))});
    EXPECT_TRUE(holdsText(QStringLiteral("from xclip, 来自终端")));
}

TEST_F(TextCaptureTest, SelectingWithTheMouseIsNotCopying)
{
    ownForAWhile({QStringLiteral("--selection"), QStringLiteral("PRIMARY"), QStringLiteral("--offer"),
                  QStringLiteral("UTF8_STRING=text:only selected")});
    EXPECT_TRUE(keepsCopying());
    EXPECT_TRUE(holds(1));
}

/// Started later than the copy.
using EarlierCopyTest = SessionTest;

TEST_F(EarlierCopyTest, WhatWasThereBeforeTheStartIsNotCaptured)
{
    copyText(QStringLiteral("old news"));
    start();
    ASSERT_TRUE(keepsCopying());
    EXPECT_TRUE(holds(1));
    EXPECT_FALSE(library().text(QStringLiteral("old news")).has_value());
}

} // namespace

} // namespace tessary::testing
