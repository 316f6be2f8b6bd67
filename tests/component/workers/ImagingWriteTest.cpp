#include "tests/component/workers/ImagingFixture.h"

#include <csignal>
#include <cstdlib>
#include <sys/resource.h>
#include <unistd.h>

namespace tessary {
namespace {

using namespace testing;
using Case = ImageError::Case;

/// No file of this process may grow while this lives; as on a full disk, writing fails half way.
class FullDisk {
public:
    explicit FullDisk(rlim_t roomBytes) : m_handler(::signal(SIGXFSZ, SIG_IGN))
    {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit none{roomBytes, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &none);
    }
    ~FullDisk()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        ::signal(SIGXFSZ, m_handler);
    }

private:
    sighandler_t m_handler;
    rlimit m_before{};
};

/// The superuser may write anywhere, so it is somebody else while this lives.
class OrdinaryUser {
public:
    OrdinaryUser()
    {
        constexpr uid_t kNobody = 65534;
        if (m_user == 0 && ::seteuid(kNobody) != 0)
            ADD_FAILURE() << "cannot become an ordinary user";
    }
    ~OrdinaryUser()
    {
        if (m_user == 0 && ::seteuid(m_user) != 0)
            std::abort();
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    const uid_t m_user = ::geteuid();
};

class ImagingWriteTest : public ImagingFixture {
protected:
    void SetUp() override
    {
        m_picture = write("picture.png", encoded(quadrants(900, 600), "png"));
        await(codec().writeThumbnail(m_picture, file("works.jpg"), 480, 0.78));
        ASSERT_TRUE(QFile::remove(file("works.jpg")));
    }
    [[nodiscard]] std::optional<Case> failureOfWritingTo(const QString& destination)
    {
        return failureOf(codec().writeThumbnail(m_picture, destination, 480, 0.78));
    }
    [[nodiscard]] const QString& picture() const { return m_picture; }

private:
    QString m_picture;
};

TEST_F(ImagingWriteTest, LeavesNothingOnAFullDisk)
{
    const QStringList before = filesInFolder();
    {
        const FullDisk disk(100);
        EXPECT_EQ(failureOfWritingTo(file("thumbnail.jpg")), Case::WriteFailed);
    }
    EXPECT_EQ(filesInFolder(), before);
    EXPECT_EQ(failureOfWritingTo(file("thumbnail.jpg")), std::nullopt);
}

TEST_F(ImagingWriteTest, KeepsTheThumbnailThatWasThereWhenTheDiskIsFull)
{
    const QString old = write("thumbnail.jpg", "the old one");
    {
        const FullDisk disk(0);
        EXPECT_EQ(failureOfWritingTo(old), Case::WriteFailed);
    }
    QFile file(old);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "the old one");
}

TEST_F(ImagingWriteTest, ReportsFoldersThatTakeNoFiles)
{
    EXPECT_EQ(failureOfWritingTo(file("missing/thumbnail.jpg")), Case::WriteFailed);
    EXPECT_EQ(failureOfWritingTo(picture() + QStringLiteral("/thumbnail.jpg")), Case::WriteFailed);
    // Nobody may create files here, not even the superuser.
    EXPECT_EQ(failureOfWritingTo(QStringLiteral("/proc/self/thumbnail.jpg")), Case::WriteFailed);
    ASSERT_TRUE(QDir().mkdir(file("taken.jpg")));
    const QStringList before = filesInFolder();
    EXPECT_EQ(failureOfWritingTo(file("taken.jpg")), Case::WriteFailed);
    EXPECT_EQ(filesInFolder(), before);
}

TEST_F(ImagingWriteTest, ReportsAFolderWithoutWritePermission)
{
    ASSERT_TRUE(QDir().mkdir(file("closed")));
    constexpr QFile::Permissions kMayReadOnly{0x5555}; // and enter, everybody
    ASSERT_TRUE(QFile::setPermissions(file("closed"), kMayReadOnly));
    ASSERT_TRUE(QFile::setPermissions(QFileInfo(picture()).path(), kMayReadOnly | QFile::WriteOwner));
    {
        const OrdinaryUser user;
        EXPECT_EQ(failureOfWritingTo(file("closed/thumbnail.jpg")), Case::WriteFailed);
    }
    EXPECT_TRUE(QDir(file("closed")).isEmpty(QDir::Files | QDir::Hidden));
}

} // namespace
} // namespace tessary
