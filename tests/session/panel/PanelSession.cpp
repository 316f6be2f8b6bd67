#include "tests/session/panel/PanelSession.h"

#include "store/AppPaths.h"
#include "store/SQLiteStore.h"

#include <QProcess>
#include <QRegularExpression>

namespace tessary::testing {

PanelSession::PanelSession()
{
    m_settings = {QStringLiteral("quickSearchShortcut=v2|49|6144|Space")};
    environment().insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("tessary.search.debug=true"));
}

PanelSession::~PanelSession()
{
    setLayout({QStringLiteral("us"), QStringLiteral("-option"), QString()});
    m_targets.clear();
}

void PanelSession::prepare(const QList<ScreenshotRecord>& items)
{
    const AppPaths paths = AppPaths::create(root());
    const std::unique_ptr<SQLiteStore> store = await(SQLiteStore::open(paths.database));
    m_prepared = static_cast<int>(items.size());
    for (const ScreenshotRecord& item : items)
        ASSERT_TRUE(await(store->insert(item)));
}

void PanelSession::startWithPanel()
{
    writeSettings(m_settings);
    start();
    ASSERT_TRUE(tessary().printed(QStringLiteral("global shortcuts registered")));
    ASSERT_TRUE(lists(m_prepared));
}

void PanelSession::xdotool(const QStringList& arguments)
{
    EXPECT_EQ(QProcess::execute(QStringLiteral("xdotool"), arguments), 0)
        << qPrintable(arguments.join(QLatin1Char(' ')));
}

void PanelSession::type(const QString& text)
{
    xdotool({QStringLiteral("type"), text});
}

void PanelSession::clickAt(const QPoint& place)
{
    xdotool({QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y()),
             QStringLiteral("click"), QStringLiteral("1")});
}

void PanelSession::setLayout(const QStringList& arguments)
{
    EXPECT_EQ(QProcess::execute(QStringLiteral("setxkbmap"), arguments), 0);
}

bool PanelSession::hasKeyboard() const
{
    const std::optional<ScreenWindows::Window> panel = screen.visible(kPanel);
    return panel && screen.hasKeyboard(panel->id);
}

::testing::AssertionResult PanelSession::comes()
{
    if (eventually([this] { return hasKeyboard(); }))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << (isShown() ? "the panel has no keyboard" : "no panel came");
}

::testing::AssertionResult PanelSession::goes()
{
    if (eventually([this] { return !isShown(); }))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "the panel stayed";
}

::testing::AssertionResult PanelSession::opensPanel()
{
    pressShortcut();
    return comes();
}

QRect PanelSession::panelGeometry() const
{
    const std::optional<ScreenWindows::Window> panel = screen.visible(kPanel);
    EXPECT_TRUE(panel.has_value());
    return panel ? panel->geometry : QRect();
}

::testing::AssertionResult PanelSession::lists(int count)
{
    const QRegularExpression wanted(QStringLiteral("\\b%1 results in the list").arg(count));
    const auto found = [&] {
        const QRegularExpressionMatch match = wanted.match(tessary().output(), m_listsRead);
        if (match.hasMatch())
            m_listsRead = match.capturedEnd();
        return match.hasMatch();
    };
    if (eventually(found))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "never " << count << " results";
}

QString PanelSession::cutField()
{
    const QString before = clipboard();
    xdotool({QStringLiteral("key"), QStringLiteral("ctrl+a"), QStringLiteral("ctrl+x")});
    EXPECT_TRUE(eventually([&] { return clipboard() != before; }, std::chrono::seconds(5)))
        << "nothing was cut";
    return clipboard();
}

QString PanelSession::clipboard()
{
    QProcess process;
    process.start(QStringLiteral("xclip"),
                  {QStringLiteral("-o"), QStringLiteral("-selection"), QStringLiteral("clipboard"),
                   QStringLiteral("-t"), QStringLiteral("UTF8_STRING")});
    EXPECT_TRUE(eventually([&] { return process.state() == QProcess::NotRunning; }));
    return QString::fromUtf8(process.readAllStandardOutput());
}

PasteTarget& PanelSession::open(PasteTarget::Kind kind, const char* title)
{
    m_targets.push_back(std::make_unique<PasteTarget>(kind, QLatin1String(title), scratch({})));
    EXPECT_TRUE(isInFront(title)) << qPrintable(m_targets.back()->process().output());
    return *m_targets.back();
}

bool PanelSession::isInFront(const char* title) const
{
    return eventually([&] {
        const std::optional<ScreenWindows::Window> window = screen.visible(title);
        return window && screen.hasKeyboard(window->id) && screen.activeTitle() == title;
    });
}

::testing::AssertionResult PanelSession::arrives(PasteTarget& target, const QString& text)
{
    if (eventually([&] { return target.text() == text; }, std::chrono::seconds(5)))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "it holds " << qPrintable(target.text());
}

} // namespace tessary::testing
