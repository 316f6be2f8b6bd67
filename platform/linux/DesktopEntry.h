#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace tessary {

/// What one desktop file says about a program.
struct DesktopEntry {
    QString id;             ///< Path below `applications` with dashes for slashes, without ".desktop".
    QString path;           ///< The desktop file.
    QString name;           ///< In the person's language where there is a translation; else the id.
    QString icon;           ///< Name or absolute path; may be empty.
    QString executable;     ///< First word of the command, as written; empty when there is none.
    QString tryExecutable;  ///< Program whose presence means that this one is installed.
    QString startupWMClass; ///< Class of its windows; usually empty.
    QStringList categories;
    bool hidden = false;    ///< Deleted by the person: it only shadows others of its id.
    bool noDisplay = false; ///< Not in menus.

    friend bool operator==(const DesktopEntry&, const DesktopEntry&) = default;
};

/// @param locale as in LC_MESSAGES: `zh_CN.UTF-8`.
/// @returns nothing when the bytes are no desktop entry of an application.
[[nodiscard]] std::optional<DesktopEntry> parseDesktopEntry(const QByteArray& bytes, const QString& locale);

/// Reads a desktop file of at most 1 MiB; `id` is from its file name alone. Blocks on the disk.
[[nodiscard]] std::optional<DesktopEntry> readDesktopEntry(const QString& path, const QString& locale);

/// LC_ALL, else LC_MESSAGES, else LANG.
[[nodiscard]] QString messagesLocale();

} // namespace tessary
