#include "tests/component/packaging/PackagingFixture.h"
#include "tests/support/InstalledTree.h"

#include <QDirIterator>
#include <QImage>
#include <QRegularExpression>

#include <gmock/gmock.h>

namespace tessary::testing {
namespace {

using ::testing::UnorderedElementsAreArray;

/// The same files for all tests, which only read them.
const InstalledTree& usr()
{
    static const InstalledTree tree(QStringLiteral("/usr"));
    return tree;
}

std::vector<std::string> filesBelow(const QString& folder)
{
    std::vector<std::string> files;
    QDirIterator found(folder, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (found.hasNext())
        files.push_back(QDir(folder).relativeFilePath(found.next()).toStdString());
    return files;
}

std::vector<std::string> expectedFiles(const std::string& zshFolder)
{
    std::vector<std::string> files{
        "bin/tessary",
        "libexec/tessary/tessary-imaging",
        "libexec/tessary/tessary-recognizer",
        "libexec/tessary/tessary-reminders.so",
        "share/applications/com.tessary.Tessary.desktop",
        "share/bash-completion/completions/tessary",
        "share/dbus-1/interfaces/com.tessary.Tessary1.xml",
        "share/dbus-1/services/com.tessary.Tessary.service",
        "share/doc/tessary/changelog.gz",
        "share/doc/tessary/copyright",
        "share/fish/vendor_completions.d/tessary.fish",
        "share/icons/hicolor/scalable/apps/com.tessary.Tessary.svg",
        "share/icons/hicolor/symbolic/apps/com.tessary.Tessary-symbolic.svg",
        "share/man/man1/tessary.1.gz",
        "share/metainfo/com.tessary.Tessary.metainfo.xml",
        "share/zsh/" + zshFolder + "/_tessary",
    };
    for (const char* size : {"16", "22", "24", "32", "48", "64", "128", "256"})
        files.push_back(std::string("share/icons/hicolor/") + size + "x" + size +
                        "/apps/com.tessary.Tessary.png");
    return files;
}

TEST(InstalledFilesTest, ExactlyTheseAreInstalled)
{
    EXPECT_THAT(filesBelow(usr().path()), UnorderedElementsAreArray(expectedFiles("vendor-completions")));
}

TEST(InstalledFilesTest, AnotherPrefixHoldsTheSameAndTheBusStartsTheProgramThere)
{
    const InstalledTree local(QStringLiteral("/usr/local"));
    EXPECT_THAT(filesBelow(local.path()), UnorderedElementsAreArray(expectedFiles("site-functions")));
    const QString service = QStringLiteral("share/dbus-1/services/com.tessary.Tessary.service");
    EXPECT_EQ(
        contentsOf(local.path(service)),
        QByteArray("[D-BUS Service]\nName=com.tessary.Tessary\nExec=/usr/local/bin/tessary --background\n"));
    EXPECT_TRUE(contentsOf(usr().path(service)).contains("Exec=/usr/bin/tessary --background\n"));
}

TEST(InstalledFilesTest, AllMayReadThemAndOnlyProgramsRun)
{
    for (const std::string& file : filesBelow(usr().path())) {
        const QFile::Permissions permissions = QFile::permissions(usr().path(QString::fromStdString(file)));
        const bool isProgram =
            file.starts_with("bin/") || (file.starts_with("libexec/") && !file.ends_with(".so"));
        EXPECT_TRUE(permissions.testFlag(QFile::ReadOther)) << file;
        EXPECT_FALSE(permissions & (QFile::WriteGroup | QFile::WriteOther)) << file;
        EXPECT_EQ(permissions.testFlag(QFile::ExeOther), isProgram) << file;
    }
}

TEST(InstalledFilesTest, WhatTheDesktopMayLackIsLinkedByItsModuleOnly)
{
    for (const std::string& file : filesBelow(usr().path())) {
        if (!file.starts_with("bin/") && !file.starts_with("libexec/"))
            continue;
        const ProgramResult headers = runProgram(
            QStringLiteral("objdump"), {QStringLiteral("-p"), usr().path(QString::fromStdString(file))});
        EXPECT_EQ(headers.exitStatus, 0) << file;
        EXPECT_EQ(headers.output.contains(QStringLiteral("libecal-")), file.ends_with(".so")) << file;
        EXPECT_EQ(headers.output.contains(QStringLiteral("libQt6")), !file.ends_with(".so")) << file;
    }
}

TEST(InstalledFilesTest, NoneNamesTheFoldersItWasMadeIn)
{
    for (const std::string& file : filesBelow(usr().path())) {
        const QByteArray contents = contentsOf(usr().path(QString::fromStdString(file)));
        EXPECT_FALSE(contents.contains(TESSARY_SOURCE_FOLDER)) << file;
        EXPECT_FALSE(contents.contains(TESSARY_BUILD_FOLDER)) << file;
    }
}

TEST(InstalledFilesTest, EachIconHasTheSizeOfItsFolderAndADrawingInIt)
{
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        const QImage icon(
            usr().path(QStringLiteral("share/icons/hicolor/%1x%1/apps/com.tessary.Tessary.png").arg(size)));
        EXPECT_EQ(icon.size(), QSize(size, size));
        EXPECT_EQ(qAlpha(icon.pixel(0, 0)), 0) << size << ": a rounded corner";
        EXPECT_EQ(icon.pixelColor(size / 2, size * 6 / 10), QColor(0x5C, 0x8F, 0xF8))
            << size << ": the blue tile";
        EXPECT_EQ(icon.pixelColor(size * 3 / 10, size * 4 / 16), QColor(0xF5, 0xEF, 0xE3))
            << size << ": the pale one";
    }
}

TEST(InstalledFilesTest, TheDesktopEntryIsValid)
{
    const ProgramResult result =
        runProgram(QStringLiteral("desktop-file-validate"),
                   {usr().path(QStringLiteral("share/applications/com.tessary.Tessary.desktop"))});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.output, QString());
}

TEST(InstalledFilesTest, TheDescriptionForSoftwareCentresIsValid)
{
    const ProgramResult result =
        runProgram(QStringLiteral("appstreamcli"),
                   {QStringLiteral("validate"), QStringLiteral("--no-net"), QStringLiteral("--strict"),
                    usr().path(QStringLiteral("share/metainfo/com.tessary.Tessary.metainfo.xml"))});
    EXPECT_EQ(result.exitStatus, 0) << qPrintable(result.output);
}

TEST(InstalledFilesTest, TheManualIsCleanAndNamesTheVersion)
{
    const QString compressed = usr().path(QStringLiteral("share/man/man1/tessary.1.gz"));
    const ProgramResult text = runProgram(QStringLiteral("gzip"), {QStringLiteral("-dc"), compressed});
    ASSERT_EQ(text.exitStatus, 0) << qPrintable(text.output);
    EXPECT_TRUE(text.output.contains(QStringLiteral("\"Tessary " TESSARY_VERSION "\"")));
    const ProgramResult lint = runProgram(QStringLiteral("mandoc"), {QStringLiteral("-Tlint"), compressed});
    EXPECT_EQ(lint.exitStatus, 0);
    EXPECT_EQ(lint.output, QString());
}

TEST(InstalledFilesTest, TheNewestReleaseIsThisVersionEverywhere)
{
    const ProgramResult program =
        runProgram(usr().path(QStringLiteral("bin/tessary")), {QStringLiteral("--version")});
    EXPECT_EQ(program.output, QStringLiteral("tessary " TESSARY_VERSION "\n"));
    EXPECT_TRUE(contentsOf(sourcePath("debian/changelog")).startsWith("tessary (" TESSARY_VERSION ") "));
    const QString releases = QString::fromUtf8(contentsOf(sourcePath("com.tessary.Tessary.metainfo.xml")));
    const QRegularExpressionMatch newest =
        QRegularExpression(QStringLiteral("<release version=\"([^\"]*)\"")).match(releases);
    EXPECT_EQ(newest.captured(1), QStringLiteral(TESSARY_VERSION));
}

} // namespace
} // namespace tessary::testing
