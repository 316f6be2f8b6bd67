#include "platform/x11/X11Workspace.h"

#include "platform/linux/XdgFolders.h"
#include "platform/x11/AtomCache.h"
#include "tests/support/Await.h"

#include <QFile>
#include <QProcess>
#include <QTextStream>

#include <csignal>

namespace tessary {
namespace {

using testing::eventually;

class X11WorkspaceTest : public ::testing::Test {
protected:
    X11WorkspaceTest()
        : workspace(DesktopEntries(XdgFolders().dataFolders(), QStringLiteral("C")),
                    QStringLiteral("com.tessary.Tessary"))
    {
        QObject::connect(&workspace, &Workspace::applicationActivated,
                         [this](const RunningApplication& application) { activated.append(application); });
    }
    ~X11WorkspaceTest() override
    {
        for (const auto& program : programs) {
            program->kill();
            program->waitForFinished();
        }
    }

    QProcess& run(const QString& program, const QStringList& arguments)
    {
        programs.push_back(std::make_unique<QProcess>());
        programs.back()->start(program, arguments);
        EXPECT_TRUE(programs.back()->waitForStarted());
        return *programs.back();
    }
    bool frontmostIs(const QString& identifier)
    {
        return eventually([&] {
            const auto application = workspace.frontmostApplication();
            return application && application->bundleIdentifier == identifier;
        });
    }
    /// A window manager's word is all we have; here it is given by another client.
    static void nameActive(xcb_window_t window)
    {
        xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, root,
                            AtomCache(connection).atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW, 32, 1,
                            &window);
        xcb_flush(connection);
        xcb_disconnect(connection);
    }
    /// The window of a process as the session's tools see it.
    static QString output(const QString& program, const QStringList& arguments)
    {
        QProcess process;
        process.start(program, arguments);
        process.waitForFinished();
        return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
    }

    X11Workspace workspace;
    QList<RunningApplication> activated;
    std::vector<std::unique_ptr<QProcess>> programs;
};

TEST_F(X11WorkspaceTest, AttributesATerminalToItsDesktopFile)
{
    QProcess& terminal = run(QStringLiteral("xterm"), {});
    ASSERT_TRUE(frontmostIs(QStringLiteral("debian-xterm")));
    const RunningApplication application = *workspace.frontmostApplication();
    EXPECT_EQ(application.localizedName, QStringLiteral("XTerm"));
    EXPECT_EQ(application.bundleURL,
              QUrl(QStringLiteral("file:///usr/share/applications/debian-xterm.desktop")));
    EXPECT_EQ(application.processIdentifier, terminal.processId());
    EXPECT_NE(application.window, 0U);
    EXPECT_EQ(activated, QList{application});
}

TEST_F(X11WorkspaceTest, AttributesAToolkitWindowByItsApplicationId)
{
    const QString path =
        XdgFolders().applicationSupport() + QStringLiteral("/applications/org.example.Probe.desktop");
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Desktop Entry]\nType=Application\nName=Probe\nExec=/opt/probe\n");
    file.close();
    const QString script = QStringLiteral("import gi\n"
                                          "gi.require_version('Gtk', '3.0')\n"
                                          "from gi.repository import Gtk\n"
                                          "app = Gtk.Application(application_id='org.example.Probe')\n"
                                          "def show(a):\n"
                                          "    w = Gtk.ApplicationWindow(application=a)\n"
                                          "    w.show_all()\n"
                                          "app.connect('activate', show)\n"
                                          "app.run([])\n");
    run(QStringLiteral("/usr/bin/python3"), {QStringLiteral("-c"), script});
    ASSERT_TRUE(frontmostIs(QStringLiteral("org.example.Probe")));
    EXPECT_EQ(workspace.frontmostApplication()->localizedName, QStringLiteral("Probe"));
    EXPECT_EQ(workspace.frontmostApplication()->bundleURL, QUrl::fromLocalFile(path));
}

TEST_F(X11WorkspaceTest, AnUnknownProgramKeepsItsWindowClassAndHasNoUrl)
{
    run(QStringLiteral("xterm"), {QStringLiteral("-class"), QStringLiteral("Unheard")});
    // The executable is known, the class is not: the executable still tells.
    ASSERT_TRUE(frontmostIs(QStringLiteral("debian-xterm")));
    run(QStringLiteral("/usr/bin/python3"),
        {QStringLiteral("-c"),
         QStringLiteral(
             "import gi\ngi.require_version('Gtk', '3.0')\nfrom gi.repository import Gtk, Gdk, GLib\n"
             "GLib.set_prgname('mystery')\nGdk.set_program_class('Mystery')\n"
             "w = Gtk.Window()\nw.show_all()\nGtk.main()\n")});
    ASSERT_TRUE(frontmostIs(QStringLiteral("Mystery")));
    EXPECT_EQ(workspace.frontmostApplication()->localizedName, QStringLiteral("Mystery"));
    EXPECT_EQ(workspace.frontmostApplication()->bundleURL, std::nullopt);
}

TEST_F(X11WorkspaceTest, AWindowOfOurOwnIsKnownByOurIdentifier)
{
    X11EventLoop windows("tessary-own");
    xcb_connection_t* x = windows.connection();
    const xcb_window_t window = xcb_generate_id(x);
    xcb_create_window(x, XCB_COPY_FROM_PARENT, window, windows.root(), 0, 0, 100, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    const auto process = static_cast<uint32_t>(QCoreApplication::applicationPid());
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, window, windows.atoms().atom("_NET_WM_PID"),
                        XCB_ATOM_CARDINAL, 32, 1, &process);
    const QByteArray name("python3\0Python3", 16); // as whatever program we run under
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                        static_cast<uint32_t>(name.size()), name.constData());
    xcb_map_window(x, window);
    xcb_flush(x);
    ASSERT_TRUE(frontmostIs(QStringLiteral("com.tessary.Tessary")));
    EXPECT_EQ(workspace.frontmostApplication()->processIdentifier, QCoreApplication::applicationPid());
    EXPECT_FALSE(workspace.frontmostApplication()->isTerminal);
}

TEST_F(X11WorkspaceTest, FollowsTheActiveWindowAndItsEnd)
{
    QProcess& first = run(QStringLiteral("xterm"), {});
    ASSERT_TRUE(frontmostIs(QStringLiteral("debian-xterm")));
    QProcess& second = run(QStringLiteral("xterm"), {QStringLiteral("-class"), QStringLiteral("UXTerm")});
    ASSERT_TRUE(eventually(
        [&] { return workspace.frontmostApplication()->processIdentifier == second.processId(); }));
    second.kill();
    second.waitForFinished();
    ASSERT_TRUE(eventually([&] {
        const auto application = workspace.frontmostApplication();
        return application && application->processIdentifier == first.processId();
    }));
    first.kill();
    first.waitForFinished();
    EXPECT_TRUE(eventually([&] { return !workspace.frontmostApplication(); }));
    EXPECT_EQ(activated.size(), 3);
}

TEST_F(X11WorkspaceTest, APanelThatTakesTheFocusLeavesTheProgramBeforeItInFront)
{
    run(QStringLiteral("xterm"), {});
    ASSERT_TRUE(frontmostIs(QStringLiteral("debian-xterm")));
    QProcess& panel = run(
        QStringLiteral("/usr/bin/python3"),
        {QStringLiteral("-uc"),
         QStringLiteral("import gi\ngi.require_version('Gtk', '3.0')\ngi.require_version('GdkX11', '3.0')\n"
                        "from gi.repository import Gtk, Gdk, GdkX11\n"
                        "w = Gtk.Window()\nw.set_type_hint(Gdk.WindowTypeHint.DOCK)\n"
                        "w.connect('map', lambda w: "
                        "print(hex(w.get_window().get_xid())))\nw.show_all()\nGtk.main()\n")});
    ASSERT_TRUE(eventually([&] { return panel.canReadLine(); }));
    nameActive(panel.readLine().trimmed().toUInt(nullptr, 0));
    QProcess& second = run(QStringLiteral("xterm"), {});
    ASSERT_TRUE(eventually(
        [&] { return workspace.frontmostApplication()->processIdentifier == second.processId(); }));
    EXPECT_EQ(activated.size(), 2);
}

TEST_F(X11WorkspaceTest, HandlesAWindowWithoutProcessOrClassAndOneThatDoesNotExist)
{
    nameActive(0x7ffffff1);
    run(QStringLiteral("xterm"), {});
    ASSERT_TRUE(frontmostIs(QStringLiteral("debian-xterm")));
    EXPECT_EQ(activated.size(), 1);
}

} // namespace
} // namespace tessary
