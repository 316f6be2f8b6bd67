#pragma once

#include "platform/linux/DesktopEntry.h"

#include <QHash>
#include <QList>

#include <optional>

namespace tessary {

/// What is known of a window when its program is looked for. Empty means unknown.
struct WindowIdentity {
    QString applicationId = {}; ///< What the toolkit says the program is called.
    QString instance = {};      ///< First half of WM_CLASS.
    QString windowClass = {};   ///< Second half of WM_CLASS.
    QString executable = {};    ///< Path of the running program.

    friend bool operator==(const WindowIdentity&, const WindowIdentity&) = default;
};

/// The installed programs, by the desktop files of some `applications` folders. One thread at a time; blocks
/// on the disk. Follows changes: a lookup reads the folders again when one of them was modified.
class DesktopEntries {
public:
    /// @param dataFolders most important first; of two files with one id, the first counts.
    /// @param locale as in LC_MESSAGES.
    explicit DesktopEntries(QStringList dataFolders, QString locale);

    /// Tries application id, StartupWMClass, WM_CLASS and executable, in that order; programs shown in menus
    /// go before those that are not. Upper and lower case count as equal where no exact match exists.
    [[nodiscard]] std::optional<DesktopEntry> find(const WindowIdentity& window);
    [[nodiscard]] std::optional<DesktopEntry> byId(const QString& id);
    /// Those that menus show.
    [[nodiscard]] QList<DesktopEntry> inMenus();

private:
    using Index = QHash<QString, qsizetype>; ///< Key, and its lower-cased form, to place in m_entries.

    void refresh();
    [[nodiscard]] bool isCurrent() const;
    void scan(const QString& root, const QString& folder, int depth, QList<DesktopEntry>& found);
    void index(QList<DesktopEntry> found);
    void add(Index& keys, const QString& key, qsizetype position) const;
    [[nodiscard]] const DesktopEntry* lookUp(const Index& keys, const QString& key) const;
    [[nodiscard]] const DesktopEntry* byExecutable(const QString& path) const;

    QStringList m_dataFolders;
    QString m_locale;
    bool m_scanned = false;
    QHash<QString, qint64> m_modified; ///< Folder to the nanosecond it was changed; -1 when absent.
    QList<DesktopEntry> m_entries;
    Index m_byId;
    Index m_byWindowClass;
    Index m_byExecutable;
};

} // namespace tessary
