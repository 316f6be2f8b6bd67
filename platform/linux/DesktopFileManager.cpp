#include "platform/linux/DesktopFileManager.h"

#include <qcoro/qcorodbuspendingcall.h>

#include <QDBusMessage>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

Q_LOGGING_CATEGORY(lcFileManager, "tessary.filemanager")

namespace tessary {
namespace {

constexpr int kPatience = 10000; // milliseconds; a file manager may have to be started first

/// Blocks for as long as starting a program takes.
bool openFolder(const QString& folder)
{
    const std::pair<QString, QStringList> openers[] = {{QStringLiteral("xdg-open"), {}},
                                                       {QStringLiteral("gio"), {QStringLiteral("open")}}};
    for (const auto& [name, arguments] : openers) {
        const QString program = QStandardPaths::findExecutable(name);
        if (!program.isEmpty() && QProcess::startDetached(program, arguments + QStringList{folder}))
            return true;
    }
    return false;
}

} // namespace

DesktopFileManager::DesktopFileManager(StartupIdentifier startupIdentifier, const QString& busAddress)
    : m_startupIdentifier(std::move(startupIdentifier)),
      m_connection(QStringLiteral("tessary-files"), busAddress),
      m_lane(QStringLiteral("tessary-reveal"))
{
}

DesktopFileManager::~DesktopFileManager()
{
    m_lane.postDetached([connection = m_connection] { connection.close(); });
}

QCoro::Task<> DesktopFileManager::reveal(QString path)
{
    auto preparing = m_lane.post([this, path] { return prepare(path); });
    const Request request = co_await preparing;
    if (request.hasBus) {
        const QString method = request.hasFile ? QStringLiteral("ShowItems") : QStringLiteral("ShowFolders");
        const QString shown = request.hasFile ? path : request.folder;
        const bool isShown = co_await ask(method, shown, request.startupIdentifier);
        if (isShown)
            co_return;
    }
    auto opening = m_lane.post([folder = request.folder] { return openFolder(folder); });
    const bool isOpen = co_await opening;
    if (!isOpen)
        throw FileManagerError(FileManagerError::Case::NoFileManager, path);
}

DesktopFileManager::Request DesktopFileManager::prepare(const QString& path)
{
    const QFileInfo file(path);
    if (path.isEmpty() || !QFileInfo(file.absolutePath()).isDir())
        throw FileManagerError(FileManagerError::Case::NoSuchFile, path);
    Request request;
    request.folder = file.absolutePath();
    request.hasFile = file.exists() || file.isSymLink();
    request.hasBus = m_connection.open();
    if (request.hasBus && m_startupIdentifier)
        request.startupIdentifier = m_startupIdentifier();
    return request;
}

QCoro::Task<bool> DesktopFileManager::ask(QString method, QString path, QString startupIdentifier)
{
    QDBusMessage request = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), method);
    const QString url = QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
    request.setArguments({QStringList{url}, startupIdentifier});
    const QDBusPendingCall call = m_connection.bus().asyncCall(request, kPatience);
    const QDBusMessage answer = co_await call;
    if (answer.type() != QDBusMessage::ErrorMessage)
        co_return true;
    qCInfo(lcFileManager, "no file manager selects files: %s", qUtf8Printable(answer.errorName()));
    co_return false;
}

} // namespace tessary
