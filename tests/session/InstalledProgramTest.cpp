#include "tests/session/SessionTest.h"
#include "tests/session/TestPictures.h"
#include "tests/support/InstalledTree.h"

#include <QDir>

namespace tessary::testing {
namespace {

/// The programs that children of that process run.
QStringList programsOfChildren(qint64 parent)
{
    QStringList programs;
    for (const QString& entry :
         QDir(QStringLiteral("/proc")).entryList({QStringLiteral("[0-9]*")}, QDir::Dirs)) {
        QFile status(QStringLiteral("/proc/%1/status").arg(entry));
        if (status.open(QIODevice::ReadOnly) &&
            status.readAll().contains("\nPPid:\t" + QByteArray::number(parent) + '\n'))
            programs.append(QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(entry)));
    }
    return programs;
}

class InstalledProgramTest : public SessionTest {
protected:
    /// Copies a picture, of which the program's own worker has to make a thumbnail.
    void keepsAPictureWithTheWorkerIn(const InstalledTree& tree)
    {
        const QString path = scratch(QStringLiteral("picture.png"));
        writeFile(path, pngOf(picture(900, 600)));
        copyPng(path);
        ASSERT_TRUE(holds(1));
        const QImage thumbnail = QImage::fromData(readFile(library().items().front().thumbnailPath), "JPEG");
        EXPECT_EQ(thumbnail.size(), QSize(480, 320));
        EXPECT_EQ(programsOfChildren(tessary().processId()),
                  QStringList{tree.path(QStringLiteral("libexec/tessary/tessary-imaging"))});
    }
};

class InstalledProgramPrefixTest : public InstalledProgramTest,
                                   public ::testing::WithParamInterface<const char*> {};

TEST_P(InstalledProgramPrefixTest, ItFindsItsWorkerUnderAnyPrefix)
{
    const InstalledTree tree{QLatin1String(GetParam())};
    useProgram(tree.path(QStringLiteral("bin/tessary")));
    start();
    keepsAPictureWithTheWorkerIn(tree);
    quit();
}

INSTANTIATE_TEST_SUITE_P(Prefixes, InstalledProgramPrefixTest,
                         ::testing::Values("/usr", "/usr/local", "/opt/tessary 1"));

TEST_F(InstalledProgramTest, ItMayBeMovedAndStartedThroughALink)
{
    InstalledTree tree(QStringLiteral("/usr"));
    tree.moveTo(scratch(QStringLiteral("moved")));
    const QString link = scratch(QStringLiteral("tessary"));
    ASSERT_TRUE(QFile::link(tree.path(QStringLiteral("bin/tessary")), link));
    useProgram(link);
    start();
    keepsAPictureWithTheWorkerIn(tree);
    quit();
}

} // namespace
} // namespace tessary::testing
