#include "base/AtomicFile.h"

#include "tests/support/TemporaryFolder.h"

#include <QDir>
#include <QFile>

#include <cerrno>

#include <sys/stat.h>

namespace tessary {
namespace {

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

TEST(AtomicFileTest, ReplacesAFileAndKeepsItPrivate)
{
    const testing::TemporaryFolder folder;
    const QString path = folder.file(QStringLiteral("a"));
    writeFileAtomically(path, "old", Durability::Process);
    writeFileAtomically(path, "new", Durability::PowerCut);
    EXPECT_EQ(contents(path), "new");
    struct stat status {};
    ASSERT_EQ(::stat(QFile::encodeName(path).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600u);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

TEST(AtomicFileTest, CopiesByteForByte)
{
    const testing::TemporaryFolder folder;
    QByteArray bytes(700'001, '\0');
    for (qsizetype i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i * 31);
    writeFileAtomically(folder.file(QStringLiteral("from")), bytes, Durability::Process);
    copyFileAtomically(folder.file(QStringLiteral("from")), folder.file(QStringLiteral("to")),
                       Durability::PowerCut);
    EXPECT_EQ(contents(folder.file(QStringLiteral("to"))), bytes);
}

TEST(AtomicFileTest, LeavesNothingBehindWhenItFails)
{
    const testing::TemporaryFolder folder;
    const QString missing = folder.file(QStringLiteral("none/b"));
    EXPECT_THROW(writeFileAtomically(missing, "x", Durability::Process), FileError);
    EXPECT_THROW(copyFileAtomically(folder.file(QStringLiteral("gone")), folder.file(QStringLiteral("c")),
                                    Durability::Process),
                 FileError);
    EXPECT_TRUE(QDir(folder.path()).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
}

TEST(AtomicFileTest, NamesAFullDisk)
{
    const FileError error =
        FileError::fromErrno(ENOSPC, QStringLiteral("x/y.png"), FileError::Operation::Write);
    EXPECT_EQ(error.which(), FileError::Case::WriteOutOfSpace);
    EXPECT_EQ(error.localizedDescription(), QStringLiteral("磁盘空间不足，无法写入“x/y.png”。"));
}

} // namespace
} // namespace tessary
