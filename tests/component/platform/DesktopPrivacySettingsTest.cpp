#include "platform/linux/DesktopPrivacySettings.h"

#include "tests/support/Await.h"
#include "tests/support/NotingProgram.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/unit/platform/linux/ScopedEnvironment.h"

namespace tessary {
namespace {

using testing::await;
using testing::eventually;
using testing::installNotingProgram;
using testing::readFile;
using testing::writeFile;

class DesktopPrivacySettingsTest : public ::testing::Test {
protected:
    DesktopPrivacySettingsTest() { environment.set("PATH", folder.file(QStringLiteral("programs"))); }

    /// A settings program of that name that only notes what it was asked for, and the page's desktop file.
    void install(const QString& program, const QString& page)
    {
        installNotingProgram(folder.file(QStringLiteral("programs/") + program), notes());
        writeFile(folder.file(QStringLiteral("data/applications/") + page), "[Desktop Entry]\n");
    }
    void run(const char* desktop) { environment.set("XDG_CURRENT_DESKTOP", QString::fromLatin1(desktop)); }
    bool opens(const char* anchor) { return await(pages.open(QString::fromLatin1(anchor))); }
    QString notes() const { return folder.file(QStringLiteral("opened")); }
    QString opened() const
    {
        EXPECT_TRUE(eventually([this] { return QFile::exists(notes()); }));
        return QString::fromUtf8(readFile(notes()));
    }

    testing::TemporaryFolder folder;
    testing::ScopedEnvironment environment;
    DesktopPrivacySettings pages{{QStringLiteral("/not/there"), folder.file(QStringLiteral("data"))},
                                 QStringLiteral("com.tessary.Tessary")};
};

TEST_F(DesktopPrivacySettingsTest, OpensThePageAboutUsOfGnome)
{
    install(QStringLiteral("gnome-control-center"), QStringLiteral("gnome-applications-panel.desktop"));
    run("ubuntu:GNOME");
    EXPECT_TRUE(opens("Privacy_ScreenCapture"));
    EXPECT_EQ(opened(), QStringLiteral("applications|com.tessary.Tessary|"));
}

TEST_F(DesktopPrivacySettingsTest, OpensThePageOfPlasma)
{
    install(QStringLiteral("systemsettings"), QStringLiteral("kcm_access.desktop"));
    run("KDE");
    EXPECT_TRUE(opens("Privacy_Accessibility"));
    EXPECT_EQ(opened(), QStringLiteral("kcm_access|"));
}

TEST_F(DesktopPrivacySettingsTest, WithoutAPageNothingHappens)
{
    install(QStringLiteral("gnome-control-center"), QStringLiteral("gnome-online-accounts-panel.desktop"));
    run("XFCE");
    EXPECT_FALSE(opens("Privacy_Reminders"));
    run("");
    EXPECT_FALSE(opens("Privacy_Reminders"));
    run("GNOME");
    EXPECT_FALSE(opens("Privacy_ScreenCapture")) << "this version of it has no such page";
    EXPECT_FALSE(opens("Privacy_Everything"));
    EXPECT_FALSE(opens("$(touch x)"));
    EXPECT_FALSE(opens(""));
    run("KDE");
    EXPECT_FALSE(opens("Privacy_Accessibility")) << "the program is not installed";
    EXPECT_FALSE(QFile::exists(notes()));
}

} // namespace
} // namespace tessary
