#include "base/RegularFile.h"

#include "base/FileError.h"
#include "tests/support/TemporaryFolder.h"

#include <QDir>
#include <QFile>

#include <sys/stat.h>

namespace tessary {
namespace {

std::optional<FileError::Case> failureOf(const QString& path)
{
    try {
        (void)openRegularFile(path);
        return std::nullopt;
    } catch (const FileError& error) {
        return error.which();
    }
}

TEST(RegularFileTest, OpensFilesAndNothingElseAndNeverWaits)
{
    const testing::TemporaryFolder folder;
    const QString file = folder.file(QStringLiteral("file"));
    ASSERT_TRUE(QFile(file).open(QIODevice::WriteOnly));
    const QString link = folder.file(QStringLiteral("link"));
    ASSERT_TRUE(QFile::link(file, link));
    const QString pipe = folder.file(QStringLiteral("pipe"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_EQ(failureOf(file), std::nullopt);
    EXPECT_EQ(failureOf(link), std::nullopt);
    EXPECT_EQ(failureOf(pipe), FileError::Case::ReadUnknown);
    EXPECT_EQ(failureOf(folder.path()), FileError::Case::ReadUnknown);
    EXPECT_EQ(failureOf(QStringLiteral("/dev/null")), FileError::Case::ReadUnknown);
    EXPECT_EQ(failureOf(folder.file(QStringLiteral("none"))), FileError::Case::ReadNoSuchFile);
}

} // namespace
} // namespace tessary
