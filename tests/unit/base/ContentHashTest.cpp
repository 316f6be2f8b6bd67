#include "base/ContentHash.h"

#include "base/FileError.h"
#include "tests/support/TemporaryFolder.h"

#include <QFile>

namespace tessary {
namespace {

TEST(ContentHashTest, GivesThePublishedDigestsInLowerCase)
{
    EXPECT_EQ(contentHash(""),
              QStringLiteral("e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"));
    EXPECT_EQ(contentHash("abc"),
              QStringLiteral("ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"));
}

TEST(ContentHashTest, OfAFileEqualsThatOfItsBytes)
{
    const testing::TemporaryFolder folder;
    const QByteArray bytes(1'000'003, 'x');
    QFile file(folder.file(QStringLiteral("big")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    file.close();
    const FileDigest digest = digestOfFile(file.fileName());
    EXPECT_EQ(digest.hash, contentHash(bytes));
    EXPECT_EQ(digest.byteCount, bytes.size());
}

TEST(ContentHashTest, OfAMissingFileIsAnError)
{
    const testing::TemporaryFolder folder;
    try {
        (void)digestOfFile(folder.file(QStringLiteral("none")));
        FAIL();
    } catch (const FileError& error) {
        EXPECT_EQ(error.which(), FileError::Case::ReadNoSuchFile);
    }
}

} // namespace
} // namespace tessary
