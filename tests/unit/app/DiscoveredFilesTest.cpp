#include "app/DiscoveredFiles.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

class DiscoveredFilesTest : public ::testing::Test {
protected:
    QByteArray begun()
    {
        const auto entry = files.begin();
        return entry ? entry->path : QByteArray();
    }

    DiscoveredFiles files{2};
    const FileStamp stamp{1, 2, 3};
};

TEST_F(DiscoveredFilesTest, ComeInOrderAndNeverTooManyAtOnce)
{
    for (const char* path : {"a", "b", "c"})
        files.add({path, CountDuplicate::No});
    EXPECT_EQ(begun(), "a");
    EXPECT_EQ(begun(), "b");
    EXPECT_FALSE(files.begin());
    files.finish("a", {});
    EXPECT_EQ(begun(), "c");
}

TEST_F(DiscoveredFilesTest, APathThatWaitsIsNotTakenTwice)
{
    files.add({"a", CountDuplicate::No});
    files.add({"a", CountDuplicate::Yes});
    EXPECT_EQ(files.begin()->countDuplicate, CountDuplicate::No);
    EXPECT_FALSE(files.begin());
}

TEST_F(DiscoveredFilesTest, APathThatIsReportedWhileItIsImportedComesOnceMore)
{
    files.add({"a", CountDuplicate::No});
    EXPECT_EQ(begun(), "a");
    files.add({"a", CountDuplicate::No});
    files.add({"a", CountDuplicate::No});
    EXPECT_FALSE(files.begin());
    files.finish("a", stamp);
    EXPECT_EQ(files.begin()->countDuplicate, CountDuplicate::Yes);
    files.finish("a", stamp);
    EXPECT_FALSE(files.begin());
}

TEST_F(DiscoveredFilesTest, RemembersTheStateThatWasRead)
{
    files.add({"a", CountDuplicate::No});
    EXPECT_EQ(begun(), "a");
    EXPECT_FALSE(files.isTaken("a", stamp));
    files.add({"b", CountDuplicate::No});
    files.finish("a", stamp);
    const DiscoveredFiles renewed = files.renewed();
    EXPECT_TRUE(renewed.isTaken("a", stamp));
    EXPECT_FALSE(renewed.isTaken("a", {1, 3, 3}));
    EXPECT_FALSE(renewed.isTaken("b", stamp));
    EXPECT_FALSE(DiscoveredFiles(renewed).begin());
}

} // namespace
} // namespace tessary
