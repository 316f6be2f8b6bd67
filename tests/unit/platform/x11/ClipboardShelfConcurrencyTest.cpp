#include "platform/x11/ClipboardShelf.h"

#include <gtest/gtest.h>

#include <thread>

namespace tessary {
namespace {

TEST(ClipboardShelfConcurrencyTest, NeverHandsOutTheContentsOfAnotherChange)
{
    ClipboardShelf shelf;
    constexpr qint64 kChanges = 5000;
    std::jthread fetching([&] {
        for (qint64 i = 0; i < kChanges; ++i) {
            const qint64 count = shelf.announce();
            ClipboardSnapshot snapshot;
            snapshot.text = QByteArray::number(count);
            shelf.put(count, std::move(snapshot));
        }
    });
    qint64 count = 0;
    while (count < kChanges) {
        count = shelf.look();
        if (const std::optional<QByteArray> text = shelf.contents(count, PasteboardType::Text)) {
            EXPECT_EQ(*text, QByteArray::number(count));
        }
        shelf.release(count);
    }
}

} // namespace
} // namespace tessary
