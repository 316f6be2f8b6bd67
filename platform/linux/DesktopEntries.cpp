#include "platform/linux/DesktopEntries.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <iterator>
#include <sys/stat.h>

namespace tessary {
namespace {

constexpr int kMaximumDepth = 5;
constexpr qsizetype kMaximumEntries = 20'000;

/// When the folder last gained or lost an entry, in nanoseconds; -1 when there is none.
qint64 modificationOf(const QString& folder)
{
    struct stat status {};
    if (::stat(QFile::encodeName(folder).constData(), &status) != 0)
        return -1;
    return qint64{status.st_mtim.tv_sec} * 1'000'000'000 + status.st_mtim.tv_nsec;
}

/// Programs that run other programs: as an executable they say nothing about which one it is.
bool runsOthers(const QString& program)
{
    static const QRegularExpression pattern(QRegularExpression::anchoredPattern(QStringLiteral(
        "(python|perl|ruby|lua|php|node|guile)[0-9.]*|(ba|da|z|k)?sh|env|java|mono|wine.*|gjs.*|"
        "electron[0-9]*|flatpak|snap|bwrap|busctl|dbus-launch|gtk-launch|xdg-open|sudo|pkexec")));
    return pattern.match(program).hasMatch();
}

} // namespace

DesktopEntries::DesktopEntries(QStringList dataFolders, QString locale)
    : m_dataFolders(std::move(dataFolders)),
      m_locale(std::move(locale))
{
}

std::optional<DesktopEntry> DesktopEntries::find(const WindowIdentity& window)
{
    refresh();
    const DesktopEntry* entry = lookUp(m_byId, window.applicationId);
    for (const QString& name : {window.windowClass, window.instance}) {
        if (entry == nullptr)
            entry = lookUp(m_byWindowClass, name);
    }
    for (const QString& name : {window.windowClass, window.instance}) {
        if (entry == nullptr)
            entry = lookUp(m_byId, name);
    }
    if (entry == nullptr)
        entry = byExecutable(window.executable);
    if (entry == nullptr)
        return std::nullopt;
    return *entry;
}

std::optional<DesktopEntry> DesktopEntries::byId(const QString& id)
{
    refresh();
    const DesktopEntry* entry = lookUp(m_byId, id);
    if (entry == nullptr)
        return std::nullopt;
    return *entry;
}

QList<DesktopEntry> DesktopEntries::inMenus()
{
    refresh();
    QList<DesktopEntry> shown;
    std::copy_if(m_entries.cbegin(), m_entries.cend(), std::back_inserter(shown),
                 [](const DesktopEntry& entry) { return !entry.noDisplay; });
    return shown;
}

bool DesktopEntries::isCurrent() const
{
    return m_scanned &&
           std::all_of(m_modified.keyValueBegin(), m_modified.keyValueEnd(),
                       [](const auto& folder) { return modificationOf(folder.first) == folder.second; });
}

void DesktopEntries::refresh()
{
    if (isCurrent())
        return;
    m_modified.clear();
    QList<DesktopEntry> found;
    for (const QString& dataFolder : m_dataFolders) {
        const QString root = QDir(dataFolder).filePath(QStringLiteral("applications"));
        scan(root, root, 0, found);
    }
    index(std::move(found));
    m_scanned = true;
}

void DesktopEntries::scan(const QString& root, const QString& folder, int depth, QList<DesktopEntry>& found)
{
    if (depth > kMaximumDepth || m_modified.contains(folder))
        return;
    // Taken before the listing: a change meanwhile leads to another scan.
    m_modified.insert(folder, modificationOf(folder));
    const QFileInfoList children =
        QDir(folder).entryInfoList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QFileInfo& child : children) {
        if (child.isDir()) {
            scan(root, child.filePath(), depth + 1, found);
            continue;
        }
        if (child.suffix() != QLatin1String("desktop") || found.size() >= kMaximumEntries)
            continue;
        std::optional<DesktopEntry> entry = readDesktopEntry(child.filePath(), m_locale);
        if (!entry)
            continue;
        QString id = child.filePath().sliced(root.size() + 1);
        id.chop(QLatin1String(".desktop").size());
        entry->id = id.replace(u'/', u'-');
        found.append(std::move(*entry));
    }
}

/// @param found in order of importance.
void DesktopEntries::index(QList<DesktopEntry> found)
{
    m_entries.clear();
    m_byId.clear();
    m_byWindowClass.clear();
    m_byExecutable.clear();
    QSet<QString> seen;
    for (DesktopEntry& entry : found) {
        if (seen.contains(entry.id))
            continue;
        seen.insert(entry.id);
        if (!entry.hidden)
            m_entries.append(std::move(entry));
    }
    std::stable_partition(m_entries.begin(), m_entries.end(),
                          [](const DesktopEntry& one) { return !one.noDisplay; });
    for (qsizetype i = 0; i < m_entries.size(); ++i) {
        const DesktopEntry& entry = m_entries.at(i);
        add(m_byId, entry.id, i);
        add(m_byWindowClass, entry.startupWMClass, i);
        const QString program = QFileInfo(entry.executable).fileName();
        if (!runsOthers(program))
            add(m_byExecutable, program, i);
    }
}

/// The first one keeps a key, exact or lower-cased.
void DesktopEntries::add(Index& keys, const QString& key, qsizetype position) const
{
    for (const QString& form : {key, key.toLower()}) {
        if (!form.isEmpty() && !keys.contains(form))
            keys.insert(form, position);
    }
}

const DesktopEntry* DesktopEntries::lookUp(const Index& keys, const QString& key) const
{
    for (const QString& form : {key, key.toLower()}) {
        if (const auto found = keys.constFind(form); !form.isEmpty() && found != keys.constEnd())
            return &m_entries.at(*found);
    }
    return nullptr;
}

const DesktopEntry* DesktopEntries::byExecutable(const QString& path) const
{
    // The kernel marks a program whose file was replaced while it runs.
    QString program = QFileInfo(path).fileName();
    const QLatin1String deleted(" (deleted)");
    if (program.endsWith(deleted))
        program.chop(deleted.size());
    return runsOthers(program) ? nullptr : lookUp(m_byExecutable, program);
}

} // namespace tessary
