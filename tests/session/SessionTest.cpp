#include "tests/session/SessionTest.h"

#include <QDir>
#include <QDirIterator>

#include <csignal>

namespace tessary::testing {

namespace {

/// The monitor looks every 0.45 s.
constexpr const char* kLongerThanTwoLooks = "1000";

} // namespace

SessionTest::SessionTest() : m_environment(QProcessEnvironment::systemEnvironment())
{
    for (const QString& folder : {QStringLiteral("data"), QStringLiteral("config"), QStringLiteral("home")})
        QDir(m_folder.path()).mkpath(folder);
    m_environment.insert(QStringLiteral("XDG_DATA_HOME"), m_folder.file(QStringLiteral("data")));
    m_environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_folder.file(QStringLiteral("config")));
    m_environment.insert(QStringLiteral("HOME"), m_folder.file(QStringLiteral("home")));
}

void SessionTest::TearDown()
{
    if (m_tessary)
        quit();
}

void SessionTest::start()
{
    launch();
    ASSERT_TRUE(m_tessary->printed(QStringLiteral("monitoring started"))) << qPrintable(m_tessary->output());
}

void SessionTest::launch()
{
    m_tessary = run();
}

std::unique_ptr<ChildProcess> SessionTest::run(const QStringList& arguments)
{
    return std::make_unique<ChildProcess>(m_program, arguments, m_environment);
}

void SessionTest::quit()
{
    const std::unique_ptr<ChildProcess> ending = std::move(m_tessary);
    ending->kill(SIGTERM);
    EXPECT_EQ(ending->exitCode(), 0) << "asked to quit";
    if (HasFailure())
        std::cerr << "What Tessary wrote:\n" << qPrintable(ending->output()) << '\n';
}

ChildProcess& SessionTest::own(const QStringList& arguments)
{
    ChildProcess& owner = program(QStringLiteral(TESSARY_CLIPBOARD_OWNER), arguments);
    EXPECT_TRUE(owner.printed(QStringLiteral("owning 1"))) << qPrintable(owner.output());
    return owner;
}

ChildProcess& SessionTest::copyText(const QString& text)
{
    return offer(QStringLiteral("UTF8_STRING=text:") + text);
}

void SessionTest::ownForAWhile(const QStringList& arguments)
{
    ChildProcess& owner =
        own(arguments + QStringList{QStringLiteral("--quit-after"), QLatin1String(kLongerThanTwoLooks)});
    EXPECT_EQ(owner.exitCode(), 0);
}

ChildProcess& SessionTest::gtk(const QStringList& arguments)
{
    ChildProcess& client = program(QStringLiteral("/usr/bin/python3"),
                                   QStringList{QStringLiteral(TESSARY_GTK_CLIENT)} + arguments);
    EXPECT_TRUE(client.printed(QStringLiteral("owning"))) << qPrintable(client.output());
    return client;
}

ChildProcess& SessionTest::program(const QString& name, const QStringList& arguments)
{
    m_programs.push_back(std::make_unique<ChildProcess>(name, arguments));
    return *m_programs.back();
}

::testing::AssertionResult SessionTest::holds(int count)
{
    const auto items = [this] { return static_cast<int>(library().items().size()); };
    if (eventually([&] { return items() == count; }))
        return ::testing::AssertionSuccess();
    auto failure = ::testing::AssertionFailure() << "the library holds " << items() << " items:";
    for (const LibraryItem& item : library().items())
        failure << "\n  " << qPrintable(item.filename.left(60)) << " (" << item.duplicateCount << ")";
    return failure;
}

::testing::AssertionResult SessionTest::holdsText(const QString& text)
{
    if (eventually([&] { return library().text(text).has_value(); }))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "no item with the text " << qPrintable(text.left(60));
}

::testing::AssertionResult SessionTest::keepsCopying()
{
    const QString marker = QStringLiteral("marker %1").arg(++m_markers);
    copyText(marker);
    return holdsText(marker);
}

QString SessionTest::settingsPath() const
{
    return m_folder.file(QStringLiteral("config/Tessary/settings.ini"));
}

void SessionTest::writeSettings(const QStringList& lines) const
{
    writeFile(settingsPath(),
              QByteArray("[General]\n") + lines.join(QLatin1Char('\n')).toUtf8() + QByteArray("\n"));
}

void SessionTest::writeFile(const QString& path, const QByteArray& bytes) const
{
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).absolutePath()));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(path);
    ASSERT_EQ(file.write(bytes), bytes.size());
}

QByteArray SessionTest::readFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

QStringList SessionTest::filesHolding(const QByteArray& bytes, const QString& folder)
{
    QStringList found;
    QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        if (readFile(path).contains(bytes))
            found.append(path);
    }
    return found;
}

} // namespace tessary::testing
