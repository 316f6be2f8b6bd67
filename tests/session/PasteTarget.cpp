#include "tests/session/PasteTarget.h"

#include "tests/support/Await.h"

#include <QDir>
#include <QFile>

namespace tessary::testing {

namespace {

QProcessEnvironment clientEnvironment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    environment.insert(QStringLiteral("GDK_BACKEND"), QStringLiteral("x11"));
    environment.insert(QStringLiteral("GSK_RENDERER"), QStringLiteral("cairo"));
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    return environment;
}

QByteArray fileContents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

PasteTarget::PasteTarget(Kind kind, const QString& title, const QString& scratch)
{
    const QString script = QStringLiteral(TESSARY_TEXT_FIELD);
    switch (kind) {
    case Kind::Gtk3:
    case Kind::Gtk4:
        m_process = std::make_unique<ChildProcess>(
            QStringLiteral("/usr/bin/python3"),
            QStringList{script, kind == Kind::Gtk3 ? QStringLiteral("3") : QStringLiteral("4"), title},
            clientEnvironment());
        break;
    case Kind::Qt:
        m_process = std::make_unique<ChildProcess>(QStringLiteral(TESSARY_QT_TEXT_FIELD), QStringList{title},
                                                   clientEnvironment());
        break;
    case Kind::Xterm:
    case Kind::Vte:
        m_typedPath = QDir(scratch).filePath(title + QStringLiteral(".typed"));
        runTerminal(kind, title);
        break;
    }
}

/// The program in the terminal takes every byte as it comes and writes it down.
void PasteTarget::runTerminal(Kind kind, const QString& title)
{
    const QStringList reader{QStringLiteral("sh"), QStringLiteral("-c"),
                             QStringLiteral("stty raw -echo; exec cat >\"$0\""), m_typedPath};
    if (kind == Kind::Xterm)
        m_process = std::make_unique<ChildProcess>(
            QStringLiteral("xterm"),
            QStringList{QStringLiteral("-title"), title, QStringLiteral("-e")} + reader, clientEnvironment());
    else
        m_process = std::make_unique<ChildProcess>(QStringLiteral("xfce4-terminal"),
                                                   QStringList{QStringLiteral("--disable-server"),
                                                               QStringLiteral("--title"), title,
                                                               QStringLiteral("-x")} +
                                                       reader,
                                                   clientEnvironment());
    EXPECT_TRUE(eventually([this] { return QFile::exists(m_typedPath); }));
}

QString PasteTarget::text()
{
    if (!m_typedPath.isEmpty())
        return QString::fromUtf8(fileContents(m_typedPath));
    const QString output = m_process->output();
    const QString mark = QStringLiteral("text:");
    const qsizetype last = output.lastIndexOf(mark);
    return last < 0 ? QString() : output.sliced(last + mark.size()).section(QLatin1Char('\n'), 0, 0);
}

} // namespace tessary::testing
