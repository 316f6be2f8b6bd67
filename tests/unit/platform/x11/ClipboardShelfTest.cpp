#include "platform/x11/ClipboardShelf.h"

#include "tests/support/Await.h"

#include <thread>

namespace tessary {
namespace {

using testing::await;

QCoro::Task<std::optional<QByteArray>> read(ClipboardShelf& shelf, qint64 count)
{
    ClipboardShelf::Arrival arrival = shelf.arrival(count);
    co_await arrival;
    co_return shelf.contents(count, PasteboardType::Text);
}

ClipboardSnapshot text(const char* utf8)
{
    ClipboardSnapshot snapshot;
    snapshot.text = utf8;
    return snapshot;
}

TEST(ClipboardShelfTest, CountsChangesAndHandsOutTheirContents)
{
    ClipboardShelf shelf;
    EXPECT_EQ(shelf.look(), 0);
    const qint64 count = shelf.announce();
    EXPECT_EQ(shelf.look(), count);
    shelf.put(count, text("here"));
    EXPECT_EQ(await(read(shelf, count)), QByteArray("here"));
    EXPECT_EQ(shelf.contents(count, PasteboardType::Png), std::nullopt);
}

TEST(ClipboardShelfTest, AReaderWaitsForWhatAnotherThreadFetches)
{
    ClipboardShelf shelf;
    const qint64 count = shelf.announce();
    EXPECT_EQ(shelf.look(), count);
    auto waiting = read(shelf, count);
    std::thread fetching([&] { shelf.put(count, text("late")); });
    EXPECT_EQ(await(std::move(waiting)), QByteArray("late"));
    fetching.join();
}

TEST(ClipboardShelfTest, DropsAChangeThatNobodyHasSeen)
{
    ClipboardShelf shelf;
    const qint64 unseen = shelf.announce();
    shelf.put(unseen, text("unseen"));
    const qint64 latest = shelf.announce();
    EXPECT_FALSE(shelf.isWanted(unseen));
    EXPECT_TRUE(shelf.isWanted(latest));
    EXPECT_EQ(await(read(shelf, unseen)), std::nullopt);
}

TEST(ClipboardShelfTest, KeepsAChangeThatWasSeenWhenTheNextComes)
{
    ClipboardShelf shelf;
    const qint64 seen = shelf.announce();
    EXPECT_EQ(shelf.look(), seen);
    shelf.announce();
    shelf.put(seen, text("seen"));
    EXPECT_EQ(await(read(shelf, seen)), QByteArray("seen"));
}

TEST(ClipboardShelfTest, ForgetsWhatWasReleased)
{
    ClipboardShelf shelf;
    const qint64 count = shelf.announce();
    shelf.put(count, text("once"));
    shelf.release(count);
    EXPECT_FALSE(shelf.isWanted(count));
    EXPECT_EQ(await(read(shelf, count)), std::nullopt);
}

TEST(ClipboardShelfTest, ClosingEndsEveryWait)
{
    ClipboardShelf shelf;
    const qint64 count = shelf.announce();
    EXPECT_EQ(shelf.look(), count);
    auto waiting = read(shelf, count);
    shelf.close();
    EXPECT_EQ(await(std::move(waiting)), std::nullopt);
    const qint64 after = shelf.announce();
    EXPECT_EQ(await(read(shelf, after)), std::nullopt);
}

} // namespace
} // namespace tessary
