#include "platform/linux/AutostartEntry.h"

#include "base/AtomicFile.h"
#include "platform/linux/DesktopEntry.h"
#include "platform/linux/KeyFile.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace tessary {
namespace {

constexpr qint64 kMaximumBytes = 1024 * 1024;
const char* const kGroup = "Desktop Entry";

/// As every text of such a file is written.
QString escaped(const QString& text)
{
    QString result;
    for (const QChar c : text) {
        switch (c.unicode()) {
        case u'\\':
            result += QLatin1String("\\\\");
            break;
        case u'\n':
            result += QLatin1String("\\n");
            break;
        case u'\r':
            result += QLatin1String("\\r");
            break;
        case u'\t':
            result += QLatin1String("\\t");
            break;
        default:
            result += c;
        }
    }
    return result;
}

/// As a word of a command line in such a file, before `escaped`.
QString quoted(const QString& word)
{
    QString result = QStringLiteral("\"");
    for (const QChar c : word) {
        if (QStringView(u"\"`$\\").contains(c))
            result += QLatin1Char('\\');
        if (c == QLatin1Char('%'))
            result += c; // would else begin a field code
        result += c;
    }
    return result + QLatin1Char('"');
}

bool isProgram(const QString& name)
{
    const QFileInfo file(name);
    if (file.isAbsolute())
        return file.isFile() && file.isExecutable();
    return !QStandardPaths::findExecutable(name).isEmpty();
}

/// Whether such an entry starts a program on this desktop.
bool starts(const QByteArray& bytes)
{
    const std::optional<DesktopEntry> entry = parseDesktopEntry(bytes, {});
    if (!entry || entry->hidden || entry->executable.isEmpty())
        return false;
    const KeyFile keys = KeyFile::parse(bytes);
    if (keys.value(kGroup, "X-GNOME-Autostart-enabled") == QLatin1String("false"))
        return false;
    return isProgram(entry->tryExecutable.isEmpty() ? entry->executable : entry->tryExecutable);
}

} // namespace

AutostartEntry::AutostartEntry(const XdgFolders& folders, QString identifier, QString program)
    : m_folders(folders),
      m_identifier(std::move(identifier)),
      m_program(std::move(program)),
      m_lane(QStringLiteral("tessary-login"))
{
}

QCoro::Task<bool> AutostartEntry::isEnabled()
{
    auto looking = m_lane.post([this] { return isEnabledNow(); });
    co_return co_await looking;
}

QCoro::Task<> AutostartEntry::enable()
{
    auto writing = m_lane.post([this] { write(contents(m_identifier, m_program)); });
    co_await writing;
}

QCoro::Task<> AutostartEntry::disable()
{
    auto removing = m_lane.post([this] { disableNow(); });
    co_await removing;
}

QString AutostartEntry::ownPath() const
{
    return m_folders.configuration() + QStringLiteral("/autostart/") + m_identifier +
           QStringLiteral(".desktop");
}

std::optional<QString> AutostartEntry::sharedPath() const
{
    for (const QString& folder : m_folders.sharedConfigurationFolders()) {
        const QString path =
            folder + QStringLiteral("/autostart/") + m_identifier + QStringLiteral(".desktop");
        if (QFileInfo::exists(path))
            return path;
    }
    return std::nullopt;
}

bool AutostartEntry::isEnabledNow() const
{
    std::optional<QByteArray> bytes = readRegularFile(ownPath(), kMaximumBytes);
    if (!bytes) {
        const std::optional<QString> shared = sharedPath();
        bytes = shared ? readRegularFile(*shared, kMaximumBytes) : std::nullopt;
    }
    return bytes && starts(*bytes);
}

void AutostartEntry::write(const QByteArray& bytes) const
{
    const QString folder = QFileInfo(ownPath()).path();
    if (!QDir().mkpath(folder))
        throw FileError(FileError::Case::WriteUnknown, folder);
    writeFileAtomically(ownPath(), bytes, Durability::PowerCut);
}

void AutostartEntry::disableNow() const
{
    if (sharedPath())
        write("[Desktop Entry]\nType=Application\nName=Tessary\nHidden=true\n");
    else
        removeFile(ownPath());
}

QByteArray AutostartEntry::contents(const QString& identifier, const QString& program)
{
    const QStringList lines{QStringLiteral("[Desktop Entry]"),
                            QStringLiteral("Type=Application"),
                            QStringLiteral("Name=Tessary"),
                            QStringLiteral("Exec=") + escaped(quoted(program)) +
                                QStringLiteral(" --background"),
                            QStringLiteral("TryExec=") + escaped(program),
                            QStringLiteral("Icon=") + identifier,
                            QStringLiteral("Terminal=false"),
                            QStringLiteral("StartupNotify=false"),
                            QStringLiteral("X-GNOME-Autostart-enabled=true")};
    return lines.join(QLatin1Char('\n')).toUtf8() + '\n';
}

} // namespace tessary
